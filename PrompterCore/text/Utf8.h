#pragma once

// Reading code points out of UTF-8 that is known to be well-formed, as that of a Text is.
//
//   std::size_t at = 0;
//   char32_t first = Utf8::next("\u00E9a", at);   // U+00E9, and at is 2

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace PrompterCore::Utf8 {

constexpr bool isAscii(char byte) noexcept { return static_cast<unsigned char>(byte) < 0x80; }

/// True when every byte is ASCII. O(n).
[[nodiscard]] bool isAscii(std::string_view bytes) noexcept;

/// The code point at `at`, which moves behind it. `at` is below the size and on a boundary.
constexpr char32_t next(std::string_view bytes, std::size_t& at) noexcept {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const char32_t lead = byte(at++);
    if (lead < 0x80) return lead;
    const auto trail = [&] { return static_cast<char32_t>(byte(at++) & 0x3F); };
    if (lead < 0xE0) return (lead & 0x1F) << 6 | trail();
    if (lead < 0xF0) {
        const char32_t high = (lead & 0x0F) << 12 | trail() << 6;
        return high | trail();
    }
    char32_t high = (lead & 0x07) << 18 | trail() << 12;
    high |= trail() << 6;
    return high | trail();
}

/// The code point that ends at `end`, which moves before it. `end` is above 0 and on a boundary.
constexpr char32_t previous(std::string_view bytes, std::size_t& end) noexcept {
    do {
        --end;
    } while ((static_cast<unsigned char>(bytes[end]) & 0xC0) == 0x80);
    std::size_t at = end;
    return next(bytes, at);
}

/// The length of the first maximal ill-formed part (The Unicode Standard, section 3.9, the practice
/// for U+FFFD substitution) at or after `from`, which moves to its start; 0, and `from` at the end,
/// when all is well-formed. O(n).
[[nodiscard]] std::size_t illFormedPart(std::string_view bytes, std::size_t& from) noexcept;

/// The number of UTF-16 code units that the bytes stand for. O(n).
constexpr std::int64_t utf16Length(std::string_view bytes) noexcept {
    std::int64_t units = 0;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        units += static_cast<std::int64_t>((value & 0xC0) != 0x80) +
                 static_cast<std::int64_t>(value >= 0xF0);
    }
    return units;
}

}  // namespace PrompterCore::Utf8
