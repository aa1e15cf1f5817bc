#pragma once

// CoreFoundation's texts as ours. For the sources for macOS; not installed.

#include <cstddef>
#include <string>
#include <string_view>

#include "PrompterCore/platform/CoreFoundationOwner.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

/// `utf8` is well-formed.
[[nodiscard]] inline CoreFoundationOwner<CFStringRef> coreFoundationText(std::string_view utf8) {
    return CoreFoundationOwner<CFStringRef>(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(utf8.data()),
                                signedCount(utf8.size()), kCFStringEncodingUTF8, 0));
}

/// In UTF-8; half a pair of UTF-16 becomes a question mark.
[[nodiscard]] inline std::string utf8Of(CFStringRef text) {
    const CFIndex length = CFStringGetLength(text);
    const CFIndex capacity = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
    std::string bytes(static_cast<std::size_t>(capacity), '\0');
    CFIndex used = 0;
    CFStringGetBytes(text, CFRangeMake(0, length), kCFStringEncodingUTF8, '?', 0,
                     reinterpret_cast<UInt8*>(bytes.data()), capacity, &used);
    bytes.resize(static_cast<std::size_t>(used));
    return bytes;
}

}  // namespace PrompterCore
