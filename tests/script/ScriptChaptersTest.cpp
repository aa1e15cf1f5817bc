#include <concepts>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/ScriptHeadings.h"
#include "tests/script/Built.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

static_assert(std::copyable<ScriptChapter> && std::equality_comparable<ScriptChapter>);

using ScriptChapters::chaptersOf;
using ScriptChapters::current;

TEST(ScriptHeadings, MarkerIsNumberSignAndSpace) { EXPECT_EQ(ScriptHeadings::marker, "# "); }

TEST(ScriptChapters, ThereAreNoneWithoutHeadings) {
    for (const char* text : {"", "Hello world", "## Part\n#Part\n#"}) {
        const auto chapters = chaptersOf(Script(text));
        EXPECT_TRUE(chapters.empty()) << text;
        for (const std::int64_t cursor : {-1, 0, 1, 100})
            EXPECT_EQ(current(cursor, chapters), std::nullopt);
    }
}

TEST(ScriptChapters, RunFromHeadingToHeading) {
    const auto chapters = chaptersOf(Script("# One\nHello world\n# Two\nBye"));
    const std::vector<ScriptChapter> expected = {
        {.index = 0,
         .title = "One",
         .sourceRange = CharacterRange(0, 18),  // the line break before "# Two" included
         .wordRange = WordRange(0, 2),
         .tokenRange = TokenRange(0, 2),
         .startsAt = 0},
        {.index = 1,
         .title = "Two",
         .sourceRange = CharacterRange(18, 27),
         .wordRange = WordRange(2, 3),
         .tokenRange = TokenRange(2, 3),
         .startsAt = 0},
    };
    EXPECT_EQ(chapters, expected);
    EXPECT_EQ(chapters[0].wordCount(), 2);
    EXPECT_EQ(chapters[1].wordCount(), 1);
    EXPECT_EQ(current(1, chapters), 0);
}

TEST(ScriptChapters, OfHeadingsOnConsecutiveLinesTheLastIsCurrent) {
    const auto chapters = chaptersOf(Script("# One\n# Two\nBye now"));
    EXPECT_EQ(chapters[0].wordCount(), 0);
    EXPECT_TRUE(chapters[0].wordRange.isEmpty());
    EXPECT_TRUE(chapters[0].tokenRange.isEmpty());
    EXPECT_EQ(current(0, chapters), 1);
    EXPECT_EQ(current(-1, chapters), 1);
    EXPECT_EQ(current(1, chapters), 1);
}

TEST(ScriptChapters, PreambleBelongsToNone) {
    const auto chapters = chaptersOf(Script("Just three words\n# One\nBye"));
    EXPECT_EQ(chapters.size(), 1u);
    EXPECT_EQ(chapters[0].wordCount(), 1);
    EXPECT_EQ(current(-1, chapters), std::nullopt);
    EXPECT_EQ(current(0, chapters), std::nullopt);
    EXPECT_EQ(current(1, chapters), std::nullopt);
    EXPECT_EQ(current(2, chapters), std::nullopt);
    EXPECT_EQ(current(3, chapters), 0);
}

TEST(ScriptChapters, PreambleWithoutTokensHidesNothing) {
    const auto chapters = chaptersOf(Script("... —\n# One\nBye"));
    EXPECT_EQ(chapters[0].wordRange, WordRange(2, 3));
    EXPECT_EQ(current(-1, chapters), 0);
    EXPECT_EQ(current(0, chapters), 0);
}

TEST(ScriptChapters, WithoutPreambleTheBeginningIsTheFirst) {
    const auto chapters = chaptersOf(Script("# One\nHello world\n# Two\nBye"));
    EXPECT_EQ(current(-1, chapters), 0);
    EXPECT_EQ(current(0, chapters), 0);
    EXPECT_EQ(current(std::numeric_limits<std::int64_t>::min(), chapters), 0);
}

