#include <concepts>
#include <span>
#include <string>
#include <vector>

#include "PrompterCore/prompter/ReadingProgress.h"
#include "tests/prompter/Lines.h"
#include "tests/reference/PlainPrompter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::least;
using Tests::most;

static_assert(std::copyable<ReadingProgress> && std::equality_comparable<ReadingProgress>);

struct Expected {
    std::int64_t paragraph, line, lineCount, paragraphLine, paragraphLineCount;
    double fraction;
};

void expectProgress(const ReadingProgress& progress, const Expected& expected) {
    EXPECT_EQ(progress.paragraph, expected.paragraph);
    EXPECT_EQ(progress.line, expected.line);
    EXPECT_EQ(progress.lineCount, expected.lineCount);
    EXPECT_EQ(progress.paragraphLine, expected.paragraphLine);
    EXPECT_EQ(progress.paragraphLineCount, expected.paragraphLineCount);
    EXPECT_EQ(progress.fraction, expected.fraction);
}

TEST(ReadingProgress, DoesWhatItsManualShows) {
    const ReadingProgress progress(Script("Hello brave world\n\nBye"), 3, {});
    EXPECT_EQ(progress.label(), "Paragraph 2 \u00B7 Line 1 of 1");
    EXPECT_EQ(progress.fraction, 1.0);
}

TEST(ReadingProgress, OfAnEmptyScriptIsAllOnes) {
    for (const char* text : {"", "\n\n", "# Title", "# One\n\n# Two"}) {
        for (const std::int64_t cursor : {least, std::int64_t{-1}, std::int64_t{0}, most}) {
            SCOPED_TRACE(text);
            const ReadingProgress progress(Script(text), cursor, {});
            expectProgress(progress, {1, 1, 1, 1, 1, 0});
            EXPECT_EQ(progress.label(), "Paragraph 1 \u00B7 Line 1 of 1");
        }
    }
}

TEST(ReadingProgress, FindsParagraphLineAndFraction) {
    // Three lines in two paragraphs; tokens 0 1, 2, 3 4.
    constexpr const char* text = "# One\none two\nthree\n\nfour five";
    struct Case {
        const char* what;
        const char* text;
        std::int64_t cursor;
        Expected expected;
    };
    const Case cases[] = {
        {"nothing read yet", text, -1, {1, 1, 3, 1, 2, 0}},
        {"far before", text, least, {1, 1, 3, 1, 2, 0}},
        {"the first word", text, 0, {1, 1, 3, 1, 2, 0.2}},
        {"the second line", text, 2, {1, 2, 3, 2, 2, 0.6}},
        {"the second paragraph", text, 3, {2, 3, 3, 1, 1, 0.8}},
        {"the last token", text, 4, {2, 3, 3, 1, 1, 1}},
        {"past the end", text, 5, {1, 1, 3, 1, 2, 0}},
        {"far past the end", text, most, {1, 1, 3, 1, 2, 0}},
        {"a word of two tokens, its second", "a 42 b", 2, {1, 1, 1, 1, 1, 2.0 / 3}},
        {"words that are not spoken", "- -\n\n-", 0, {1, 1, 2, 1, 1, 0}},
        {"a dash counts as a word", "- a", 0, {1, 1, 1, 1, 1, 1}},
        {"a paragraph of dashes first", "-\n\na", 0, {2, 2, 2, 1, 1, 1}},
        {"nothing read, token 0 in the second paragraph", "-\n\na", -1, {2, 1, 2, 1, 1, 0}},
        {"nothing heard of a script that begins on the next line", "\n\na", -1, {1, 1, 1, 1, 1, 0}},
    };
    for (const auto& [what, source, cursor, expected] : cases) {
        SCOPED_TRACE(what);
        expectProgress(ReadingProgress(Script(source), cursor, {}), expected);
    }
}

TEST(ReadingProgress, CountsThePrompterLinesThatItIsGiven) {
    const Script script("one two three four\n\nfive");
    const std::vector<PromptLine> lines = Tests::linesOf(script, 9);  // "one two", "three", "four"
    ASSERT_EQ(lines.size(), 5U);
    expectProgress(ReadingProgress(script, 2, lines), {1, 1, 2, 2, 3, 0.6});
    EXPECT_EQ(ReadingProgress(script, 2, lines).label(), "Paragraph 1 \u00B7 Line 2 of 3");
    expectProgress(ReadingProgress(script, 4, lines), {2, 2, 2, 1, 1, 1});
}

