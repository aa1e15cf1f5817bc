#include <concepts>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/prompter/Lines.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"

namespace PrompterCore {
namespace {

using Tests::blankLine;
using Tests::codePointsOf;
using Tests::dashLine;
using Tests::headingLine;
using Tests::linesOf;
using Tests::textLine;
using Lines = std::vector<PromptLine>;

using Tests::infinity;
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
using Tests::least;
using Tests::most;

static_assert(std::copyable<PromptLine> && std::equality_comparable<PromptLine>);
static_assert(std::is_nothrow_move_constructible_v<PromptLine>);
static_assert(std::copyable<LineBreaker> && !std::equality_comparable<LineBreaker>);
static_assert(!std::default_initializable<LineBreaker>);

TEST(LineBreaker, DoesWhatItsManualShows) {
    const Lines lines = linesOf("Hello brave world\n\nBye", 11);
    EXPECT_EQ(lines, (Lines{textLine("Hello brave", TokenRange(0, 2), WordRange(0, 2)),
                            textLine("world", TokenRange(2, 3), WordRange(2, 3)), blankLine(3),
                            textLine("Bye", TokenRange(3, 4), WordRange(3, 4))}));
    EXPECT_EQ(LineBreaker::lineContaining(2, lines), 1);
    EXPECT_EQ(LineBreaker::lineIndexFor(2.5, lines), 2.0);
}

TEST(PromptLine, IsWrittenAsItsManualShows) {
    const PromptLine line{
        .text = "Good evening", .tokenRange = TokenRange(4, 6), .wordRange = WordRange(4, 6)};
    EXPECT_FALSE(line.isBlank());
    EXPECT_EQ(line.indent, 0);
    EXPECT_EQ(line.heading, std::nullopt);
}

TEST(LineBreaker, EverythingButWordsIsALineToo) {
    struct Case {
        const char* what;
        const char* text;
        double width;
        Lines lines;
    };
    const Case cases[] = {
        {"no text", "", 10, {}},
        {"white space alone", " \n\t\n ", 10, {}},
        {"one word wider than the column",
         "Extraordinary",
         5,
         {textLine("Extraordinary", TokenRange(0, 1), WordRange(0, 1))}},
        {"two words that fit exactly, and a third",
         "ab cd ef",
         5,
         {textLine("ab cd", TokenRange(0, 2), WordRange(0, 2)),
          textLine("ef", TokenRange(2, 3), WordRange(2, 3))}},
        {"a blank line between two texts",
         "Hello\n\nworld",
         40,
         {textLine("Hello", TokenRange(0, 1), WordRange(0, 1)), blankLine(1, 1),
          textLine("world", TokenRange(1, 2), WordRange(1, 2))}},
        {"two line breaks before the first word",
         "\n\nHello",
         40,
         {blankLine(0, 0), textLine("Hello", TokenRange(0, 1), WordRange(0, 1))}},
        {"one line break before the first word",
         "\nHello",
         40,
         {textLine("Hello", TokenRange(0, 1), WordRange(0, 1))}},
        {"a heading right above its text",
         "# Intro\nHello",
         40,
         {headingLine("Intro", 0, 0), textLine("Hello", TokenRange(0, 1), WordRange(0, 1))}},
        {"a blank line below a heading",
         "# Intro\n\nHello",
         40,
         {headingLine("Intro", 0, 0), blankLine(0, 0),
          textLine("Hello", TokenRange(0, 1), WordRange(0, 1))}},
        {"two headings, a blank line between them, no words",
         "# One\n\n# Two",
         40,
         {headingLine("One", 0, 0), blankLine(0, 0), headingLine("Two", 0, 0)}},
        {"blank lines in front of the first heading go",
         "\n\n\n# One",
         40,
         {headingLine("One", 0, 0)}},
        {"a blank line between a text and a heading goes when more text follows",
         "a\n\n# One\nb",
         40,
         {textLine("a", TokenRange(0, 1), WordRange(0, 1)), headingLine("One", 1, 1),
          textLine("b", TokenRange(1, 2), WordRange(1, 2))}},
        {"it stays when no text follows",
         "a\n\n# One",
         40,
         {textLine("a", TokenRange(0, 1), WordRange(0, 1)), blankLine(1, 1),
          headingLine("One", 1, 1)}},
        {"it stays in front of a second heading",
         "a\n\n# One\n\n# Two\nb",
         40,
         {textLine("a", TokenRange(0, 1), WordRange(0, 1)), headingLine("One", 1, 1),
          blankLine(1, 1), headingLine("Two", 1, 1),
          textLine("b", TokenRange(1, 2), WordRange(1, 2))}},
        {"blank lines at the end go",
         "a\n\n\n",
         40,
         {textLine("a", TokenRange(0, 1), WordRange(0, 1))}},
        {"a word with two tokens and one with none",
         "Don't \u2014",
         40,
         {textLine("Don't \u2014", TokenRange(0, 2), WordRange(0, 2))}},
        {"a carriage return with its line feed is one break",
         "a\r\n\r\nb",
         40,
         {textLine("a", TokenRange(0, 1), WordRange(0, 1)), blankLine(1, 1),
          textLine("b", TokenRange(1, 2), WordRange(1, 2))}},
        {"several blanks between words become one space",
         "a \t\u3000 b",
         40,
         {textLine("a b", TokenRange(0, 2), WordRange(0, 2))}},
    };
    for (const auto& [what, text, width, lines] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(linesOf(text, width), lines);
    }
    EXPECT_TRUE(headingLine("Intro", 0).isBlank());
}

TEST(LineBreaker, ContinuationKeepsTheIndentation) {
    std::vector<std::string> measured;
    const LineBreaker breaker{.width = 9, .measure = [&](std::string_view text) {
                                  measured.emplace_back(text);
                                  return codePointsOf(text);
                              }};
    EXPECT_EQ(breaker.linesFor(Script("    ab cd ef\ngh")),
              (Lines{textLine("ab cd", TokenRange(0, 2), WordRange(0, 2), 4),
                     textLine("ef", TokenRange(2, 3), WordRange(2, 3), 4),
                     textLine("gh", TokenRange(3, 4), WordRange(3, 4))}));
    EXPECT_EQ(measured, (std::vector<std::string>{"    ab cd", "    ab cd ef"}));
}

TEST(LineBreaker, HeadingLeavesTheIndentationToItsText) {
    EXPECT_EQ(linesOf("\ta\n  # One\nb", 40),
              (Lines{textLine("a", TokenRange(0, 1), WordRange(0, 1), 4), headingLine("One", 1, 1),
                     textLine("b", TokenRange(1, 2), WordRange(1, 2))}));
}

TEST(LineBreaker, MeasuresOnlyBehindAWord) {
    int calls = 0;
    const auto callsFor = [&](Text text, double width) {
        calls = 0;
        const LineBreaker breaker{.width = width, .measure = [&](std::string_view candidate) {
                                      ++calls;
                                      return codePointsOf(candidate);
                                  }};
        static_cast<void>(breaker.linesFor(Script(std::move(text))));
        return calls;
    };
    EXPECT_EQ(callsFor("one", 1), 0);
    EXPECT_EQ(callsFor("one\ntwo\n# Three\nfour", 1), 0);
    EXPECT_EQ(callsFor("one two three", 40), 2);
    // A word that went to a new line is not measured there again.
    EXPECT_EQ(callsFor("one two three", 1), 2);
}

TEST(LineBreaker, OnlyAWidthThatIsGreaterBreaks) {
    struct Case {
        const char* what;
        double width, measured;
        std::size_t lines;
    };
    const Case cases[] = {
        {"equal", 7, 7, 1},
        {"a little wider", 7, 7.000001, 2},
        {"no column", -1, 0, 2},
        {"a column without end", infinity, infinity, 1},
        {"a width that is no number", noNumber, 7, 1},
        {"a measure that is no number", 7, noNumber, 1},
        {"a measure without end", 7, infinity, 2},
    };
    for (const auto& [what, width, measured, lines] : cases) {
        SCOPED_TRACE(what);
        const LineBreaker breaker{.width = width,
                                  .measure = [m = measured](std::string_view) { return m; }};
        EXPECT_EQ(breaker.linesFor(Script("a b")).size(), lines);
    }
}

TEST(LineBreaker, KeepsTheBytesAsWritten) {
    const Text text("caf\u00E9 cafe\u0301 \U0001F1E9\U0001F1EA");
    EXPECT_EQ(linesOf(text, 40)[0].text.utf8(), text.utf8());
    const std::string zeros("a\0b \0", 5);
    EXPECT_EQ(linesOf(Text(zeros), 40)[0].text.utf8(), zeros);
}

TEST(LineBreakerDeathTest, MissingMeasureStopsTheProgram) {
    const LineBreaker breaker{.width = 10, .measure = nullptr};
    EXPECT_DEATH(static_cast<void>(breaker.linesFor(Script("a b"))), "measuring function is set");
}

TEST(LineBreaker, TokenIsOnTheLineThatHoldsIt) {
    const Lines lines = linesOf("a b\n\nc\nDon't \u2014\n\u2014\nd e", 40);
    ASSERT_EQ(lines.size(), 6U);
    struct Case {
        const char* what;
        std::int64_t token;
        std::optional<std::int64_t> line;
    };
    const Case cases[] = {
        {"before the first", -1, std::nullopt},
        {"far before the first", least, std::nullopt},
        {"the first", 0, 0},
        {"behind a blank line", 2, 2},
        {"the second token of a word", 4, 3},
        {"behind a line without tokens", 5, 5},
        {"the last", 6, 5},
        {"past the end", 7, std::nullopt},
        {"far past the end", most, std::nullopt},
    };
    for (const auto& [what, token, line] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LineBreaker::lineContaining(token, lines), line);
    }
    EXPECT_EQ(LineBreaker::lineContaining(0, {}), std::nullopt);
    const Lines four = linesOf("a b\nc d\ne f\ng h", 40);
    EXPECT_EQ(LineBreaker::lineContaining(7, four), 3) << "the second word of line 3";
}

TEST(LineBreaker, LinesOutOfOrderAreSearchedAllTheSame) {
    const Lines lines{textLine(4, 6), textLine(0, 2), textLine(2, 4)};
    EXPECT_EQ(LineBreaker::lineContaining(1, lines), 1);
    EXPECT_EQ(LineBreaker::lineContaining(3, lines), 2);
    EXPECT_EQ(LineBreaker::lineContaining(5, lines), std::nullopt) << "it lies left of the middle";
}

TEST(LineBreaker, ReadingThroughALineCarriesOverTheBlanksBehindIt) {
    const Lines lines{textLine(0, 4), blankLine(4), textLine(4, 6), headingLine("One", 6),
                      blankLine(6)};
    struct Case {
        const char* what;
        double position, index;
    };
    const Case cases[] = {
        {"the start", 0, 0},
        {"before the start", -3.5, 0},
        {"before everything", -infinity, 0},
        {"no number", noNumber, 0},
        {"half of the first line and of the blank behind it", 2, 1.0},
        {"the second text's first token", 4, 2},
        {"half of it, a heading and a blank", 5, 3.5},
        {"past the last token", 6, 5},
        {"far past it", 1e300, 5},
        {"past everything", infinity, 5},
    };
    for (const auto& [what, position, index] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LineBreaker::lineIndexFor(position, lines), index);
    }
}

