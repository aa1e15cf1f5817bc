#include "tests/platform/macos/StandIn.h"

#include <algorithm>
#include <cstring>

#include <CoreFoundation/CoreFoundation.h>

namespace {

const StandIn::System* current = nullptr;
int created = 0;
int released = 0;

}  // namespace

// Every object is one of these: what it is, and what it says.
struct StandInString {
    StandIn::Value value;
};

namespace {

const StandInString* made(StandIn::Value value) {
    ++created;
    return new StandInString{std::move(value)};
}
const StandInString& object(CFTypeRef reference) {
    return *static_cast<const StandInString*>(reference);
}
const std::string& textOf(CFTypeRef reference) {
    return std::get<std::string>(object(reference).value);
}
std::string bytesOf(const UInt8* bytes, CFIndex count) {
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)};
}
// An UTF-16 unit for each byte but those that continue one, and another for the long ones.
CFIndex unitsOf(const std::string& text) {
    return std::count_if(text.begin(), text.end(),
                         [](char c) { return (static_cast<UInt8>(c) & 0xC0) != 0x80; }) +
           std::count_if(text.begin(), text.end(),
                         [](char c) { return static_cast<UInt8>(c) >= 0xF0; });
}

const StandInString importantUsage{"important usage"};

}  // namespace

int StandIn::run(const System& system, const std::function<void()>& act) {
    // What the dictionary owns lives as long as the bundle.
    created = released = 0;
    current = &system;
    act();
    current = nullptr;
    return created - released;
}

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFStringRef kCFURLVolumeAvailableCapacityForImportantUsageKey = &importantUsage;

void CFRelease(CFTypeRef reference) {
    ++released;
    delete static_cast<const StandInString*>(reference);
}
CFTypeID CFGetTypeID(CFTypeRef reference) { return object(reference).value.index(); }

CFTypeID CFStringGetTypeID() { return 0; }
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding, Boolean) {
    return made(bytesOf(bytes, count));
}
CFIndex CFStringGetLength(CFStringRef string) { return unitsOf(textOf(string)); }
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return length * 3; }
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding, UInt8, Boolean,
                         UInt8* buffer, CFIndex capacity, CFIndex* used) {
    const std::string& text = textOf(string);
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(capacity));
    std::memcpy(buffer, text.data(), count);
    *used = static_cast<CFIndex>(count);
    return range.length;
}

CFTypeID CFNumberGetTypeID() { return 1; }
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    if (type != kCFNumberSInt64Type) return 0;
    *static_cast<std::int64_t*>(value) = std::get<std::int64_t>(object(number).value);
    return 1;
}

CFBundleRef CFBundleGetMainBundle() {
    static char bundle;
    return current->hasBundle ? reinterpret_cast<CFBundleRef>(&bundle) : nullptr;
}
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef, CFStringRef key) {
    // The dictionary keeps its values: nobody releases what is only looked at.
    static StandInString kept;
    const auto found = current->dictionary.find(textOf(key));
    if (found == current->dictionary.end()) return nullptr;
    kept.value = found->second;
    return &kept;
}

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                                 Boolean) {
    if (count == 0) return nullptr;
    return reinterpret_cast<CFURLRef>(made(bytesOf(bytes, count)));
}
Boolean CFURLCopyResourcePropertyForKey(CFURLRef url, CFStringRef key, void* value, CFErrorRef*) {
    const auto found = current->capacities.find(textOf(url));
    if (key != kCFURLVolumeAvailableCapacityForImportantUsageKey ||
        found == current->capacities.end())
        return 0;
    // A volume without the property answers with nothing.
    const bool isKnown = found->second != StandIn::Value(std::int64_t{-1});
    *static_cast<CFTypeRef*>(value) = isKnown ? made(found->second) : nullptr;
    return 1;
}

}  // extern "C"
