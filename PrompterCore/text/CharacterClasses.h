#pragma once

// What a code point is, by the Unicode character database. A character (a grapheme cluster) is
// asked through its first code point: see Character.
//
//   CharacterClasses::isWhiteSpace(U'\u00A0');   // true: no-break space
//   CharacterClasses::isNumeric(U'\u00BD');      // true: one half

#include <optional>

namespace PrompterCore::CharacterClasses {

/// White_Space.
[[nodiscard]] bool isWhiteSpace(char32_t codePoint) noexcept;
/// U+000A to U+000D, U+0085, U+2028 or U+2029.
[[nodiscard]] bool isLineBreak(char32_t codePoint) noexcept;
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
