#include <concepts>
#include <optional>

#include "PrompterCore/script/ChapterExcerpt.h"
#include "PrompterCore/script/ScriptEnd.h"
#include "tests/script/Built.h"
#include "tests/support/Extremes.h"

namespace PrompterCore {
namespace {

using Tests::least;
using Tests::most;

static_assert(std::copyable<ChapterFocus> && std::equality_comparable<ChapterFocus>);
static_assert(std::copyable<ChapterExcerpt::Excerpt> &&
              std::equality_comparable<ChapterExcerpt::Excerpt>);

TEST(ChapterExcerpt, IsTheChapterAndAHeadingAtItsEnd) {
    const auto excerpt = ChapterExcerpt::make("# One\na\n\n# Two\nb\n", 0);
    ASSERT_TRUE(excerpt);
    EXPECT_EQ(excerpt->text.utf8(), "# One\na\n\n# End of One");
    EXPECT_EQ(excerpt->focus, (ChapterFocus{0, {"One", "Two"}, 0}));
    EXPECT_EQ(excerpt->focus.next(), 1);
    EXPECT_EQ(Tests::titles(Script(excerpt->text)), (Tests::Strings{"One", "End of One"}));
}

TEST(ChapterExcerpt, StartsAtTheChapterInUtf16) {
    const auto excerpt =
        ChapterExcerpt::make("\U0001F44D\U0001F3FD hi\r\n  # Caf\u00E9 \r\n\r\n\tbody \r\n", 0);
    ASSERT_TRUE(excerpt);
    EXPECT_EQ(excerpt->focus.utf16Offset, 9);
    EXPECT_EQ(excerpt->text.utf8(), "# Caf\u00E9 \r\n\r\n\tbody\n\n# End of Caf\u00E9");
}

TEST(ChapterExcerpt, OfAnEmptyChapterIsItsHeadings) {
    EXPECT_EQ(ChapterExcerpt::make("# One\n# Two", 0)->text, "# One\n\n# End of One");
    EXPECT_EQ(ChapterExcerpt::make("# One\n# Two", 1)->text, "# Two\n\n# End of Two");
}

TEST(ChapterExcerpt, IsAbsentWithoutSuchAChapter) {
    for (const std::int64_t chapter : {least, std::int64_t{-1}, std::int64_t{2}, most})
        EXPECT_EQ(ChapterExcerpt::make("# One\n# Two", chapter), std::nullopt);
    EXPECT_EQ(ChapterExcerpt::make("", 0), std::nullopt);
    EXPECT_EQ(ChapterExcerpt::make("no heading", 0), std::nullopt);
}

TEST(ChapterFocus, KnowsItsNeighbours) {
    struct Case {
        std::int64_t index;
        std::optional<std::int64_t> previous, next;
    };
    for (const auto& [index, previous, next] :
         {Case{0, std::nullopt, 1}, Case{1, 0, 2}, Case{2, 1, std::nullopt}}) {
        SCOPED_TRACE(index);
        const ChapterFocus focus{index, {"A", "B", "C"}, 0};
        EXPECT_EQ(focus.previous(), previous);
        EXPECT_EQ(focus.next(), next);
        EXPECT_EQ(focus.count(), 3);
    }
    EXPECT_EQ((ChapterFocus{1, {"A", "B", "C"}, 0}).title(), "B");
    EXPECT_EQ((ChapterFocus{0, {"A"}, 0}).next(), std::nullopt);
    EXPECT_EQ((ChapterFocus{most, {"A"}, 0}).next(), std::nullopt);
    EXPECT_EQ((ChapterFocus{least, {"A"}, 0}).previous(), std::nullopt);
}

TEST(ChapterFocus, ComparesAllFields) {
    const ChapterFocus focus{1, {"A", "B"}, 3};
    EXPECT_EQ(focus, (ChapterFocus{1, {"A", "B"}, 3}));
    EXPECT_NE(focus, (ChapterFocus{0, {"A", "B"}, 3}));
    EXPECT_NE(focus, (ChapterFocus{1, {"A", "C"}, 3}));
    EXPECT_NE(focus, (ChapterFocus{1, {"A", "B"}, 4}));
}

TEST(ChapterFocusDeathTest, TheTitleOfNoChapterStopsTheProgram) {
    for (const std::int64_t index : {least, std::int64_t{-1}, std::int64_t{1}, most})
        EXPECT_DEATH(static_cast<void>(ChapterFocus{index, {"A"}, 0}.title()),
                     "the chapter is one of the titles'");
}

TEST(ScriptEnd, IsReachedOnlyWhileRunning) {
    constexpr bool running = true;
    constexpr bool stopped = false;
    EXPECT_TRUE(ScriptEnd::reached(5, 5, running));
    EXPECT_TRUE(ScriptEnd::reached(6, 5, running));
    EXPECT_FALSE(ScriptEnd::reached(4, 5, running));
    EXPECT_FALSE(ScriptEnd::reached(5, 5, stopped));
    EXPECT_TRUE(ScriptEnd::reached(0, 0, running));
    EXPECT_FALSE(ScriptEnd::reached(-1, -1, running));
    EXPECT_FALSE(ScriptEnd::reached(0, -1, running));
}

}  // namespace
}  // namespace PrompterCore
