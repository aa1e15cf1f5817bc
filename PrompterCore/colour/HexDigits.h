#pragma once

// Bytes as two hexadecimal digits each. Not installed.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace PrompterCore::HexDigits {

/// The digits of `byte`, in upper case, behind what `hex` holds.
inline void append(std::string& hex, std::uint8_t byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    hex += digits[byte / 16];
    hex += digits[byte % 16];
}

[[nodiscard]] constexpr std::optional<int> digit(char c) noexcept {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return std::nullopt;
}

/// The byte that the digits `hex[at]` and `hex[at + 1]` write, in either case. Absent when one of
/// them is no digit.
[[nodiscard]] constexpr std::optional<std::uint8_t> byteAt(std::string_view hex,
                                                           std::size_t at) noexcept {
    const auto high = digit(hex[at]);
    const auto low = digit(hex[at + 1]);
    if (!high || !low) return std::nullopt;
    return static_cast<std::uint8_t>(16 * *high + *low);
}

}  // namespace PrompterCore::HexDigits