TEST(ScriptChapters, BeyondTheLastTokenIsTheLast) {
    const auto chapters = chaptersOf(Script("# One\nHello world\n# Two\nBye"));
    EXPECT_EQ(current(2, chapters), 1);
    EXPECT_EQ(current(3, chapters), 1);
    EXPECT_EQ(current(std::numeric_limits<std::int64_t>::max(), chapters), 1);
}

TEST(ScriptChapters, HeadingAtTheEndIsAnEmptyChapter) {
    const auto chapters = chaptersOf(Script("# One\nHello\n# Two"));
    EXPECT_EQ(chapters[1].wordRange, WordRange(1, 1));
    EXPECT_EQ(chapters[1].tokenRange, TokenRange(1, 1));
    EXPECT_EQ(chapters[1].sourceRange, CharacterRange(12, 17));
    EXPECT_EQ(current(0, chapters), 0);
    EXPECT_EQ(current(1, chapters), 1);
}

TEST(ScriptChapters, StartIsTheTimeOfAllWordsBeforeInWholeSeconds) {
    struct Case {
        int words;
        std::int64_t seconds;
    };
    for (const auto& [words, seconds] : {Case{0, 0}, Case{1, 0}, Case{2, 0}, Case{3, 1},
                                         Case{149, 59}, Case{150, 60}, Case{400, 160}}) {
        std::string text;
        for (int i = 0; i < words; ++i)
            text += "a ";
        EXPECT_EQ(chaptersOf(Script(Text(text + "\n# Here")))[0].startsAt, seconds) << words;
    }
}

TEST(ScriptChapters, WordsThatAreNotSpokenCountForTheTime) {
    EXPECT_EQ(chaptersOf(Script("- - -\n# Here"))[0].startsAt, 1);
}

TEST(ScriptChapters, TileTheTextFromTheFirstHeadingOn) {
    Tests::forAll([](const Text& before, const Text& first, const Text& second) {
        const Script script(
            Text(before.utf8() + "\n# A\n" + first.utf8() + "\n# B\n" + second.utf8()));
        const auto chapters = chaptersOf(script);
        RC_ASSERT(chapters.size() == script.headings().size());
        RC_ASSERT(chapters.size() >= 2u);
        for (std::size_t i = 0; i < chapters.size(); ++i) {
            RC_ASSERT(chapters[i].index == signedCount(i));
            RC_ASSERT(chapters[i].title == script.headings()[i].title);
            if (i == 0) continue;
            RC_ASSERT(chapters[i - 1].sourceRange.upper() == chapters[i].sourceRange.lower());
            RC_ASSERT(chapters[i - 1].wordRange.upper() == chapters[i].wordRange.lower());
            RC_ASSERT(chapters[i - 1].tokenRange.upper() == chapters[i].tokenRange.lower());
            RC_ASSERT(chapters[i - 1].startsAt <= chapters[i].startsAt);
        }
        RC_ASSERT(chapters.back().sourceRange.upper() == script.characters().count());
        RC_ASSERT(chapters.back().wordRange.upper() == signedCount(script.words().size()));
        RC_ASSERT(chapters.back().tokenRange.upper() == signedCount(script.tokens().size()));
    });
}

TEST(ScriptChapters, CurrentHoldsEveryTokenBehindThePreamble) {
    Tests::forAll([](const Text& text) {
        const Script script(Text(text.utf8() + "\n# A\none\n# B\n# C\n" + text.utf8() + "\ntwo"));
        const auto chapters = chaptersOf(script);
        for (std::int64_t token = 0; token < signedCount(script.tokens().size()); ++token) {
            const std::optional<std::int64_t> index = current(token, chapters);
            if (token < chapters[0].tokenRange.lower()) {
                RC_ASSERT(index == std::nullopt);
            } else {
                RC_ASSERT(chapters[static_cast<std::size_t>(*index)].tokenRange.contains(token));
            }
        }
    });
}

}  // namespace PrompterCore
