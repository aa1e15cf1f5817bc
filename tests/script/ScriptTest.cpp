#include <algorithm>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/script/Script.h"
#include "tests/script/Built.h"

namespace PrompterCore {

static_assert(std::copyable<Script> && std::equality_comparable<Script>);
static_assert(std::copyable<ScriptToken> && std::equality_comparable<ScriptToken>);
static_assert(std::copyable<ScriptWord> && std::equality_comparable<ScriptWord>);
static_assert(std::copyable<ScriptHeading> && std::equality_comparable<ScriptHeading>);
static_assert(std::copyable<Utf16Range> && std::equality_comparable<Utf16Range>);
static_assert(std::is_nothrow_copy_constructible_v<Script>);
static_assert(std::is_nothrow_move_constructible_v<Script>);
static_assert(!std::is_default_constructible_v<Script>);
static_assert(!std::is_convertible_v<Text, Script>, "a script is built where it is asked for");

namespace {

using Tests::Strings;
using Tests::tokenTexts;
using Tests::wordTexts;
using Offsets = std::vector<std::int64_t>;

}  // namespace

TEST(Script, OfTheEmptyTextHasNothing) {
    const Script script("");
    EXPECT_EQ(script.characters().count(), 0);
    EXPECT_TRUE(script.tokens().empty());
    EXPECT_TRUE(script.words().empty());
    EXPECT_TRUE(script.lineFirstWords().empty());
    EXPECT_TRUE(script.headings().empty());
    EXPECT_EQ(script.utf16Offsets(), Offsets{0});
    EXPECT_TRUE(script.isEmpty());
    EXPECT_EQ(script.tokenAtUTF16(0), std::nullopt);
    EXPECT_EQ(script.tokenAt(0), std::nullopt);
    EXPECT_EQ(script.utf16RangeOfToken(0), std::nullopt);
    EXPECT_EQ(script.utf16OffsetOfCharacter(5), 0);
    EXPECT_EQ(script.characterIndexAtUTF16(5), 0);
}

TEST(Script, ExampleIsAsTheHeaderShows) {
    const Script script("# Intro\nDon't stop.");
    EXPECT_EQ(script.headings()[0].title, Text("Intro"));
    EXPECT_EQ(script.words()[0].text, Text("Don't"));
    EXPECT_EQ(script.tokens()[0].text, Text("do"));
    EXPECT_EQ(script.tokenAtUTF16(9), 0);
}

TEST(Script, TokensOfOneWordCarryTheWholeWord) {
    const Script script("Don't stop.");
    EXPECT_EQ(wordTexts(script), (Strings{"Don't", "stop."}));
    const std::vector<ScriptToken> tokens = {
        {.index = 0, .text = "do", .sourceRange = CharacterRange(0, 5)},
        {.index = 1, .text = "not", .sourceRange = CharacterRange(0, 5)},
        {.index = 2, .text = "stop", .sourceRange = CharacterRange(6, 11)},
    };
    EXPECT_EQ(script.tokens(), tokens);
    EXPECT_EQ(script.words()[0].tokenRange, TokenRange(0, 2));
    EXPECT_EQ(script.words()[1].tokenRange, TokenRange(2, 3));
}

TEST(Script, AWordThatIsNotSpokenHasNoTokens) {
    for (const char* unspoken : {"—", "..."}) {
        const Script script(Text(std::string("a ") + unspoken + " b"));
        EXPECT_EQ(script.words().size(), 3u);
        EXPECT_EQ(script.words()[1].tokenRange, TokenRange(1, 1));
        EXPECT_EQ(script.words()[2].tokenRange, TokenRange(1, 2));
        EXPECT_EQ(script.tokens()[1].index, 1);
    }
    EXPECT_TRUE(Script("... —").isEmpty());
    EXPECT_EQ(Script("... —").words().size(), 2u);
}

TEST(Script, IndentCountsColumnsBeforeTheFirstWordOfALine) {
    struct Case {
        const char* what;
        std::string text;
        std::int64_t breaksBefore, indent;
    };
    const Case cases[] = {
        {"two spaces", "Hello\n\n  world", 2, 2},
        {"a tab", "Hello\n\n\tworld", 2, 4},
        {"tab and spaces", "Hello\n \t world", 1, 6},
        {"other white space", "Hello\n\u3000\u00A0world", 1, 2},
        {"a tab with a mark is another white space", "Hello\n \u0301world", 1, 1},
        {"no indent", "Hello\nworld", 1, 0},
        {"on the same line", "Hello  \t world", 0, 0},
        {"blank line of spaces before", "Hello\n   \n world", 2, 1},
        {"carriage return, line feed", "Hello\r\nworld", 1, 0},
        {"carriage return, line feed, twice", "Hello\r\n\r\n world", 2, 1},
        {"line feed, carriage return", "Hello\n\rworld", 2, 0},
        {"line separator", "Hello\u2028 world", 1, 1},
    };
    for (const auto& [what, text, breaksBefore, indent] : cases) {
        SCOPED_TRACE(what);
        const Script script{Text(text)};
        ASSERT_EQ(wordTexts(script), (Strings{"Hello", "world"}));
        EXPECT_EQ(script.words()[1].breaksBefore, breaksBefore);
        EXPECT_EQ(script.words()[1].indent, indent);
    }
}

TEST(Script, IndentAndBreaksCountFromTheStartOfTheText) {
    EXPECT_EQ(Script("a b").words()[0].indent, 0);
    EXPECT_EQ(Script("a b").words()[1].indent, 0);
    EXPECT_EQ(Script("a b").words()[1].breaksBefore, 0);
    EXPECT_EQ(Script("  a").words()[0].indent, 2);
    EXPECT_EQ(Script("\n\n a").words()[0].breaksBefore, 2);
    EXPECT_EQ(Script("\n\n a").words()[0].indent, 1);
    EXPECT_EQ(Script("# x\n  a").words()[0].indent, 2);
}

TEST(Script, ALineBeginsWithTheFirstWordBehindABreak) {
    struct Case {
        const char* what;
        const char* text;
        std::vector<std::int64_t> lineFirstWords;
    };
    const Case cases[] = {
        {"no words", "# Title\n\n", {}},
        {"one line", "a b c", {0}},
        {"the first word, behind breaks or not", "\n\na b", {0}},
        {"a line break", "a b\nc", {0, 2}},
        {"blank lines begin none", "a\n \n\nb", {0, 1}},
        {"carriage return, line feed", "a\r\nb\r\n\r\nc", {0, 1, 2}},
        {"a heading line begins none", "a\n# Title\nb c", {0, 1}},
        {"words that are not spoken count", "-\n- a\nb", {0, 1, 3}},
        {"from right to left", "\u0634\u0644\u0648\u0645 \u05D0\u2028\u05D1", {0, 2}},
    };
    for (const auto& [what, text, lineFirstWords] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Script(text).lineFirstWords(), lineFirstWords);
    }
}

