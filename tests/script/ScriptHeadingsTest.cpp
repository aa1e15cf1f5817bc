#include <string>

#include <gtest/gtest.h>

#include "tests/script/Built.h"

namespace PrompterCore {

namespace {

using Tests::Strings;
using Tests::titles;
using Tests::tokenTexts;
using Tests::wordTexts;

}  // namespace

TEST(ScriptHeading, StandsBeforeTheWordsBelowIt) {
    const Script script("# Intro\nHello");
    const std::vector<ScriptHeading> headings = {{.title = "Intro",
                                                  .sourceRange = CharacterRange(0, 7),
                                                  .wordIndex = 0,
                                                  .firstToken = 0,
                                                  .breaksBefore = 0}};
    EXPECT_EQ(script.headings(), headings);
    EXPECT_EQ(wordTexts(script), Strings{"Hello"});
    EXPECT_EQ(script.words()[0].breaksBefore, 1);
}

TEST(ScriptHeading, SpacesAndTabsMayStandBeforeTheMarker) {
    EXPECT_EQ(titles(Script("  # Title  ")), Strings{"Title"});
    EXPECT_EQ(titles(Script("\t \t# Title\t")), Strings{"Title"});
    EXPECT_EQ(Script("  # Title  ").headings()[0].sourceRange, CharacterRange(0, 11));
    EXPECT_EQ(titles(Script("x\n  # Title\ny")), Strings{"Title"});
}

TEST(ScriptHeading, LinesThatOnlyLookLikeOneAreWords) {
    struct Case {
        const char* what;
        const char* line;
        Strings words;
    };
    const Case cases[] = {
        {"no space", "#Title", {"#Title"}},
        {"two signs", "## Title", {"##", "Title"}},
        {"a lone sign", "#", {"#"}},
        {"nothing after the marker", "# ", {"#"}},
        {"white space after the marker", "#  \t\u3000\u00A0 ", {"#"}},
        {"a tab instead of the space", "#\tTitle", {"#", "Title"}},
        {"a no-break space instead of the space", "#\u00A0Title", {"#", "Title"}},
        {"a no-break space before the marker", "\u00A0# Title", {"#", "Title"}},
        {"a space, then a no-break space", " \u00A0# Title", {"#", "Title"}},
        {"an ideographic space before the marker", "\u3000# Title", {"#", "Title"}},
        {"text before the marker", "a # Title", {"a", "#", "Title"}},
        {"a keycap", "#\uFE0F\u20E3 Title", {"#\uFE0F\u20E3", "Title"}},
        {"a mark on the sign", "#\u0301 Title", {"#\u0301", "Title"}},
        {"a mark on the space", "# \u0301Title", {"#", "Title"}},
        {"a mark on the space before the marker", " \u0301# Title", {"#", "Title"}},
        {"a full-width sign", "\uFF03 Title", {"\uFF03", "Title"}},
        {"a joiner before the sign", "\u200D# Title", {"\u200D#", "Title"}},
        {"a byte order mark before the sign", "\uFEFF# Title", {"\uFEFF#", "Title"}},
    };
    for (const auto& [what, line, words] : cases) {
        SCOPED_TRACE(what);
        const Script script{Text(line)};
        EXPECT_EQ(titles(script), Strings{});
        EXPECT_EQ(wordTexts(script), words);
    }
}

TEST(ScriptHeading, TitleIsTheRestOfTheLineWithoutWhiteSpaceAround) {
    EXPECT_EQ(titles(Script("#  a  b  ")), Strings{"a  b"});
    EXPECT_EQ(titles(Script("# \u00A0\u3000Title\u2003")), Strings{"Title"});
    EXPECT_EQ(titles(Script("# # Title")), Strings{"# Title"});
    EXPECT_EQ(titles(Script("# .")), Strings{"."});
    EXPECT_EQ(titles(Script("# \u200B")), Strings{"\u200B"})
        << "a zero-width space is no white space";
    EXPECT_EQ(titles(Script(std::string("# \0", 3))), Strings{std::string(1, '\0')});
    EXPECT_EQ(titles(Script("#   \u0301Title")), Strings{"Title"})
        << "a space with a mark is white space and goes with it";
    EXPECT_EQ(titles(Script("#  \u0301")), Strings{}) << "white space is no title";
}

TEST(ScriptHeading, EveryLineBreakEndsIt) {
    for (const char* lineBreak : {"\n", "\r", "\r\n", "\v", "\f", "\u0085", "\u2028", "\u2029"}) {
        const Script script(Text(std::string("a") + lineBreak + "# One" + lineBreak + "b"));
        EXPECT_EQ(titles(script), Strings{"One"}) << Text(lineBreak);
        EXPECT_EQ(script.headings()[0].sourceRange, CharacterRange(2, 7));
        EXPECT_EQ(script.headings()[0].breaksBefore, 1);
        EXPECT_EQ(script.headings()[0].wordIndex, 1);
        EXPECT_EQ(wordTexts(script), (Strings{"a", "b"}));
        EXPECT_EQ(script.words()[1].breaksBefore, 1);
    }
}

TEST(ScriptHeading, LastLineNeedsNoBreak) {
    EXPECT_EQ(titles(Script("a\n# Last")), Strings{"Last"});
    EXPECT_EQ(Script("a\n# Last").headings()[0].sourceRange, CharacterRange(2, 8));
}

TEST(ScriptHeading, WordsAndTokensOfItsLineAreNone) {
    const Script script("# Don't stop\nGo\n# 2024\n");
    EXPECT_EQ(tokenTexts(script), Strings{"go"});
    EXPECT_EQ(wordTexts(script), Strings{"Go"});
    EXPECT_EQ(script.headings()[1].wordIndex, 1);
    EXPECT_EQ(script.headings()[1].firstToken, 1);
}

TEST(ScriptHeading, BreaksCountFromTheWordOrHeadingBefore) {
    const Script script("\n\n# A\n\n\n# B\nx\n\n# C\n# D\n\ny");
    EXPECT_EQ(titles(script), (Strings{"A", "B", "C", "D"}));
    EXPECT_EQ(script.headings()[0].breaksBefore, 2);
    EXPECT_EQ(script.headings()[1].breaksBefore, 3);
    EXPECT_EQ(script.words()[0].breaksBefore, 1);
    EXPECT_EQ(script.headings()[2].breaksBefore, 2);
    EXPECT_EQ(script.headings()[3].breaksBefore, 1);
    EXPECT_EQ(script.words()[1].breaksBefore, 2);
}

TEST(ScriptHeading, AScriptOfOnlyHeadingsIsEmpty) {
    const Script script("# One\n# Two");
    EXPECT_TRUE(script.isEmpty());
    EXPECT_EQ(titles(script), (Strings{"One", "Two"}));
    for (const ScriptHeading& heading : script.headings()) {
        EXPECT_EQ(heading.wordIndex, 0);
        EXPECT_EQ(heading.firstToken, 0);
    }
    EXPECT_EQ(script.tokenAtUTF16(0), std::nullopt);
}

TEST(ScriptHeading, FirstTokenCountsTokensAndNotWords) {
    const Script script("Don't - 1905\n# A");
    EXPECT_EQ(script.headings()[0].wordIndex, 3);
    EXPECT_EQ(script.headings()[0].firstToken, 5);
}

}  // namespace PrompterCore
