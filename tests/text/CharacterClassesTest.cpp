#include <unicode/uchar.h>
#include <unicode/uniset.h>

#include "PrompterCore/text/CharacterClasses.h"
#include "tests/support/Printing.h"
#include "tests/text/CodePoints.h"

namespace PrompterCore {
namespace {

// Every code point, surrogates and one beyond the last included: asked of the pattern and of us.
void expectSet(const char* pattern, bool (*isMember)(char32_t) noexcept) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeSet set(icu::UnicodeString::fromUTF8(pattern), status);
    ASSERT_TRUE(U_SUCCESS(status)) << pattern;
    ASSERT_FALSE(set.isEmpty());
    for (char32_t c = 0; c <= 0x110000; ++c) {
        const bool expected = set.contains(static_cast<UChar32>(c)) != 0;
        if (isMember(c) != expected)
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c) << " in " << pattern << ": "
                          << expected;
    }
}

TEST(CharacterClasses, AreTheirUnicodePropertiesAtEveryCodePoint) {
    expectSet("[:White_Space:]", CharacterClasses::isWhiteSpace);
    expectSet("[\\u000A-\\u000D\\u0085\\u2028\\u2029]", CharacterClasses::isLineBreak);
    expectSet("[[:Zs:]\\u0009]", CharacterClasses::isHorizontalBlank);
    expectSet("[:Alphabetic:]", CharacterClasses::isLetter);
    expectSet("[:^nt=None:]", CharacterClasses::isNumeric);
    expectSet("[[:L:][:M:][:N:]]", CharacterClasses::isAlphanumeric);
    expectSet("[:nt=Decimal:]",
              [](char32_t c) noexcept { return CharacterClasses::decimalDigit(c).has_value(); });
}

TEST(CharacterClasses, DecimalDigitsHaveTheirValueInEveryScript) {
    Tests::forEachCodePoint([](char32_t c) {
        const auto digit = CharacterClasses::decimalDigit(c);
        if (digit && *digit != static_cast<int>(u_getNumericValue(static_cast<UChar32>(c))))
            ADD_FAILURE() << std::hex << static_cast<unsigned>(c);
    });
    EXPECT_EQ(CharacterClasses::decimalDigit(U'7'), 7);
    EXPECT_EQ(CharacterClasses::decimalDigit(U'\uFF17'), 7);
    EXPECT_EQ(CharacterClasses::decimalDigit(U'\u0667'), 7);
    EXPECT_EQ(CharacterClasses::decimalDigit(U'\u096D'), 7);
}

TEST(CharacterClasses, WhatLooksLikeADigitButIsNoneHasNoValue) {
    for (const char32_t c : {U'\u00B2', U'\u2460', U'\u00BD', U'\u4E09', U'\u2167', U'a', U'\0'})
        EXPECT_EQ(CharacterClasses::decimalDigit(c), std::nullopt) << static_cast<unsigned>(c);
}

}  // namespace
}  // namespace PrompterCore
