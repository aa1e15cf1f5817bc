// From the main bundle, through CoreFoundation.

#include <string>

#include "PrompterCore/platform/CoreFoundationOwner.h"
#include "PrompterCore/platform/MainBundle.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore::MainBundle {

namespace {

Text textOf(CFStringRef string) {
    const CFIndex length = CFStringGetLength(string);
    const CFIndex capacity = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
    std::string bytes(static_cast<std::size_t>(capacity), '\0');
    CFIndex used = 0;
    CFStringGetBytes(string, CFRangeMake(0, length), kCFStringEncodingUTF8, '?', 0,
                     reinterpret_cast<UInt8*>(bytes.data()), capacity, &used);
    bytes.resize(static_cast<std::size_t>(used));
    return bytes;
}

}  // namespace

std::optional<Text> informationText(std::string_view key) {
    const CFBundleRef bundle = CFBundleGetMainBundle();
    if (bundle == nullptr) return std::nullopt;
    const CoreFoundationOwner<CFStringRef> name(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(key.data()),
                                signedCount(key.size()), kCFStringEncodingUTF8, 0));
    if (name == nullptr) return std::nullopt;
    // Not ours to release.
    const CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, name.get());
    if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) return std::nullopt;
    return textOf(static_cast<CFStringRef>(value));
}

}  // namespace PrompterCore::MainBundle
