#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/PrompterNavigation.h"
#include "tests/prompter/Lines.h"
#include "tests/reference/PlainPrompter.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using PrompterNavigation::lineStart;
using PrompterNavigation::paragraphStart;
using Tests::blankLine;
using Tests::dashLine;
using Tests::headingLine;
using Tests::linesOf;
using Tests::textLine;
using Lines = std::vector<PromptLine>;
using MaybeToken = std::optional<std::int64_t>;

using Tests::least;
using Tests::most;

struct Move {
    const char* what;
    std::int64_t step, cursor;
    MaybeToken token;
};

TEST(PrompterNavigation, DoesWhatItsManualShows) {
    const Lines lines{textLine(0, 4), textLine(4, 7), blankLine(7), textLine(7, 9)};
    EXPECT_EQ(lineStart(1, 5, lines), 7);
    EXPECT_EQ(paragraphStart(-1, 5, lines), 0);
    EXPECT_EQ(paragraphStart(1, 8, lines), 7);
}

TEST(PrompterNavigation, MovesByLinesWithTokens) {
    // Text at 1, 4, 5 and 7.
    const Lines lines{headingLine("One", 0), textLine(0, 3), dashLine(3),
                      blankLine(3),          textLine(3, 5), textLine(5, 8),
                      blankLine(8),          textLine(8, 9), dashLine(9)};
    const Move moves[] = {
        {"down from the first", 1, 1, 3},
        {"down over a dash and a blank line", 1, 0, 3},
        {"up to a line's start", -1, 4, 0},
        {"two down", 2, 4, 8},
        {"five down, two from the end", 5, 4, 8},
        {"down on the last", 1, 8, std::nullopt},
        {"up on the first", -1, 2, std::nullopt},
        {"up on the first, from its own start", -1, 0, std::nullopt},
        {"no step", 0, 4, std::nullopt},
        {"nothing read yet", 1, -1, 3},
        {"nothing read yet, up", -1, -1, std::nullopt},
        {"a cursor far before", 1, least, 3},
        {"a cursor past the end counts as on the first line", 1, 9, 3},
        {"a cursor far past the end", 2, most, 5},
        {"as far down as it goes", most, 0, 8},
        {"as far down as it goes, on the last", most, 8, std::nullopt},
        {"as far up as it goes", least, 8, 0},
        {"as far up as it goes, on the first", least, 0, std::nullopt},
    };
    for (const auto& [what, step, cursor, token] : moves) {
        SCOPED_TRACE(what);
        EXPECT_EQ(lineStart(step, cursor, lines), token);
        EXPECT_EQ(Plain::lineStart(step, cursor, lines), token);
    }
}

TEST(PrompterNavigation, CursorOnNoLineCountsAsOnTheFirst) {
    const Lines lines{textLine(3, 5), textLine(5, 6)};
    EXPECT_EQ(lineStart(1, -1, lines), 5);
    EXPECT_EQ(lineStart(-1, -1, lines), std::nullopt);
}

TEST(PrompterNavigation, MovesByParagraphs) {
    // Paragraphs at 0, 4 and 9; a dash stands alone between the last two.
    const Lines lines{textLine(0, 4), blankLine(4),          dashLine(4),
                      textLine(4, 6), textLine(6, 9),        blankLine(9),
                      dashLine(9),    headingLine("One", 9), textLine(9, 12)};
    const Move moves[] = {
        {"down", 1, 1, 4},
        {"down from a start", 1, 4, 9},
        {"back to the own start", -1, 7, 4},
        {"back from the start", -1, 4, 0},
        {"two back from within", -2, 7, 0},
        {"back from within the first", -1, 2, 0},
        {"back at the first start", -1, 0, std::nullopt},
        {"down at the last start", 1, 9, std::nullopt},
        {"down from within the last, back to its start", 1, 10, 9},
        {"no step", 0, 7, std::nullopt},
        {"nothing read yet", 1, -1, 4},
        {"nothing read yet, up", -1, -1, std::nullopt},
        {"a cursor past the end, up", -1, 12, 9},
        {"a cursor past the end, down", 1, most, 9},
        {"as far down as it goes", most, 7, 9},
        {"as far down as it goes, from the last", most, 9, std::nullopt},
        {"as far up as it goes", least, 7, 0},
        {"as far up as it goes, from the first", least, 0, std::nullopt},
    };
    for (const auto& [what, step, cursor, token] : moves) {
        SCOPED_TRACE(what);
        EXPECT_EQ(paragraphStart(step, cursor, lines), token);
        EXPECT_EQ(Plain::paragraphStart(step, cursor, lines), token);
    }
}

