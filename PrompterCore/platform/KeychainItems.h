#pragma once

// What the keychain asks of the system, and all that it does: four operations on the one item of a
// service, and a text for each status. KeychainItemsMac.cpp and KeychainItemsLinux.cpp answer;
// CMake takes one of them, and a test may link its own in its place.
//
// A status is a result code of macOS's Security framework. Texts are passed as UTF-8 bytes.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace PrompterCore::KeychainItems {

inline constexpr std::int32_t success = 0;
inline constexpr std::int32_t itemNotFound = -25300;

struct Found {
    std::int32_t status = success;
    std::optional<std::string> bytes;  ///< absent when nothing came back, or no block of bytes
};

[[nodiscard]] Found copyMatching(std::string_view service);
/// itemNotFound when there is none to update.
[[nodiscard]] std::int32_t update(std::string_view service, std::string_view bytes);
[[nodiscard]] std::int32_t add(std::string_view service, std::string_view bytes);
/// itemNotFound when there is none.
[[nodiscard]] std::int32_t remove(std::string_view service);
/// The system's text for `status`, in UTF-8. Absent when it has none.
[[nodiscard]] std::optional<std::string> messageOf(std::int32_t status);

}  // namespace PrompterCore::KeychainItems
