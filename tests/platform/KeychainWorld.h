#pragma once

// A keychain that a test can look into and make refuse. MemoryKeychainItems.cpp shows it to the
// library as its system; SecurityStandIn.cpp as the Security framework, under our source for macOS.
//
//   keychainWorld() = {};                                        // at the start of each test
//   keychainWorld().refusals[KeychainCall::add] = -25308;
//   EXPECT_THROW(keychain.write("abc"), Keychain::Failure);

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace PrompterCore::Tests {

enum class KeychainCall { copyMatching, update, add, remove };

/// A dictionary of the Security framework: names as it declares them, texts and bytes as they are.
using KeychainAttributes = std::map<std::string, std::string>;

/// What a call on the Security framework was given; of an update the change as well.
struct KeychainQuery {
    KeychainAttributes query;
    KeychainAttributes change = {};

    friend bool operator==(const KeychainQuery&, const KeychainQuery&) = default;
};

struct KeychainWorld {
    std::map<std::string, std::string> items;       ///< bytes by service
    std::map<KeychainCall, std::int32_t> refusals;  ///< answered instead of doing it
    std::map<std::int32_t, std::string> messages;   ///< the system's texts
    std::vector<KeychainCall> calls;                ///< in their order
    std::vector<KeychainQuery> queries;             ///< of the Security framework
    bool answersWithText = false;  ///< a successful copy gives a text instead of bytes
    bool answersNothing = false;   ///< a successful copy gives no result
};

[[nodiscard]] KeychainWorld& keychainWorld();

/// The plain semantics, shared by both faces. `found` is set when there is an item.
std::int32_t copyFromWorld(const std::string& service, std::string& found);
std::int32_t updateInWorld(const std::string& service, const std::string& bytes);
std::int32_t addToWorld(const std::string& service, const std::string& bytes);
std::int32_t removeFromWorld(const std::string& service);

}  // namespace PrompterCore::Tests
