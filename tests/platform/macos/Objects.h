#pragma once

// CoreFoundation's objects as plain counted ones that can be looked into: texts, bytes, numbers,
// the two booleans, dictionaries.
//
//   const CFStringRef name = StandIn::constant<CFStringRef>("kSecClass");
//   StandIn::valueOf(name);      // "kSecClass"
//   StandIn::liveObjects();      // 0: constants do not count

#include <cstdint>
#include <map>
#include <string>
#include <variant>

#include <CoreFoundation/CoreFoundation.h>

namespace StandIn {

using Value = std::variant<std::string, std::int64_t>;

/// Objects that were made and not yet released as often as they were retained.
[[nodiscard]] long liveObjects();

/// A text or a number, whose caller releases it.
[[nodiscard]] CFTypeRef made(const Value& value);
/// A text or a number that its maker keeps for good.
[[nodiscard]] CFTypeRef kept(const Value& value);

/// What `kept` gives, as the type that the framework declares.
template <class Ref>
[[nodiscard]] Ref constant(const Value& value) {
    return static_cast<Ref>(kept(value));
}

/// Texts and bytes as they are, a boolean as its name.
[[nodiscard]] std::string valueOf(CFTypeRef object);
[[nodiscard]] std::map<std::string, std::string> entriesOf(CFDictionaryRef dictionary);

}  // namespace StandIn
