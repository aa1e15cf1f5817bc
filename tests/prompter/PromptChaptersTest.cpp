#include <concepts>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/PromptChapters.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "tests/prompter/Lines.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::blankLine;
using Tests::headingLine;
using Tests::linesOf;
using Tests::textLine;
using Chapters = std::vector<PromptChapter>;

using Tests::least;
using Tests::most;

static_assert(std::copyable<PromptChapter> && std::equality_comparable<PromptChapter>);

Chapters chaptersOf(Text text, double width) {
    const Script script(std::move(text));
    return PromptChapters::chaptersOf(script, linesOf(script, width));
}

Chapters chaptersAt(const std::vector<std::int64_t>& firstTokens) {
    Chapters chapters;
    for (const std::int64_t token : firstTokens)
        chapters.push_back({.index = static_cast<std::int64_t>(chapters.size()),
                            .title = "Title",
                            .firstToken = token,
                            .lineCount = 1,
                            .startsAt = 0});
    return chapters;
}

TEST(PromptChapters, DoWhatTheirManualShows) {
    const Chapters chapters = chaptersOf("# One\nHello world\n# Two\nBye", 40);
    EXPECT_EQ(chapters, (Chapters{{0, "One", 0, 2, 0}, {1, "Two", 2, 2, 0}}));
    EXPECT_EQ(PromptChapters::current(2, chapters), 1);
    EXPECT_EQ(PromptChapters::fillOf(0, 0, chapters, 3), 0.5);
}

TEST(PromptChapters, WithoutHeadingsThereAreNone) {
    EXPECT_TRUE(chaptersOf("Hello\n\nworld", 40).empty());
    EXPECT_TRUE(chaptersOf("", 40).empty());
    for (const std::int64_t cursor : {least, std::int64_t{-1}, std::int64_t{5}, most})
        EXPECT_EQ(PromptChapters::current(cursor, {}), 0);
}

TEST(PromptChapters, BlankLinesCountUpToTheNextHeading) {
    const Script script("# One\na b c\n# Two\nd");
    const std::vector<PromptLine> lines{
        headingLine("One", 0), textLine(0, 1),        textLine(1, 2), textLine(2, 3),
        blankLine(3),          headingLine("Two", 3), textLine(3, 4)};
    const Chapters chapters = PromptChapters::chaptersOf(script, lines);
    ASSERT_EQ(chapters.size(), 2U);
    EXPECT_EQ(chapters[0].lineCount, 5);
    EXPECT_EQ(chapters[1].lineCount, 2);
    // So it is with a script whose last heading has nothing below it.
    EXPECT_EQ(chaptersOf("# One\na\nb\nc\n\n# Two", 40)[0].lineCount, 5);
}

TEST(PromptChapters, LinesAboveTheFirstHeadingBelongToNone) {
    EXPECT_EQ(chaptersOf("Hello there\n\n# One\n\nworld", 5), (Chapters{{0, "One", 2, 3, 0}}));
}

TEST(PromptChapters, StartsAtCountsEveryWordBefore) {
    std::string text;
    for (int i = 0; i < 400; ++i)
        text += "word ";
    EXPECT_EQ(chaptersOf(text + "\n# Late\nbye", 40)[0].startsAt, 160);
}

TEST(PromptChapters, LinesOfAnotherScriptPairForAsLongAsBothHaveOne) {
    const Script one("# One\na");
    const std::vector<PromptLine> two{headingLine("x", 0), textLine(0, 1), blankLine(1),
                                      headingLine("y", 1), textLine(1, 2)};
    // The next heading line ends the last chapter too.
    EXPECT_EQ(PromptChapters::chaptersOf(one, two), (Chapters{{0, "One", 0, 3, 0}}));
    const Script three("# One\na\n# Two\nb\n# Three");
    EXPECT_EQ(PromptChapters::chaptersOf(three, two),
              (Chapters{{0, "One", 0, 3, 0}, {1, "Two", 1, 2, 0}}));
    EXPECT_TRUE(PromptChapters::chaptersOf(three, {}).empty());
}

TEST(PromptChapters, CurrentIsTheLastThatHasBegun) {
    struct Case {
        const char* what;
        std::vector<std::int64_t> firstTokens;
        std::int64_t cursor, current;
    };
    const Case cases[] = {
        {"nothing read yet", {0, 5}, -1, 0},
        {"just before the second", {0, 5}, 4, 0},
        {"at the second", {0, 5}, 5, 1},
        {"past the end", {0, 5}, most, 1},
        {"in front of the first", {3, 5}, 1, 0},
        {"in front of the first, at the beginning", {3, 5}, 0, 0},
        {"the last of two at one token", {0, 5, 5, 8}, 6, 2},
        {"the last of two at the beginning", {0, 0, 8}, -1, 1},
        {"a negative cursor counts as 0", {-3, 0, 1}, -2, 1},
        {"chapters out of order", {0, 9, 4}, 9, 2},
    };
    for (const auto& [what, firstTokens, cursor, current] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptChapters::current(cursor, chaptersAt(firstTokens)), current);
    }
}

