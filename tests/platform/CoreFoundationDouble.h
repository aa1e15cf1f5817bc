#pragma once

// CoreFoundation's objects as plain counted ones, which can be looked into.

#include <map>
#include <string>

#include <CoreFoundation/CoreFoundation.h>

namespace PrompterCore::Tests {

/// Objects that were made and not yet released as often as they were retained.
[[nodiscard]] long liveObjects();

/// A constant of a framework: a text that is never released. Stays for ever.
[[nodiscard]] CFStringRef constantText(const char* utf8);

/// Texts and bytes as they are, a boolean as its name.
[[nodiscard]] std::string valueOf(CFTypeRef object);
[[nodiscard]] std::map<std::string, std::string> entriesOf(CFDictionaryRef dictionary);

}  // namespace PrompterCore::Tests
