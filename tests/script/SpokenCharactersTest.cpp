#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "PrompterCore/script/SpokenCharacters.h"
#include "tests/reference/PlainSpokenForms.h"
#include "tests/script/Built.h"
#include "tests/support/AllocationCounter.h"

namespace PrompterCore {

namespace {

using Effect = SpokenCharacter::Effect;

std::string utf8(char32_t c) {
    std::string result;
    icu::UnicodeString(static_cast<UChar32>(c)).toUTF8String(result);
    return result;
}

bool isScalar(char32_t c) { return c < 0xD800 || c > 0xDFFF; }

std::vector<char32_t> codePoints(Effect effect) {
    std::vector<char32_t> result;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (isScalar(c) && spokenCharacter(c).effect == effect) result.push_back(c);
    }
    return result;
}

// The general way: the word folded, lower-cased and cut into characters as a whole.
std::string general(const Plain::Unicode& unicode, const std::string& word) {
    return Plain::normalised(unicode, word);
}

}  // namespace

TEST(SpokenCharacters, EveryKeptOneIsWhatTheWholeWordWouldGive) {
    const Plain::Unicode unicode;
    for (const char32_t c : codePoints(Effect::kept)) {
        const std::string letter = utf8(spokenCharacter(c).letter);
        EXPECT_EQ(general(unicode, utf8(c)), letter) << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x" + utf8(c) + "y"), "x" + letter + "y") << Text(utf8(c));
        EXPECT_EQ(general(unicode, utf8(c) + utf8(c) + "-"), letter + letter) << Text(utf8(c));
    }
}

TEST(SpokenCharacters, NoKeptOneTakesMoreBytesThanWhatItStandsFor) {
    for (const char32_t c : codePoints(Effect::kept))
        EXPECT_LE(utf8(spokenCharacter(c).letter).size(), utf8(c).size()) << Text(utf8(c));
}

TEST(SpokenCharacters, EveryDroppedOneIsACharacterOfItsOwn) {
    const Plain::Unicode unicode;
    for (const char32_t c : codePoints(Effect::dropped)) {
        EXPECT_EQ(general(unicode, utf8(c)), "") << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x" + utf8(c) + "-y"), "x-y") << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x-" + utf8(c) + "y"), "x-y") << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x" + utf8(c) + utf8(c) + "y"), "xy") << Text(utf8(c));
        // It takes what joins it along.
        for (const char* joined : {"\u200D", "\u200C", "\U0001F3FD", "\U000E0067"})
            EXPECT_EQ(general(unicode, "x" + utf8(c) + joined + "y"), "xy") << Text(utf8(c));
    }
}

TEST(SpokenCharacters, EveryFoldedOneIsAsIfItWereNotThere) {
    const Plain::Unicode unicode;
    for (const char32_t c : codePoints(Effect::foldedAway)) {
        EXPECT_TRUE(isFoldedAway(c)) << Text(utf8(c));
        EXPECT_EQ(general(unicode, utf8(c)), "") << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x" + utf8(c) + "-" + utf8(c) + "y"), "x-y") << Text(utf8(c));
    }
}

TEST(SpokenCharacters, EveryJoinedOneGoesWithTheDroppedOneBeforeIt) {
    const Plain::Unicode unicode;
    for (const char32_t c : codePoints(Effect::joined)) {
        EXPECT_EQ(general(unicode, utf8(c)), "") << Text(utf8(c));
        EXPECT_EQ(general(unicode, "x!" + utf8(c) + utf8(c) + "y"), "xy") << Text(utf8(c));
        EXPECT_EQ(general(unicode, std::string("x\0", 2) + utf8(c) + "y"), "xy") << Text(utf8(c));
    }
}

TEST(SpokenCharacters, EverySignStaysOnTheLetterBeforeIt) {
    const Plain::Unicode unicode;
    std::vector<char32_t> signs = codePoints(Effect::sign);
    for (const char32_t c : codePoints(Effect::orderedSign)) {
        EXPECT_NE(u_getCombiningClass(static_cast<UChar32>(c)), 0) << Text(utf8(c));
        signs.push_back(c);
    }
    for (const char32_t c : codePoints(Effect::sign))
        EXPECT_EQ(u_getCombiningClass(static_cast<UChar32>(c)), 0) << Text(utf8(c));
    for (const char32_t sign : signs) {
        for (const char32_t c : codePoints(Effect::kept)) {
            if (c < 0x900 || c > 0xE7F) continue;  // the scripts that have signs
            const std::string word = utf8(c) + utf8(sign);
            EXPECT_EQ(general(unicode, word), word) << Text(word);
        }
        for (const char* letter : {"x", "1", "\u0915", "\u0E17", "-", "!", ""}) {
            for (const char32_t second : signs) {
                const std::string word = letter + utf8(sign) + utf8(second) + "y";
                EXPECT_EQ(Tests::spoken(word), Plain::spokenForms(unicode, word)) << Text(word);
            }
        }
    }
}

TEST(SpokenCharacters, EveryCodePointIsSpokenAsThePlainWaySpeaksIt) {
    const Plain::Unicode unicode;
    for (char32_t c = 0; c < 0x20000; ++c) {
        if (!isScalar(c) || u_isdefined(static_cast<UChar32>(c)) == 0) continue;
        for (const std::string& word : {utf8(c), "a" + utf8(c) + "b", "1." + utf8(c)}) {
            const Tests::Strings plain = Plain::spokenForms(unicode, word);
            EXPECT_EQ(Tests::spoken(word), plain) << Text(word);
        }
    }
}

TEST(SpokenCharacters, NeverAllocate) {
    EXPECT_EQ(Tests::allocationsDuring([] {
                  for (char32_t c = 0; c < 0x20000; ++c)
                      static_cast<void>(spokenCharacter(c));
              }),
              0);
}

TEST(SpokenCharacters, ExamplesAreAsTheirCommentsSay) {
    EXPECT_EQ(spokenCharacter(U'\u00C9').effect, Effect::kept);
    EXPECT_EQ(spokenCharacter(U'\u00C9').letter, U'e');
    EXPECT_EQ(spokenCharacter(U'\u2019').effect, Effect::dropped);
    EXPECT_EQ(spokenCharacter(U'\u03A3').effect, Effect::dependent);
    EXPECT_EQ(spokenCharacter(U'-').effect, Effect::hyphen);
    EXPECT_EQ(spokenCharacter(U'\uFF0D').effect, Effect::hyphen);
    EXPECT_EQ(spokenCharacter(U'\u200D').effect, Effect::joined);
    EXPECT_EQ(spokenCharacter(U'\u0301').effect, Effect::foldedAway);
    EXPECT_EQ(spokenCharacter(U'\u093F').effect, Effect::sign);
}

}  // namespace PrompterCore