TEST(PromptChapters, TheTokenUnderTheCursorCountsAsRead) {
    struct Case {
        const char* what;
        std::vector<std::int64_t> firstTokens;
        std::int64_t index, cursor, tokenCount;
        double fill;
    };
    const Case cases[] = {
        {"last chapter, before it", {0, 10}, 1, 9, 20, 0},
        {"last chapter, its first token", {0, 10}, 1, 10, 20, 0.1},
        {"last chapter, its last token", {0, 10}, 1, 19, 20, 1},
        {"last chapter, far past the end", {0, 10}, 1, 40, 20, 1},
        {"first chapter, nothing read yet", {0, 10}, 0, -1, 20, 0},
        {"first chapter, a fifth", {0, 10}, 0, 1, 20, 0.2},
        {"first chapter, read while in the second", {0, 10}, 0, 10, 20, 1},
        {"empty chapter, before it", {10, 10}, 0, 9, 20, 0},
        {"empty chapter, at its token", {10, 10}, 0, 10, 20, 1},
        {"empty last chapter, before it", {0, 10}, 1, 9, 10, 0},
        {"empty last chapter, at its token", {0, 10}, 1, 10, 10, 1},
        {"chapters out of order, before", {9, 4}, 0, 8, 20, 0},
        {"chapters out of order, behind", {9, 4}, 0, 9, 20, 1},
        {"token count below the start", {5}, 0, 5, 0, 1},
        {"the highest cursor", {0}, 0, most, most, 1},
        {"the lowest cursor", {0}, 0, least, most, 0},
        {"everything as wide as it goes", {least}, 0, -1, most, 0.5},
        {"a chapter that ends nowhere", {0}, 0, 5, least, 1},
        {"tokens where doubles are coarse", {most - 10}, 0, most - 7, most, 0.4},
    };
    for (const auto& [what, firstTokens, index, cursor, tokenCount, fill] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptChapters::fillOf(index, cursor, chaptersAt(firstTokens), tokenCount), fill);
    }
}

TEST(PromptChapters, FillRisesFromNothingToOne) {
    Tests::forAll([](std::vector<std::uint8_t> lengths) {
        lengths.push_back(1);
        std::vector<std::int64_t> firstTokens;
        std::int64_t token = 0;
        for (const std::uint8_t length : lengths) {
            firstTokens.push_back(token);
            token += length % 5;
        }
        const Chapters chapters = chaptersAt(firstTokens);
        for (std::int64_t index = 0; index < static_cast<std::int64_t>(chapters.size()); ++index) {
            double before = 0;
            for (std::int64_t cursor = -1; cursor <= token; ++cursor) {
                const double fill = PromptChapters::fillOf(index, cursor, chapters, token);
                RC_ASSERT(before <= fill);
                RC_ASSERT(fill <= 1.0);
                before = fill;
            }
            RC_ASSERT(before == 1);
        }
    });
}

TEST(PromptChapters, AgreeWithTheScriptsOwnWhereThatHasOne) {
    Tests::forAll([] {
        const Script script(*rc::gen::map(
            rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
                "a ", "don't ", "\n# One\n", "\n\n", "\n# Two", "- ")),
            [](const std::vector<std::string>& pieces) {
                std::string text;
                for (const std::string& piece : pieces)
                    text += piece;
                return Text(text);
            }));
        const std::vector<ScriptChapter> own = ScriptChapters::chaptersOf(script);
        const Chapters shown = PromptChapters::chaptersOf(script, linesOf(script, 6));
        RC_ASSERT(shown.size() == own.size());
        for (std::int64_t cursor = -1; cursor < signedCount(script.tokens().size()) + 1; ++cursor)
            RC_ASSERT(PromptChapters::current(cursor, shown) ==
                      ScriptChapters::current(cursor, own).value_or(0));
    });
}

TEST(PromptChaptersDeathTest, FillOfNoChapterStopsTheProgram) {
    const Chapters chapters = chaptersAt({0, 10});
    for (const std::int64_t index : {least, std::int64_t{-1}, std::int64_t{2}, most})
        EXPECT_DEATH(static_cast<void>(PromptChapters::fillOf(index, 0, chapters, 20)),
                     "the chapter is in the list");
    EXPECT_DEATH(static_cast<void>(PromptChapters::fillOf(0, 0, {}, 20)),
                 "the chapter is in the list");
}

TEST(PromptChapters, QuestionsPerFrameNeverAllocate) {
    const Chapters chapters = chaptersAt({0, 10});
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  static_cast<void>(PromptChapters::current(12, chapters));
                  static_cast<void>(PromptChapters::fillOf(1, 12, chapters, 20));
              }),
              0);
}

}  // namespace
}  // namespace PrompterCore
