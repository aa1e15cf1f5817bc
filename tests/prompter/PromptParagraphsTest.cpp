#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/PromptParagraphs.h"
#include "tests/prompter/Lines.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::blankLine;
using Tests::dashLine;
using Tests::headingLine;
using Tests::textLine;
using Lines = std::vector<PromptLine>;
using Blocks = std::vector<LineRange>;

using Tests::least;
using Tests::most;

const Lines& twoParagraphs() {
    static const Lines lines{textLine(0, 2), textLine(2, 3), blankLine(3), headingLine("One", 3),
                             textLine(3, 6)};
    return lines;
}

TEST(PromptParagraphs, BlankAndHeadingLinesPartTheBlocks) {
    EXPECT_EQ(PromptParagraphs::blocks(twoParagraphs()),
              (Blocks{LineRange(0, 2), LineRange(4, 5)}));
    EXPECT_TRUE(PromptParagraphs::blocks({}).empty());
    EXPECT_TRUE(PromptParagraphs::blocks(Lines{blankLine(0), headingLine("One", 0)}).empty());
    EXPECT_EQ(PromptParagraphs::blocks(Lines{blankLine(0), dashLine(0)}),
              (Blocks{LineRange(1, 2)}));
}

TEST(PromptParagraphs, LineBetweenTwoBlocksBelongsToTheNext) {
    const Blocks blocks = PromptParagraphs::blocks(twoParagraphs());
    struct Case {
        const char* what;
        std::int64_t line;
        std::optional<std::int64_t> block;
    };
    const Case cases[] = {
        {"in the first", 1, 0},
        {"a blank line", 2, 1},
        {"a heading", 3, 1},
        {"in the second", 4, 1},
        {"behind the last", 5, std::nullopt},
        {"before all lines", -1, 0},
        {"far before", least, 0},
        {"far behind", most, std::nullopt},
    };
    for (const auto& [what, line, block] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptParagraphs::blockContaining(line, blocks), block);
    }
    EXPECT_EQ(PromptParagraphs::blockContaining(0, {}), std::nullopt);
    EXPECT_EQ(PromptParagraphs::blockContaining(3, Blocks{LineRange(6, 9), LineRange(2, 5)}), 0);
}

TEST(PromptParagraphs, FirstTokenIsThatOfTheFirstSpokenLine) {
    const Lines lines{dashLine(0), blankLine(0), dashLine(0), textLine(0, 2), textLine(2, 3)};
    struct Case {
        const char* what;
        LineRange block;
        std::optional<std::int64_t> token;
    };
    const Case cases[] = {
        {"a lone dash", LineRange(0, 1), std::nullopt},
        {"a dash above a text", LineRange(2, 5), 0},
        {"a later line", LineRange(4, 5), 2},
        {"no lines", LineRange(3, 3), std::nullopt},
        {"lines that do not exist", LineRange(5, 9), std::nullopt},
        {"lines that begin and end outside", LineRange(least, most), 0},
        {"lines before the first", LineRange(least, -1), std::nullopt},
    };
    for (const auto& [what, block, token] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PromptParagraphs::firstTokenOf(block, lines), token);
    }
    EXPECT_EQ(PromptParagraphs::firstTokenOf(LineRange(0, 3), {}), std::nullopt);
}

TEST(PromptParagraphs, BlocksTileTheLinesWithWords) {
    Tests::forAll(
        [](const std::vector<bool>& hasWords) {
            Lines lines;
            for (const bool words : hasWords)
                lines.push_back(words ? textLine(0, 1) : blankLine(0));
            const Blocks blocks = PromptParagraphs::blocks(lines);
            std::vector<bool> covered(lines.size(), false);
            std::int64_t end = -1;
            for (std::size_t b = 0; b < blocks.size(); ++b) {
                RC_ASSERT(!blocks[b].isEmpty());
                RC_ASSERT(blocks[b].lower() > end);  // at least one line lies between two blocks
                end = blocks[b].upper();
                for (std::int64_t line = blocks[b].lower(); line < end; ++line) {
                    covered[static_cast<std::size_t>(line)] = true;
                    RC_ASSERT(PromptParagraphs::blockContaining(line, blocks) ==
                              static_cast<std::int64_t>(b));
                }
            }
            RC_ASSERT(covered == hasWords);
        },
        1000);
}

TEST(PromptParagraphs, LookupsNeverAllocate) {
    const Blocks blocks{LineRange(0, 2)};
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  static_cast<void>(PromptParagraphs::blockContaining(1, blocks));
                  static_cast<void>(PromptParagraphs::firstTokenOf(blocks[0], twoParagraphs()));
              }),
              0);
}

}  // namespace
}  // namespace PrompterCore
