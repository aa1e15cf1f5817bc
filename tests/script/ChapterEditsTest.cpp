#include <optional>
#include <string>

#include "PrompterCore/script/ChapterEdits.h"
#include "tests/script/Built.h"
#include "tests/support/Extremes.h"

namespace PrompterCore {
namespace {

using Tests::least;
using Tests::most;
constexpr bool keepingText = true;
constexpr bool withItsText = false;

TextEdit edit(std::int64_t lower, std::int64_t upper, Text replacement,
              std::optional<CharacterRange> selection = std::nullopt) {
    return {CharacterRange(lower, upper), std::move(replacement), selection};
}

std::string edited(const std::optional<TextEdit>& made, const Script& script) {
    return made ? made->appliedTo(script.text()).utf8() : "no edit";
}

TEST(ChapterEdits, DoWhatTheirManualShows) {
    const Script script("# One\na\n\n# Two\nb\n");
    EXPECT_EQ(edited(ChapterEdits::move(1, 0, script), script), "# Two\nb\n\n# One\na\n");
    EXPECT_EQ(ChapterEdits::rename(0, "First", script)->selection, CharacterRange(2, 7));
    EXPECT_EQ(ChapterEdits::newTitle, "New chapter");
}

TEST(ChapterEdits, InsertHeadingAtTheCaret) {
    struct Case {
        const char* what;
        Text text;
        std::int64_t position;
        TextEdit edit;
    };
    const Case cases[] = {
        {"the empty text", "", 0, edit(0, 0, "# Intro", CharacterRange(2, 7))},
        {"far before the empty text", "", least, edit(0, 0, "# Intro", CharacterRange(2, 7))},
        {"behind a word, over the spaces", "Hello   world", 7,
         edit(5, 7, "\n\n# Intro\n\n", CharacterRange(9, 14))},
        {"all the spaces go where more text follows", "Hello  , world", 7,
         edit(5, 7, "\n\n# Intro\n\n", CharacterRange(9, 14))},
        {"a tab stays", "Hello\t world", 7, edit(6, 7, "\n\n# Intro\n\n", CharacterRange(10, 15))},
        {"a no-break space stays", "Hello\u00A0", 6,
         edit(6, 6, "\n\n# Intro", CharacterRange(10, 15))},
        {"within a word", "Hello", 2, edit(2, 2, "\n\n# Intro\n\n", CharacterRange(6, 11))},
        {"past the end", "Hello", most, edit(5, 5, "\n\n# Intro", CharacterRange(9, 14))},
        {"only white space behind", "Hello\n \n", 5,
         edit(5, 5, "\n\n# Intro", CharacterRange(9, 14))},
        {"at the start of the text", "Hello", 0, edit(0, 0, "# Intro\n\n", CharacterRange(2, 7))},
        {"the line before is empty", "a\n\nb", 3, edit(3, 3, "# Intro\n\n", CharacterRange(5, 10))},
        {"the line before is not", "a\nb", 2, edit(2, 2, "\n# Intro\n\n", CharacterRange(5, 10))},
        {"the line before has a space", "a\n \nb", 4,
         edit(4, 4, "\n# Intro\n\n", CharacterRange(7, 12))},
        {"on an empty line", "a\n\nb", 2, edit(2, 2, "\n# Intro\n\n", CharacterRange(5, 10))},
        {"in the indentation", "a\n\n    b", 5, edit(3, 3, "# Intro\n\n", CharacterRange(5, 10))},
        {"at the first letter of an indented line", "\t b", 2,
         edit(0, 0, "# Intro\n\n", CharacterRange(2, 7))},
        {"CR LF is one character", "a\r\nb", 2, edit(2, 2, "\n# Intro\n\n", CharacterRange(5, 10))},
        {"an empty line of CR LF", "a\r\n\r\nb", 3,
         edit(3, 3, "# Intro\n\n", CharacterRange(5, 10))},
        {"behind a flag", "\U0001F1E9\U0001F1EA b", 1,
         edit(1, 1, "\n\n# Intro\n\n", CharacterRange(5, 10))},
        {"a line separator ends a line", "a\u2028b", 2,
         edit(2, 2, "\n# Intro\n\n", CharacterRange(5, 10))},
    };
    for (const auto& [what, text, position, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(ChapterEdits::insertHeading("Intro", position, Script(text)), expected);
    }
}

TEST(ChapterEdits, InsertHeadingTakesTheTitleAsItIs) {
    EXPECT_EQ(ChapterEdits::insertHeading(" e\u0301 ", 0, Script("")),
              edit(0, 0, "#  e\u0301 ", CharacterRange(2, 5)));
    EXPECT_EQ(ChapterEdits::insertHeading("", 0, Script("a")),
              edit(0, 0, "# \n\n", CharacterRange(2, 2)));
}

// The line feeds that come behind the lone carriage return are one line break with it: the
// selection counts the parts, not what they make together.
TEST(ChapterEdits, InsertHeadingBehindALoneCarriageReturnCountsItsParts) {
    const Script script("a\rb");
    const TextEdit made = ChapterEdits::insertHeading("Intro", 2, script);
    EXPECT_EQ(made, edit(2, 2, "\n# Intro\n\n", CharacterRange(5, 10)));
    EXPECT_EQ(Tests::titles(Script(made.appliedTo(script.text()))), Tests::Strings{"Intro"});
}

TEST(ChapterEdits, AddAtTheEndReplacesTheWhiteSpaceThere) {
    struct Case {
        const char* what;
        Text text, body;
        TextEdit edit;
    };
    const Case cases[] = {
        {"three line breaks", "end\n\n\n", "", edit(3, 6, "\n\n# Title\n")},
        {"with a body", "end\n\n\n", "\n body \n", edit(3, 6, "\n\n# Title\n\nbody\n")},
        {"no white space", "end", "", edit(3, 3, "\n\n# Title\n")},
        {"the empty text", "", "", edit(0, 0, "# Title\n")},
        {"the empty text, with a body", "", "a\n\nb", edit(0, 0, "# Title\n\na\n\nb\n")},
        {"nothing but white space", " \r\n\t", " ", edit(0, 3, "# Title\n")},
        {"white space of any kind", "end\u00A0\u2029", "", edit(3, 5, "\n\n# Title\n")},
        {"behind a heading", "# One", "x", edit(5, 5, "\n\n# Title\n\nx\n")},
    };
    for (const auto& [what, text, body, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(ChapterEdits::add("Title", body, std::nullopt, Script(text)), expected);
    }
}

TEST(ChapterEdits, AddInFrontOfAChapterStartsAtItsHeadingLine) {
    const Script script("before\n  # One\na\n# Two\nb");
    EXPECT_EQ(ChapterEdits::add("New", "", 0, script), edit(7, 7, "# New\n\n"));
    EXPECT_EQ(ChapterEdits::add("New", " body\n", 1, script), edit(17, 17, "# New\n\nbody\n\n"));
    for (const std::int64_t chapter : {least, std::int64_t{-1}, std::int64_t{2}, most})
        EXPECT_EQ(ChapterEdits::add("New", "", chapter, script), std::nullopt);
    EXPECT_EQ(ChapterEdits::add("New", "", 0, Script("no heading")), std::nullopt);
}

TEST(ChapterEdits, RenameWritesTheWholeLineAnew) {
    const Script script("x\n  # Old  \r\n# Two");
    EXPECT_EQ(ChapterEdits::rename(0, "New", script), edit(2, 11, "# New", CharacterRange(4, 7)));
    EXPECT_EQ(edited(ChapterEdits::rename(0, "New", script), script), "x\n# New\r\n# Two");
    EXPECT_EQ(ChapterEdits::rename(1, "\U0001F44D\U0001F3FD", script)->selection,
              CharacterRange(14, 15));
    for (const std::int64_t chapter : {least, std::int64_t{-1}, std::int64_t{2}, most})
        EXPECT_EQ(ChapterEdits::rename(chapter, "New", script), std::nullopt);
}

TEST(ChapterEdits, ReplaceTextLeavesABlankLineBeforeTheNextChapter) {
    const Script script("# One\na\n# Two\nb\n\n");
    EXPECT_EQ(ChapterEdits::replaceTextOf(0, " new\n", script), edit(5, 8, "\n\nnew\n\n"));
    EXPECT_EQ(ChapterEdits::replaceTextOf(1, " new\n", script), edit(13, 17, "\n\nnew"));
    // No body leaves its separators.
    EXPECT_EQ(ChapterEdits::replaceTextOf(0, "", script), edit(5, 8, "\n\n\n\n"));
    EXPECT_EQ(ChapterEdits::replaceTextOf(1, " \n", script), edit(13, 17, "\n\n"));
    for (const std::int64_t chapter : {least, std::int64_t{-1}, std::int64_t{2}, most})
        EXPECT_EQ(ChapterEdits::replaceTextOf(chapter, "", script), std::nullopt);
}

TEST(ChapterEdits, RemoveTakesTheChapterOrItsHeadingOnly) {
    const Script script("x\n# One\n\n\na\n# Two\r\n\r\n");
    EXPECT_EQ(ChapterEdits::remove(0, withItsText, script), edit(2, 12, ""));
    EXPECT_EQ(ChapterEdits::remove(0, keepingText, script), edit(2, 10, ""));
    EXPECT_EQ(ChapterEdits::remove(1, withItsText, script), edit(12, 19, ""));
    EXPECT_EQ(ChapterEdits::remove(1, keepingText, script), edit(12, 19, ""));
    EXPECT_EQ(edited(ChapterEdits::remove(0, keepingText, script), script), "x\na\n# Two\r\n\r\n");
    for (const std::int64_t chapter : {least, std::int64_t{-1}, std::int64_t{2}, most}) {
        EXPECT_EQ(ChapterEdits::remove(chapter, withItsText, script), std::nullopt);
        EXPECT_EQ(ChapterEdits::remove(chapter, keepingText, script), std::nullopt);
    }
}

TEST(ChapterEdits, RemoveKeepingTextTakesLineBreaksOnly) {
    const Script indented("# One\n\n \n\tbody");
    EXPECT_EQ(ChapterEdits::remove(0, keepingText, indented), edit(0, 7, ""));
    const Script last("# One");
    EXPECT_EQ(ChapterEdits::remove(0, keepingText, last), edit(0, 5, ""));
}

TEST(ChapterEdits, MoveTakesAChapterToItsNewPlace) {
    const Script script("intro\n# A\na\n\n\n\n  # B\n# C\nc\n \n");
    struct Case {
        std::int64_t from, to;
        const char* edited;
    };
    const Case cases[] = {
        {0, 2, "intro\n# B\n\n# C\nc\n\n# A\na\n \n"},
        {2, 0, "intro\n# C\nc\n\n# A\na\n\n# B\n \n"},
        {0, 1, "intro\n# B\n\n# A\na\n\n# C\nc\n \n"},
        {1, 0, "intro\n# B\n\n# A\na\n\n# C\nc\n \n"},
        {1, 2, "intro\n# A\na\n\n# C\nc\n\n# B\n \n"},
    };
    for (const auto& [from, to, expected] : cases) {
        SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
        const std::optional<TextEdit> made = ChapterEdits::move(from, to, script);
        EXPECT_EQ(edited(made, script), expected);
        EXPECT_EQ(made->range, CharacterRange(6, script.characters().count()));
        EXPECT_EQ(made->selection, std::nullopt);
    }
}

TEST(ChapterEdits, MoveNowhereIsNoEdit) {
    const Script script("# A\n# B");
    for (const std::int64_t index : {least, std::int64_t{-1}, std::int64_t{2}, most}) {
        EXPECT_EQ(ChapterEdits::move(0, index, script), std::nullopt);
        EXPECT_EQ(ChapterEdits::move(index, 0, script), std::nullopt);
        EXPECT_EQ(ChapterEdits::move(index, index, script), std::nullopt);
    }
    EXPECT_EQ(ChapterEdits::move(0, 0, script), std::nullopt);
    EXPECT_EQ(ChapterEdits::move(1, 1, script), std::nullopt);
    EXPECT_EQ(ChapterEdits::move(0, 1, Script("")), std::nullopt);
}

}  // namespace
}  // namespace PrompterCore
