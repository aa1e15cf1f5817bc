#include "PrompterCore/text/CharacterClasses.h"

#include <array>
#include <cstdint>

#include <unicode/uchar.h>

namespace PrompterCore::CharacterClasses {

namespace {

enum Class : std::uint8_t { letter = 1, digit = 2 };

// Nearly every code point of nearly every script text asks for one of these 128.
constexpr std::array<std::uint8_t, 128> asciiClasses = [] {
    std::array<std::uint8_t, 128> classes{};
    for (std::size_t c = 'a'; c <= 'z'; ++c)
        classes[c] = letter;
    for (std::size_t c = 'A'; c <= 'Z'; ++c)
        classes[c] = letter;
    for (std::size_t c = '0'; c <= '9'; ++c)
        classes[c] = digit;
    return classes;
}();

bool asciiIs(char32_t codePoint, unsigned classes) noexcept {
    return (asciiClasses[codePoint] & classes) != 0;
}

UChar32 icu(char32_t codePoint) noexcept { return static_cast<UChar32>(codePoint); }

}  // namespace

bool isHorizontalBlank(char32_t codePoint) noexcept {
    return codePoint == '\t' || u_charType(icu(codePoint)) == U_SPACE_SEPARATOR;
}

bool isLetter(char32_t codePoint) noexcept {
    return codePoint < 0x80 ? asciiIs(codePoint, letter) : u_isUAlphabetic(icu(codePoint)) != 0;
}

bool isNumeric(char32_t codePoint) noexcept {
    return codePoint < 0x80
               ? asciiIs(codePoint, digit)
               : u_getIntPropertyValue(icu(codePoint), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isAlphanumeric(char32_t codePoint) noexcept {
    if (codePoint < 0x80) return asciiIs(codePoint, letter | digit);
    return (U_GET_GC_MASK(icu(codePoint)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

std::optional<int> decimalDigit(char32_t codePoint) noexcept {
    const std::int32_t value = u_charDigitValue(icu(codePoint));
    if (value < 0) return std::nullopt;
    return value;
}

}  // namespace PrompterCore::CharacterClasses
