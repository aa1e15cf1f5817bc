#include <vector>

#include "PrompterCore/prompter/PromptPanel.h"
#include "tests/prompter/Lines.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::blankLine;
using Tests::dashLine;
using Tests::headingLine;
using Tests::linesOf;
using Tests::textLine;
using Indices = std::vector<std::int64_t>;

using Tests::least;
using Tests::most;

// Nine lines: a heading, then text on lines 1 2 3, 5 6 and 8; two tokens each.
const std::vector<PromptLine> nine{headingLine("One", 0), textLine(0, 2),         textLine(2, 4),
                                   textLine(4, 6),        blankLine(6),           textLine(6, 8),
                                   textLine(8, 10),       headingLine("Two", 10), textLine(10, 12)};

TEST(PromptPanel, DoesWhatItsManualShows) {
    const Script script("Hello brave world\n\nBye");
    const std::vector<PromptLine> lines = linesOf(script, 11);
    EXPECT_EQ(PromptPanel::current(lines, 2), 1);
    EXPECT_EQ(PromptPanel::visible(lines, 2, 2), (Indices{0, 1, 3}));
    EXPECT_EQ(PromptPanel::wordsSaidOn(lines[0], script, 0), 1);
    EXPECT_EQ(PromptPanel::progress(1, script), 0.5);
}

TEST(PromptPanel, CurrentIsTheLineThatHoldsTheCursor) {
    EXPECT_EQ(PromptPanel::current(nine, -1), 1);
    EXPECT_EQ(PromptPanel::current(nine, least), 1);
    EXPECT_EQ(PromptPanel::current(nine, 0), 1);
    EXPECT_EQ(PromptPanel::current(nine, 5), 3);
    EXPECT_EQ(PromptPanel::current(nine, 11), 8);
    EXPECT_EQ(PromptPanel::current(nine, 12), 0) << "past the end";
    EXPECT_EQ(PromptPanel::current({}, -1), 0);
    EXPECT_EQ(PromptPanel::current({}, 3), 0);
    EXPECT_EQ(PromptPanel::current(std::vector{headingLine("One", 0), blankLine(0)}, -1), 0);
}

TEST(PromptPanel, VisibleKeepsTheLineJustRead) {
    struct Case {
        const char* what;
        std::int64_t cursor, count;
        Indices visible;
    };
    const Case cases[] = {
        {"nothing read yet: the first three", -1, 3, {1, 2, 3}},
        {"on the first there is none before", 0, 3, {1, 2, 3}},
        {"on the second", 2, 3, {1, 2, 3, 5}},
        {"across the blank line", 6, 2, {3, 5, 6}},
        {"on the fifth: the fourth to the last", 8, 3, {5, 6, 8}},
        {"on the last", 11, 3, {6, 8}},
        {"past the end: as if on line 0", 12, 2, {1, 2}},
        {"none from the current one on", 2, 0, {1}},
        {"none at all", 0, 0, {}},
        {"none before the first token", -1, 0, {}},
        {"fewer than none", 8, -1, {}},
        {"the least count", 8, least, {}},
        {"as many as there are", 4, most, {2, 3, 5, 6, 8}},
    };
    for (const auto& [what, cursor, count, visible] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptPanel::visible(nine, cursor, count), visible);
    }
}

TEST(PromptPanel, OnTheFifthOfManyThreeFromThereAndTheOneBefore) {
    const std::vector<PromptLine> lines = linesOf("a\nb\nc\nd\ne\nf\ng\nh", 40);
    EXPECT_EQ(PromptPanel::visible(lines, 4, 3), (Indices{3, 4, 5, 6}));
    EXPECT_EQ(PromptPanel::visible(lines, -1, 3), (Indices{0, 1, 2}));
}

TEST(PromptPanel, WithoutTextLinesNothingIsVisible) {
    EXPECT_TRUE(PromptPanel::visible({}, 0, 3).empty());
    EXPECT_TRUE(PromptPanel::visible(std::vector{headingLine("One", 0)}, -1, 3).empty());
}

