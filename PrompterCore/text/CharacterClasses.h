#pragma once

// What a code point is, by the Unicode character database. A character (a grapheme cluster) is
// asked through its first code point: see Character.
//
//   CharacterClasses::isWhiteSpace(U'\u00A0');   // true: no-break space
//   CharacterClasses::isNumeric(U'\u00BD');      // true: one half

#include <optional>

namespace PrompterCore::CharacterClasses {

/// White_Space. Written out, since every character of every text is asked: it has 25 members.
[[nodiscard]] constexpr bool isWhiteSpace(char32_t codePoint) noexcept {
    if (codePoint < 0x80) return codePoint == ' ' || (codePoint >= 0x09 && codePoint <= 0x0D);
    if (codePoint < 0x2000) return codePoint == 0x85 || codePoint == 0xA0 || codePoint == 0x1680;
    return codePoint <= 0x200A || codePoint == 0x2028 || codePoint == 0x2029 ||
           codePoint == 0x202F || codePoint == 0x205F || codePoint == 0x3000;
}
/// U+000A to U+000D, U+0085, U+2028 or U+2029.
[[nodiscard]] constexpr bool isLineBreak(char32_t codePoint) noexcept {
    return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
           codePoint == 0x2029;
}
/// General category Zs, or the tab.
[[nodiscard]] bool isHorizontalBlank(char32_t codePoint) noexcept;
/// Alphabetic.
[[nodiscard]] bool isLetter(char32_t codePoint) noexcept;
/// Numeric_Type other than None: digits, fractions, numerals of any script.
[[nodiscard]] bool isNumeric(char32_t codePoint) noexcept;
/// General category L, M or N.
[[nodiscard]] bool isAlphanumeric(char32_t codePoint) noexcept;
/// The value 0 to 9 of a decimal digit of any script. Absent for anything else, superscripts and
/// circled digits included.
[[nodiscard]] std::optional<int> decimalDigit(char32_t codePoint) noexcept;

}  // namespace PrompterCore::CharacterClasses
