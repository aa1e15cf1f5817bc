#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "tests/reference/PlainScript.h"
#include "tests/script/Built.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

namespace {

using Tests::Strings;

Strings tokenTexts(const Plain::PlainScript& script) {
    Strings result;
    for (const ScriptToken& token : script.tokens)
        result.push_back(token.text.utf8());
    return result;
}

// Byte for byte where a text is stored, since equality is canonical.
void expectAsPlain(const Plain::Unicode& unicode, const std::string& bytes) {
    const Script script{Text(bytes)};
    const Plain::PlainScript plain = Plain::build(unicode, bytes);
    const bool same = signedCount(plain.characters.size()) == script.characters().count() &&
                      plain.tokens == script.tokens() && plain.words == script.words() &&
                      plain.headings == script.headings() &&
                      plain.utf16Offsets == script.utf16Offsets() &&
                      tokenTexts(plain) == Tests::tokenTexts(script);
    if (same) return;
    EXPECT_EQ(script.characters().count(), signedCount(plain.characters.size())) << Text(bytes);
    EXPECT_EQ(script.tokens(), plain.tokens) << Text(bytes);
    EXPECT_EQ(script.words(), plain.words) << Text(bytes);
    EXPECT_EQ(script.headings(), plain.headings) << Text(bytes);
    EXPECT_EQ(script.utf16Offsets(), plain.utf16Offsets) << Text(bytes);
    EXPECT_EQ(Tests::tokenTexts(script), tokenTexts(plain)) << Text(bytes);
}

// Calls `use` with every row of at most `length` pieces.
template <class Use>
void forEveryRow(const Strings& pieces, std::size_t length, const Use& use) {
    std::vector<std::string> rows = {""};
    for (std::size_t i = 0; i <= length; ++i) {
        std::vector<std::string> longer;
        for (const std::string& row : rows) {
            use(row);
            for (const std::string& piece : pieces)
                longer.push_back(row + piece);
        }
        rows = std::move(longer);
    }
}

}  // namespace

TEST(ScriptTwin, BuildsAsThePlainOneOnEveryShortTextOfLayout) {
    const Plain::Unicode unicode;
    forEveryRow({"a", " ", "\t", "\r", "\n", "#", "\u2028", "\u00A0", "\u0301", "-"}, 5,
                [&](const std::string& text) { expectAsPlain(unicode, text); });
}

TEST(ScriptTwin, BuildsAsThePlainOneOnEveryShortWord) {
    const Plain::Unicode unicode;
    forEveryRow({"1", "2", ".", ",", "-", "a", "\uFF11", "\u0663", "\u00B2", "\u0301", "\u200D",
                 "\u00E9", "'"},
                4, [&](const std::string& word) { expectAsPlain(unicode, word); });
}

TEST(ScriptTwin, BuildsAsThePlainOneOnEveryPairOfNastyPieces) {
    const Plain::Unicode unicode;
    const Strings& pieces = Tests::nastyPieces();
    for (const std::string& a : pieces) {
        for (const std::string& b : pieces) {
            expectAsPlain(unicode, a + b);
            expectAsPlain(unicode, "x" + a + b + "-");
        }
    }
}

TEST(ScriptTwin, CharactersAreThoseOfTheBreakIteratorForEveryCodePoint) {
    // Each between letters, beside itself and beside what stands alone in other scripts.
    icu::UnicodeString text;
    for (UChar32 c = 0; c <= 0x1FFFF; ++c) {
        if (u_isdefined(c) == 0 || (c >= 0xD800 && c <= 0xDFFF)) continue;
        for (const UChar32 neighbour : {0x61, 0xE9, 0x416, 0x2019, 0x3042, 0x6F22, 0xD55C, 0x1F600})
            text.append(c).append(neighbour);
        text.append(c).append(c).append(static_cast<UChar32>('\n'));
    }
    std::string bytes;
    text.toUTF8String(bytes);
    const Plain::CharacterList plain = Plain::Unicode().characters(bytes);
    const Characters characters{Text(bytes)};
    ASSERT_EQ(characters.count(), signedCount(plain.size()));
    for (std::int64_t i = 0; i < characters.count(); ++i)
        ASSERT_EQ(characters[i].utf8(), plain[static_cast<std::size_t>(i)]);
}

TEST(ScriptTwin, BuildsAsThePlainOneOnNastyTexts) {
    const Plain::Unicode unicode;
    Tests::forAll([&](const Text& text) { expectAsPlain(unicode, text.utf8()); }, 3000);
}

TEST(ScriptTwin, BuildsAsThePlainOneOnLongTextsOfManyCodePoints) {
    const Plain::Unicode unicode;
    std::mt19937_64 random(20260101);
    constexpr char32_t blocks[] = {0x20,   0x40,   0xA0,   0x100,  0x300,  0x380,   0x400,
                                   0x5B0,  0x600,  0x640,  0x900,  0x940,  0xE30,   0x1100,
                                   0x1E00, 0x2000, 0x2060, 0x20D0, 0x2600, 0x3000,  0x3080,
                                   0x4E00, 0xAC00, 0xFE00, 0xFF00, 0xFF60, 0x1F1E0, 0x1F3E0};
    constexpr char32_t blanks[] = {' ', '\n', '\t', '#'};
    for (int round = 0; round < 400; ++round) {
        icu::UnicodeString text;
        const std::size_t length = random() % 300;
        char32_t block = 0x40;
        for (std::size_t i = 0; i < length; ++i) {
            if (random() % 4 == 0) block = blocks[random() % std::size(blocks)];
            const bool isBlank = random() % 6 == 0;
            text.append(static_cast<UChar32>(isBlank ? blanks[random() % std::size(blanks)]
                                                     : block + random() % 64));
        }
        std::string bytes;
        text.toUTF8String(bytes);
        expectAsPlain(unicode, bytes);
    }
}

}  // namespace PrompterCore