TEST(LineBreaker, LineIndexHasAnAnswerForAnyLines) {
    EXPECT_EQ(LineBreaker::lineIndexFor(3, {}), 0);
    EXPECT_EQ(LineBreaker::lineIndexFor(3, Lines{blankLine(0), headingLine("One", 0)}), 0);
    EXPECT_EQ(LineBreaker::lineIndexFor(3, Lines{dashLine(0), blankLine(0)}), 2);
    EXPECT_EQ(LineBreaker::lineIndexFor(2, Lines{dashLine(5)}), 0) << "a span of 0 has no fraction";
    EXPECT_EQ(LineBreaker::lineIndexFor(1, Lines{textLine(3, 5), textLine(0, 2)}), 0);
    // The widest range there is.
    const PromptLine wide = textLine("text", TokenRange(least, most), WordRange(0, 1));
    EXPECT_EQ(LineBreaker::lineIndexFor(0, Lines{wide}), 0.5);
    EXPECT_EQ(LineBreaker::lineIndexFor(infinity, Lines{wide}), 1);
}

TEST(LineBreaker, LookupsNeverAllocate) {
    const Lines lines = linesOf("a b\n\nc", 40);
    EXPECT_GT(Tests::allocationsDuring([&] { static_cast<void>(linesOf("a", 1)); }), 0);
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  static_cast<void>(LineBreaker::lineContaining(2, lines));
                  static_cast<void>(LineBreaker::lineIndexFor(1.5, lines));
              }),
              0);
    static_assert(noexcept(LineBreaker::lineContaining(0, {})));
    static_assert(noexcept(LineBreaker::lineIndexFor(0, {})));
}

}  // namespace
}  // namespace PrompterCore
