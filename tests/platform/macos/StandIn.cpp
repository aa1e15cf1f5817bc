#include "tests/platform/macos/StandIn.h"

#include <CoreFoundation/CoreFoundation.h>

namespace {

const StandIn::System* current = nullptr;

}  // namespace

int StandIn::run(const System& system, const std::function<void()>& act) {
    const long before = liveObjects();
    current = &system;
    act();
    current = nullptr;
    return static_cast<int>(liveObjects() - before);
}

extern "C" {

const CFStringRef kCFURLVolumeAvailableCapacityForImportantUsageKey =
    StandIn::constant<CFStringRef>("important usage");

CFBundleRef CFBundleGetMainBundle() {
    static char bundle;
    return current->hasBundle ? reinterpret_cast<CFBundleRef>(&bundle) : nullptr;
}
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef, CFStringRef key) {
    // The dictionary keeps its values: nobody releases what is only looked at.
    const auto found = current->dictionary.find(StandIn::valueOf(key));
    return found == current->dictionary.end() ? nullptr : StandIn::kept(found->second);
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                                 Boolean) {
    if (count == 0) return nullptr;
    return static_cast<CFURLRef>(StandIn::made(std::string(bytes, bytes + count)));
}
Boolean CFURLCopyResourcePropertyForKey(CFURLRef url, CFStringRef key, void* value, CFErrorRef*) {
    const auto found = current->capacities.find(StandIn::valueOf(url));
    if (key != kCFURLVolumeAvailableCapacityForImportantUsageKey ||
        found == current->capacities.end())
        return 0;
    // A volume without the property answers with nothing.
    const bool isKnown = found->second != StandIn::Value(std::int64_t{-1});
    *static_cast<CFTypeRef*>(value) = isKnown ? StandIn::made(found->second) : nullptr;
    return 1;
}

}  // extern "C"