TEST(PromptPanel, LinesThatAreNotSpokenAreVisibleToo) {
    const std::vector<PromptLine> lines{dashLine(0), textLine(0, 1), dashLine(1), textLine(1, 2)};
    EXPECT_EQ(PromptPanel::visible(lines, -1, 2), (Indices{0, 1}));
    EXPECT_EQ(PromptPanel::visible(lines, 1, 1), (Indices{2, 3}));
}

TEST(PromptPanel, WordsAreSaidWithTheirLastToken) {
    const Script script("one 42 - four\nfive");  // tokens: one, forty, two, four, five
    const std::vector<PromptLine> lines = linesOf(script, 40);
    struct Case {
        const char* what;
        std::size_t line;
        std::int64_t cursor, words;
    };
    const Case cases[] = {
        {"nothing", 0, -1, 0},       {"far before", 0, least, 0},
        {"the first", 0, 0, 1},      {"half of a number", 0, 1, 1},
        {"and the dash", 0, 2, 3},   {"all", 0, 3, 4},
        {"far past it", 0, most, 4}, {"the next line, not yet", 1, 3, 0},
        {"the next line", 1, 4, 1},
    };
    for (const auto& [what, line, cursor, words] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptPanel::wordsSaidOn(lines[line], script, cursor), words);
    }
}

TEST(PromptPanel, TheFirstTokenOfALinesSecondWordMakesTwo) {
    const Script script("a b\nc d e");
    EXPECT_EQ(PromptPanel::wordsSaidOn(linesOf(script, 40)[1], script, 3), 2);
}

TEST(PromptPanel, ADashInFrontIsSaidBeforeTheFirstToken) {
    const Script script("- a");
    EXPECT_EQ(PromptPanel::wordsSaidOn(linesOf(script, 40)[0], script, -1), 1);
}

TEST(PromptPanel, BlankAndHeadingLinesHaveNoWords) {
    EXPECT_EQ(PromptPanel::wordsSaidOn(headingLine("One", 0), Script("a"), 5), 0);
}

TEST(PromptPanelDeathTest, WordsOfAnotherScriptStopTheProgram) {
    for (const WordRange words : {WordRange(0, 2), WordRange(2, 2), WordRange(-1, 0)})
        EXPECT_DEATH(static_cast<void>(PromptPanel::wordsSaidOn(
                         textLine("x", TokenRange(0, 1), words), Script("a"), 0)),
                     "the line's words lie within the script's");
}

TEST(PromptPanel, ProgressCountsTheTokenUnderTheCursor) {
    const Script script("a b c d");
    EXPECT_EQ(PromptPanel::progress(-1, script), 0);
    EXPECT_EQ(PromptPanel::progress(least, script), 0);
    EXPECT_EQ(PromptPanel::progress(0, script), 0.25);
    EXPECT_EQ(PromptPanel::progress(3, script), 1);
    EXPECT_EQ(PromptPanel::progress(4, script), 1);
    EXPECT_EQ(PromptPanel::progress(most, script), 1);
    EXPECT_EQ(PromptPanel::progress(0, Script("# Only\n- -")), 0);
}

TEST(PromptPanel, TheWordsSaidOnAllLinesAreThoseOfTheScript) {
    Tests::forAll([](const Text& text) {
        const Script script(text);
        const std::vector<PromptLine> lines = linesOf(script, 9);
        for (std::int64_t cursor = -1; cursor <= signedCount(script.tokens().size()); ++cursor) {
            std::int64_t said = 0;
            for (const PromptLine& line : lines)
                said += PromptPanel::wordsSaidOn(line, script, cursor);
            std::int64_t expected = 0;
            for (const ScriptWord& word : script.words())
                expected += word.tokenRange.upper() <= cursor + 1 ? 1 : 0;
            RC_ASSERT(said == expected);
        }
    });
}

TEST(PromptPanel, WhatRunsPerFrameNeverAllocates) {
    const Script script("a b\nc d e");
    const std::vector<PromptLine> lines = linesOf(script, 40);
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  static_cast<void>(PromptPanel::current(lines, 3));
                  static_cast<void>(PromptPanel::wordsSaidOn(lines[1], script, 3));
                  static_cast<void>(PromptPanel::progress(3, script));
              }),
              0);
}

}  // namespace
}  // namespace PrompterCore
