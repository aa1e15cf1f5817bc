#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <unicode/unistr.h>

#include "tests/script/Built.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

namespace {

using Tests::forAll;

// Texts with headings among their lines.
Text withHeadings(const Text& a, const Text& b) {
    return Text(a.utf8() + "\n# " + b.utf8() + "\n" + a.utf8());
}

bool isInHeading(const Script& script, std::int64_t character) {
    for (const ScriptHeading& heading : script.headings()) {
        if (heading.sourceRange.contains(character)) return true;
    }
    return false;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

}  // namespace

TEST(ScriptLaws, WordsAreTheMaximalVisibleRunsOutsideHeadings) {
    forAll(
        [](const Text& a, const Text& b) {
            const Script script(withHeadings(a, b));
            const Characters& characters = script.characters();
            std::vector<std::string> runs;
            bool isOpen = false;
            for (std::int64_t i = 0; i < characters.count(); ++i) {
                if (characters[i].isWhiteSpace() || isInHeading(script, i)) {
                    isOpen = false;
                    continue;
                }
                if (!isOpen) runs.emplace_back();
                isOpen = true;
                runs.back() += characters[i].utf8();
            }
            RC_ASSERT(Tests::wordTexts(script) == runs);
        },
        500);
}

TEST(ScriptLaws, TokenRangesTileTheTokensAndSourcesAscend) {
    forAll(
        [](const Text& a, const Text& b) {
            const Script script(withHeadings(a, b));
            std::int64_t next = 0;
            std::int64_t lastEnd = 0;
            for (const ScriptWord& word : script.words()) {
                RC_ASSERT(word.tokenRange.lower() == next);
                next = word.tokenRange.upper();
                for (std::int64_t i = word.tokenRange.lower(); i < next; ++i) {
                    const ScriptToken token = *script.tokenAt(i);
                    RC_ASSERT(token.index == i);
                    RC_ASSERT(token.sourceRange.lower() >= lastEnd);
                    RC_ASSERT(script.characters().slice(token.sourceRange) == word.text.utf8());
                    RC_ASSERT(token.sourceRange ==
                              script.tokenAt(word.tokenRange.lower())->sourceRange);
                }
                if (!word.tokenRange.isEmpty())
                    lastEnd = script.tokenAt(next - 1)->sourceRange.upper();
            }
            RC_ASSERT(next == signedCount(script.tokens().size()));
        },
        500);
}

TEST(ScriptLaws, UTF16OffsetsAscendToTheLengthInUTF16) {
    forAll([](const Text& text) {
        const Script script(text);
        const std::vector<std::int64_t> offsets = script.utf16Offsets();
        RC_ASSERT(signedCount(offsets.size()) == script.characters().count() + 1);
        RC_ASSERT(offsets.front() == 0);
        for (std::size_t i = 1; i < offsets.size(); ++i)
            RC_ASSERT(offsets[i - 1] < offsets[i]);
        RC_ASSERT(offsets.back() == icu::UnicodeString::fromUTF8(text.utf8()).length());
    });
}

TEST(ScriptLaws, CharacterAtUTF16InvertsOffsetOfCharacter) {
    forAll([](const Text& text) {
        const Script script(text);
        for (std::int64_t i = 0; i <= script.characters().count(); ++i)
            RC_ASSERT(script.characterIndexAtUTF16(script.utf16OffsetOfCharacter(i)) == i);
        // And of every offset inside a character, back to its start.
        for (std::int64_t offset = 0; offset <= script.utf16Offsets().back(); ++offset) {
            const std::int64_t index = script.characterIndexAtUTF16(offset);
            RC_ASSERT(script.utf16OffsetOfCharacter(index) <= offset);
            RC_ASSERT(index == script.characters().count() ||
                      offset < script.utf16OffsetOfCharacter(index + 1));
        }
    });
}

TEST(ScriptLaws, TokenAtUTF16OfAWordIsItsFirstToken) {
    forAll([](const Text& text) {
        const Script script(text);
        for (const ScriptWord& word : script.words()) {
            for (std::int64_t i = word.tokenRange.lower(); i < word.tokenRange.upper(); ++i) {
                const Utf16Range range = *script.utf16RangeOfToken(i);
                RC_ASSERT(script.tokenAtUTF16(range.location) == word.tokenRange.lower());
                RC_ASSERT(script.tokenAtUTF16(range.location + range.length - 1) ==
                          word.tokenRange.lower());
            }
        }
    });
}

TEST(ScriptLaws, WhatIsAppendedBehindALineBreakChangesNothingBefore) {
    forAll([](const Text& before, const Text& after) {
        const Script alone(before);
        const Script longer(Text(before.utf8() + "\n" + after.utf8()));
        RC_ASSERT(longer.words().size() >= alone.words().size());
        RC_ASSERT(longer.headings().size() >= alone.headings().size());
        for (std::size_t i = 0; i < alone.words().size(); ++i)
            RC_ASSERT(longer.words()[i] == alone.words()[i]);
        for (std::size_t i = 0; i < alone.tokens().size(); ++i)
            RC_ASSERT(longer.tokens()[i] == alone.tokens()[i]);
        for (std::size_t i = 0; i < alone.headings().size(); ++i)
            RC_ASSERT(longer.headings()[i] == alone.headings()[i]);
    });
}

TEST(ScriptLaws, EquivalentTextsHaveEqualTokensWordsAndHeadings) {
    forAll(
        [](const Text& text) {
            const Script given(text);
            const Script composed(text.composed());
            RC_ASSERT(Tests::tokenTexts(given) == Tests::tokenTexts(composed));
            RC_ASSERT(given.words() == composed.words());
            RC_ASSERT(given.headings().size() == composed.headings().size());
        },
        500);
}

TEST(ScriptLaws, LineFeedsWithOrWithoutCarriageReturnsGiveTheSameWords) {
    forAll([](const Text& a, const Text& b) {
        const std::string bare = replaced(withHeadings(a, b).utf8(), "\r", "");
        const Script script{Text(bare)};
        const Script withReturns{Text(replaced(bare, "\n", "\r\n"))};
        RC_ASSERT(script.words() == withReturns.words());
        RC_ASSERT(script.headings() == withReturns.headings());
        RC_ASSERT(script.tokens() == withReturns.tokens());
    });
}

}  // namespace PrompterCore