TEST(ReadingProgress, LinesWithoutTextHaveNoParagraph) {
    const Script script("one two");
    const std::vector<PromptLine> lines{Tests::headingLine("x", 0), Tests::blankLine(0)};
    expectProgress(ReadingProgress(script, 1, lines), {1, 1, 1, 1, 1, 1});
}

TEST(ReadingProgress, LinesOfAnotherScriptAreTakenAsTheyAre) {
    using Tests::blankLine;
    using Tests::textLine;
    const Script script("one two");
    // A line without words that holds tokens: the block behind it, and behind the last the last.
    PromptLine odd = blankLine(0);
    odd.tokenRange = TokenRange(0, 1);
    const std::vector<PromptLine> before{odd, textLine(1, 2)};
    expectProgress(ReadingProgress(script, 0, before), {1, 1, 1, 1, 1, 0.5});
    odd.tokenRange = TokenRange(1, 2);
    const std::vector<PromptLine> behind{textLine(0, 1), odd};
    expectProgress(ReadingProgress(script, 1, behind), {1, 1, 1, 2, 1, 1});
}

TEST(ReadingProgress, LineIsCountedInTheSourceText) {
    const Script script("a b\r\nc\r\n\r\n# Title\r\nd\u2028\u05D0 \u05D1");
    struct Case {
        std::int64_t cursor, line;
        double fraction;
    };
    for (const auto& [cursor, line, fraction] :
         {Case{0, 1, 1.0 / 6}, Case{1, 1, 2.0 / 6}, Case{2, 2, 0.5}, Case{3, 3, 4.0 / 6},
          Case{4, 4, 5.0 / 6}, Case{5, 4, 1}}) {
        SCOPED_TRACE(cursor);
        const ReadingProgress progress(script, cursor, {});
        EXPECT_EQ(progress.line, line);
        EXPECT_EQ(progress.lineCount, 4);
        EXPECT_EQ(progress.fraction, fraction);
    }
}

TEST(ReadingProgress, IsWhatCountingEveryWordAndLineGives) {
    Tests::forAll(
        [] {
            const Script script(*Tests::textOver({"a ", "- ", "don't ", "42 ", "\n", "\n\n", "\r\n",
                                                  "\n# One\n", "    b ", "\u05D0\u05D1 "}));
            const auto tokens = signedCount(script.tokens().size());
            // Laid out in one line for each of the script's, as when no lines are given.
            const std::vector<PromptLine> whole = Tests::linesOf(script, 1e9);
            const std::vector<PromptLine> lines = Tests::linesOf(script, *rc::gen::inRange(1, 12));
            const auto expectPlain = [&](std::int64_t cursor, std::span<const PromptLine> given,
                                         const std::vector<PromptLine>& counted) {
                const ReadingProgress found(script, cursor, given);
                const Plain::PlainProgress expected = Plain::progress(script, cursor, counted);
                RC_ASSERT(found.paragraph == expected.paragraph);
                RC_ASSERT(found.line == expected.line);
                RC_ASSERT(found.lineCount == expected.lineCount);
                RC_ASSERT(found.paragraphLine == expected.paragraphLine);
                RC_ASSERT(found.paragraphLineCount == expected.paragraphLineCount);
                RC_ASSERT(found.fraction == expected.fraction);
            };
            for (std::int64_t cursor = -2; cursor <= tokens + 1; ++cursor) {
                expectPlain(cursor, {}, whole);
                expectPlain(cursor, lines, lines);
            }
        },
        500);
}

TEST(ReadingProgress, StaysWithinItsBoundsAndNeverGoesBack) {
    Tests::forAll([](const Text& text) {
        const Script script(text);
        const std::vector<PromptLine> lines = Tests::linesOf(script, 12);
        const auto tokens = signedCount(script.tokens().size());
        const ReadingProgress* before = nullptr;
        std::vector<ReadingProgress> all;
        for (std::int64_t cursor = 0; cursor < tokens; ++cursor)
            all.emplace_back(script, cursor, lines);
        for (const ReadingProgress& progress : all) {
            RC_ASSERT(1 <= progress.line && progress.line <= progress.lineCount);
            RC_ASSERT(1 <= progress.paragraph);
            RC_ASSERT(1 <= progress.paragraphLine);
            RC_ASSERT(progress.paragraphLine <= progress.paragraphLineCount);
            RC_ASSERT(0 < progress.fraction && progress.fraction <= 1);
            if (before != nullptr) {
                RC_ASSERT(before->line <= progress.line);
                RC_ASSERT(before->paragraph <= progress.paragraph);
                RC_ASSERT(before->fraction <= progress.fraction);
            }
            before = &progress;
        }
    });
}

}  // namespace
}  // namespace PrompterCore
