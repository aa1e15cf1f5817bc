#include <concepts>
#include <string>
#include <vector>

#include "PrompterCore/library/LineDiff.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using enum DiffOperation;
using enum LineChange;
using Lines = std::vector<DiffLine>;

static_assert(std::copyable<DiffLine> && std::equality_comparable<DiffLine>);
static_assert(std::copyable<DiffSummary> && std::equality_comparable<DiffSummary>);

TEST(LineChange, HasAMarkerForTheGutter) {
    EXPECT_EQ(marker(context), " ");
    EXPECT_EQ(marker(added), "+");
    EXPECT_EQ(marker(removed), "-");
}

TEST(LineDiff, ShowsWhatChanged) {
    struct Case {
        const char* what;
        Text before, after;
        Lines lines;
    };
    const Case cases[] = {
        {"both empty", "", "", {}},
        {"all new", "", "a\nb", {{0, added, {{"a", equal}}}, {1, added, {{"b", equal}}}}},
        {"a line feed alone is two empty lines",
         "",
         "\n",
         {{0, added, {{"", equal}}}, {1, added, {{"", equal}}}}},
        {"an edited line shows its words",
         "a\nb\nc",
         "a\nB x\nc",
         {{0, context, {{"a", equal}}},
          {1, removed, {{"b ", delete_}}},
          {2, added, {{"B x ", insert}}},
          {3, context, {{"c", equal}}}}},
        {"two for two are no edited line",
         "a\nb",
         "x\ny",
         {{0, removed, {{"a", equal}}},
          {1, removed, {{"b", equal}}},
          {2, added, {{"x", equal}}},
          {3, added, {{"y", equal}}}}},
        {"one for two is no edited line",
         "one",
         "two\nthree",
         {{0, removed, {{"one", equal}}},
          {1, added, {{"two", equal}}},
          {2, added, {{"three", equal}}}}},
        {"two for one is no edited line",
         "one\ntwo",
         "three",
         {{0, removed, {{"one", equal}}},
          {1, removed, {{"two", equal}}},
          {2, added, {{"three", equal}}}}},
        {"an edited line keeps the words of both",
         "the quick  fox",
         "the slow fox",
         {{0, removed, {{"the ", equal}, {"quick ", delete_}, {"fox ", equal}}},
          {1, added, {{"the ", equal}, {"slow ", insert}, {"fox ", equal}}}}},
        {"a carriage return belongs to its line",
         "a\r\nb",
         "a\nb",
         {{0, removed, {{"a ", equal}}},
          {1, added, {{"a ", equal}}},
          {2, context, {{"b", equal}}}}},
        {"an edited line of spaces stays as it is",
         "  \nx",
         "word\nx",
         {{0, removed, {{"  ", equal}}},
          {1, added, {{"word ", insert}}},
          {2, context, {{"x", equal}}}}},
        {"the new side may be the one without words",
         "word",
         "\t",
         {{0, removed, {{"word ", delete_}}}, {1, added, {{"\t", equal}}}}},
        {"a line separator ends no line",
         "a\u2028b",
         "a\u2028b",
         {{0, context, {{"a\u2028b", equal}}}}},
        {"composed or not, a line is the same",
         "caf\u00E9",
         "cafe\u0301",
         {{0, context, {{"caf\u00E9", equal}}}}},
    };
    for (const auto& [what, before, after, lines] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(LineDiff::between(before, after), lines);
    }
}

TEST(LineDiff, TheTextOfAnEditedLineEndsInASpace) {
    const Lines lines = LineDiff::between("a\nb\nc", "a\nB x\nc");
    EXPECT_EQ(lines.at(1).text(), "b ");
    EXPECT_EQ(lines.at(2).text(), "B x ");
}

TEST(DiffLine, IsBlankWithNothingButHorizontalBlanks) {
    const auto line = [](Text text) { return DiffLine{0, added, {{std::move(text), equal}}}; };
    EXPECT_TRUE(line("").isBlank());
    EXPECT_TRUE(line(" \t\u00A0\u3000").isBlank());
    EXPECT_FALSE(line("\r").isBlank());
    EXPECT_FALSE(line(" . ").isBlank());
    EXPECT_TRUE((DiffLine{0, added, {}}).isBlank());
}

TEST(LineDiff, TheSummaryCountsNeitherContextNorBlankLines) {
    struct Case {
        const char* what;
        Text before, after;
        DiffSummary summary;
    };
    const Case cases[] = {
        {"both empty", "", "", {0, 0}},
        {"two new lines", "", "a\nb", {2, 0}},
        {"two new empty lines", "", "\n", {0, 0}},
        {"an edited line counts on both sides", "a\nb", "a\nc", {1, 1}},
        {"spaces alone", "a\n \n", "a", {0, 0}},
        {"removed lines", "a\nb\nc", "a", {0, 2}},
    };
    for (const auto& [what, before, after, summary] : cases) {
        SCOPED_TRACE(what);
        const DiffSummary found = LineDiff::summary(LineDiff::between(before, after));
        EXPECT_EQ(found, summary);
        EXPECT_EQ(found.isUnchanged(), summary.added == 0 && summary.removed == 0);
    }
}

// The lines of one side, without blanks: an edited line has other blanks than its text.
std::vector<std::string> sideWithoutBlanks(const Lines& lines, LineChange other) {
    std::vector<std::string> side;
    for (const DiffLine& line : lines) {
        if (line.change == other) continue;
        std::string text = line.text().utf8();
        std::erase(text, ' ');
        side.push_back(std::move(text));
    }
    return side;
}

std::vector<std::string> linesWithoutBlanks(const Text& text) {
    if (text.isEmpty()) return {};
    std::vector<std::string> lines(1);
    for (const char byte : text.utf8()) {
        if (byte == '\n') {
            lines.emplace_back();
        } else if (byte != ' ') {
            lines.back() += byte;
        }
    }
    return lines;
}

TEST(LineDiff, BothVersionsReadBack) {
    Tests::forAll([] {
        const Text before = *Tests::textOver({"\n", "a", "b", " ", "."});
        const Text after = *Tests::textOver({"\n", "a", "b", " ", "."});
        const Lines lines = LineDiff::between(before, after);
        RC_ASSERT(sideWithoutBlanks(lines, added) == linesWithoutBlanks(before));
        RC_ASSERT(sideWithoutBlanks(lines, removed) == linesWithoutBlanks(after));
    });
}

TEST(LineDiff, IdsCountTheLines) {
    Tests::forAll([](const Text& before, const Text& after) {
        std::int64_t next = 0;
        for (const DiffLine& line : LineDiff::between(before, after))
            RC_ASSERT(line.id == next++);
    });
}

TEST(LineDiff, ATextIsUnchangedFromItself) {
    Tests::forAll([](const Text& text) {
        const Lines lines = LineDiff::between(text, text);
        RC_ASSERT(LineDiff::summary(lines).isUnchanged());
        std::string joined;
        for (const DiffLine& line : lines) {
            RC_ASSERT(line.change == context);
            joined += (line.id == 0 ? "" : "\n") + line.text().utf8();
        }
        RC_ASSERT(joined == text.utf8());
    });
}

}  // namespace
}  // namespace PrompterCore