TEST(Script, ALineBreakIsOneCharacter) {
    const Script script("a\r\nb");
    EXPECT_EQ(script.characters().count(), 3);
    EXPECT_EQ(script.utf16Offsets(), (Offsets{0, 1, 3, 4}));
    EXPECT_EQ(script.words()[1].breaksBefore, 1);
}

TEST(Script, NumbersAreSpokenOut) {
    struct Case {
        const char* text;
        Strings tokens;
    };
    const Case cases[] = {
        {"2024", {"twenty", "twenty", "four"}},
        {"1,500", {"fifteen", "hundred"}},
        {"2000", {"twenty", "hundred"}},
        {"1000", {"one", "thousand"}},
        {"3.14", {"three", "point", "one", "four"}},
        {"were", {"we", "are"}},
        {"its", {"it", "is"}},
    };
    for (const auto& [text, tokens] : cases)
        EXPECT_EQ(tokenTexts(Script{Text(text)}), tokens) << text;
}

TEST(Script, UTF16OffsetsCountASurrogatePairAsTwo) {
    const Script script("\U0001F600 hi");
    EXPECT_EQ(script.utf16Offsets(), (Offsets{0, 2, 3, 4, 5}));
    EXPECT_EQ(script.characterIndexAtUTF16(0), 0);
    EXPECT_EQ(script.characterIndexAtUTF16(1), 0) << "between the halves";
    EXPECT_EQ(script.characterIndexAtUTF16(2), 1);
    EXPECT_EQ(script.words()[1].text, Text("hi"));
    EXPECT_EQ(script.tokens()[0].sourceRange, CharacterRange(2, 4));
    EXPECT_EQ(script.utf16RangeOfToken(0), (Utf16Range{.location = 3, .length = 2}));
}