TEST(PrompterNavigation, WithoutTokensThereIsNowhereToGo) {
    for (const Lines& lines : {Lines{}, Lines{blankLine(0), headingLine("One", 0)},
                               Lines{dashLine(0), blankLine(0), dashLine(0)}}) {
        for (const std::int64_t step : {least, std::int64_t{-1}, std::int64_t{1}, most}) {
            EXPECT_EQ(lineStart(step, 0, lines), std::nullopt);
            EXPECT_EQ(paragraphStart(step, 0, lines), std::nullopt);
        }
    }
}

TEST(PrompterNavigation, ParagraphsOutOfOrderAreTakenInListOrder) {
    const Lines lines{textLine(6, 8), blankLine(0), textLine(2, 4), blankLine(0), textLine(4, 6)};
    EXPECT_EQ(paragraphStart(1, 3, lines), 4);
    EXPECT_EQ(paragraphStart(-1, 7, lines), 4);
    EXPECT_EQ(paragraphStart(1, 0, lines), 2) << "none has begun: counted from the first";
}

rc::Gen<Lines> anyLines() {
    return rc::gen::map(rc::gen::tuple(Tests::textOver({"a ", "b ", "\u2014 ", "\n", "\n\n",
                                                        "\n# One\n", "don't "}),
                                       rc::gen::inRange(1, 12)),
                        [](const std::tuple<Text, int>& made) {
                            return linesOf(std::get<0>(made), std::get<1>(made));
                        });
}

TEST(PrompterNavigation, DoesWhatThePlainOneDoes) {
    Tests::forAll(
        [] {
            const Lines lines = *anyLines();
            const std::int64_t tokens = lines.empty() ? 0 : lines.back().tokenRange.upper();
            for (std::int64_t cursor = -2; cursor <= tokens + 1; ++cursor) {
                for (const std::int64_t step :
                     {least, std::int64_t{-3}, std::int64_t{-2}, std::int64_t{-1}, std::int64_t{0},
                      std::int64_t{1}, std::int64_t{2}, std::int64_t{3}, most}) {
                    RC_ASSERT(lineStart(step, cursor, lines) ==
                              Plain::lineStart(step, cursor, lines));
                    RC_ASSERT(paragraphStart(step, cursor, lines) ==
                              Plain::paragraphStart(step, cursor, lines));
                }
            }
        },
        500);
}

TEST(PrompterNavigation, ManyLinesAreSoManySingleSteps) {
    Tests::forAll(
        [] {
            const Lines lines = *anyLines();
            const std::int64_t tokens = lines.empty() ? 0 : lines.back().tokenRange.upper();
            const std::int64_t start = *rc::gen::inRange<std::int64_t>(-1, tokens + 1);
            for (const std::int64_t one : {-1, 1}) {
                MaybeToken reached;
                std::int64_t cursor = start;
                for (std::int64_t count = 1; count <= 6; ++count) {
                    if (const MaybeToken next = lineStart(one, cursor, lines)) {
                        reached = next;
                        cursor = *next;
                    }
                    RC_ASSERT(lineStart(one * count, start, lines) == reached);
                }
            }
        },
        500);
}

TEST(PrompterNavigation, SingleStepsVisitEveryLineAndParagraphOnce) {
    Tests::forAll(
        [] {
            const Lines lines = *anyLines();
            std::vector<std::int64_t> starts;
            for (const PromptLine& line : lines)
                if (!line.tokenRange.isEmpty()) starts.push_back(line.tokenRange.lower());
            std::vector<std::int64_t> visited;
            if (!starts.empty()) visited.push_back(0);
            while (const MaybeToken next =
                       lineStart(1, visited.empty() ? 0 : visited.back(), lines))
                visited.push_back(*next);
            RC_ASSERT(visited == starts);
            std::int64_t cursor = 0;
            while (const MaybeToken next = paragraphStart(1, cursor, lines)) {
                RC_ASSERT(*next > cursor);
                // One step back returns to where it came from.
                RC_ASSERT(paragraphStart(-1, *next, lines) == cursor);
                cursor = *next;
            }
        },
        500);
}

TEST(PrompterNavigation, MovingByLinesNeverAllocates) {
    const Lines lines{textLine(0, 4), textLine(4, 7), blankLine(7), textLine(7, 9)};
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  static_cast<void>(lineStart(2, 0, lines));
                  static_cast<void>(lineStart(-2, 8, lines));
              }),
              0);
    static_assert(noexcept(lineStart(0, 0, {})));
}

}  // namespace
}  // namespace PrompterCore