TEST(Script, CharactersOfManyCodePointsAreOne) {
    const Script script("e\u0301 \U0001F468\u200D\U0001F469\u200D\U0001F467 \U0001F1E9\U0001F1EA");
    EXPECT_EQ(script.characters().count(), 5);
    EXPECT_EQ(script.utf16Offsets(), (Offsets{0, 2, 3, 11, 12, 16}));
    EXPECT_EQ(script.words().size(), 3u);
    EXPECT_EQ(tokenTexts(script), Strings{"e"});
}

TEST(Script, TokenAtIsAbsentOutside) {
    const Script script("one two");
    EXPECT_EQ(script.tokenAt(1)->text, Text("two"));
    for (const std::int64_t index : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                     std::int64_t{2}, std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(script.tokenAt(index), std::nullopt);
        EXPECT_EQ(script.utf16RangeOfToken(index), std::nullopt);
    }
}

TEST(Script, UTF16OffsetIsOfTheNearestCharacter) {
    const Script script("a\U0001F600b");
    struct Case {
        std::int64_t index, offset;
    };
    for (const auto& [index, offset] :
         {Case{-3, 0}, Case{0, 0}, Case{1, 1}, Case{2, 3}, Case{3, 4}, Case{10'000, 4}})
        EXPECT_EQ(script.utf16OffsetOfCharacter(index), offset) << index;
}

TEST(Script, CharacterAtUTF16IsTheLastThatStartsThereOrBefore) {
    const Script script("a\U0001F600b");
    struct Case {
        std::int64_t offset, index;
    };
    for (const auto& [offset, index] :
         {Case{-1, 0}, Case{0, 0}, Case{1, 1}, Case{2, 1}, Case{3, 2}, Case{4, 3}, Case{10'000, 3}})
        EXPECT_EQ(script.characterIndexAtUTF16(offset), index) << offset;
}

TEST(Script, UTF16RangeIsTheWholeWrittenWord) {
    const Script script("\u201CDon't\u201D \U0001F600!");
    EXPECT_EQ(script.utf16RangeOfToken(0), (Utf16Range{.location = 0, .length = 7}));
    EXPECT_EQ(script.utf16RangeOfToken(1), (Utf16Range{.location = 0, .length = 7}));
}

TEST(Script, TokenAtUTF16IsTheFirstOfItsWord) {
    const Script script("   one don't - two\n");
    struct Case {
        const char* what;
        std::int64_t offset;
        std::optional<std::int64_t> token;
    };
    const Case cases[] = {
        {"negative", -1, std::nullopt},
        {"before the first word", 0, 0},
        {"still before it", 2, 0},
        {"its first character", 3, 0},
        {"the white space after it", 6, 0},
        {"a word of two tokens", 7, 1},
        {"inside it", 10, 1},
        {"its last character", 11, 1},
        {"a word that is not spoken", 13, 1},
        {"the last word", 15, 3},
        {"the line break after it", 18, 3},
        {"past the end", 10'000, 3},
    };
    for (const auto& [what, offset, token] : cases)
        EXPECT_EQ(script.tokenAtUTF16(offset), token) << what;
}

TEST(Script, NulBytesArePartsOfWords) {
    const Script script{Text(std::string("a\0b \0 c\0", 8))};
    EXPECT_EQ(wordTexts(script),
              (Strings{std::string("a\0b", 3), std::string(1, '\0'), std::string("c\0", 2)}));
    EXPECT_EQ(tokenTexts(script), (Strings{"ab", "c"}));
    EXPECT_EQ(script.characters().count(), 8);
}

TEST(Script, IllFormedBytesAreReplacementCharacters) {
    const Script script{Text(std::string("a\xFF b\xC3"))};
    EXPECT_EQ(wordTexts(script), (Strings{"a\uFFFD", "b\uFFFD"}));
    EXPECT_EQ(tokenTexts(script), (Strings{"a", "b"}));
}

TEST(Script, TextIsKeptAsGiven) {
    EXPECT_EQ(Script("Cafe\u0301\r\n").text().utf8(), "Cafe\u0301\r\n");
    EXPECT_EQ(Script("Cafe\u0301").words()[0].text.utf8(), "Cafe\u0301");
}

TEST(Script, TenMegabytesInOneLineAreBuilt) {
    std::string text;
    while (text.size() < 10'000'000)
        text += "word don't ";
    const std::size_t rounds = text.size() / 11;
    const Script script{Text(text)};
    EXPECT_EQ(script.words().size(), 2 * rounds);
    EXPECT_EQ(script.tokens().size(), 3 * rounds);
    EXPECT_EQ(script.words().back().breaksBefore, 0);
    EXPECT_EQ(script.tokenAtUTF16(signedCount(text.size())), signedCount(3 * rounds) - 2);
}

TEST(Script, TenMegabytesInOneWordAreBuilt) {
    const Script script{Text(std::string(10'000'000, 'A'))};
    ASSERT_EQ(script.tokens().size(), 1u);
    EXPECT_EQ(script.tokens()[0].text.utf8().size(), 10'000'000u);
    EXPECT_EQ(script.tokens()[0].text.utf8().find_first_not_of('a'), std::string::npos);
}

TEST(Script, AMegabyteOfWhiteSpaceIsBuilt) {
    std::string text(1'000'000, ' ');
    text += 'a';
    text.append(1'000'000, '\n');
    text += 'b';
    const Script script{Text(text)};
    EXPECT_EQ(script.words()[0].indent, 1'000'000);
    EXPECT_EQ(script.words()[1].breaksBefore, 1'000'000);
}

TEST(Script, CopiesShareWhatWasBuilt) {
    const Script script("one two three");
    const Script copy = script;
    EXPECT_EQ(&copy.tokens(), &script.tokens());
    EXPECT_EQ(&copy.words(), &script.words());
    EXPECT_EQ(copy, script);
}

TEST(Script, WhatWasMovedFromIsStillAScript) {
    Script script("one two");
    const Script moved = std::move(script);
    EXPECT_EQ(script, moved);  // NOLINT: that is the claim
    EXPECT_EQ(script.tokens().size(), 2u);
    Script other("three");
    other = std::move(script);
    EXPECT_EQ(script.tokens().size(), 2u);  // NOLINT
    EXPECT_EQ(other, moved);
}

TEST(Script, EqualityIsFieldByField) {
    EXPECT_EQ(Script("a b"), Script("a b"));
    EXPECT_NE(Script("a b"), Script("a  b"));
    EXPECT_NE(Script("a"), Script("A"));
    EXPECT_EQ(Script("\u00E9").text(), Script("e\u0301").text());
    EXPECT_NE(Script("\u00E9"), Script("e\u0301")) << "their UTF-16 offsets differ";
}

TEST(Script, IsReadAndCopiedFromSeveralThreads) {
    const Script script("# A\nDon't stop \U0001F600 3.14\n# B\nwell-known");
    const Script expected = script;
    std::vector<int> right(4, 0);
    std::vector<std::thread> readers;
    for (int& mine : right) {
        readers.emplace_back([&script, &expected, &mine] {
            for (int round = 0; round < 500; ++round) {
                const Script copy = script;
                const Script built(Text("Café don't " + std::to_string(round)));
                mine += copy == expected && copy.tokenAtUTF16(6) == 0 &&
                                copy.characterIndexAtUTF16(16) == 15 && !built.isEmpty()
                            ? 1
                            : 0;
            }
        });
    }
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(right, std::vector<int>(4, 500));
}

}  // namespace PrompterCore
