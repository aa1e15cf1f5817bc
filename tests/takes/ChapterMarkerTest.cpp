#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/takes/ChapterMarker.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ChapterMarker> && std::equality_comparable<ChapterMarker>);
static_assert(std::copyable<ChapterMark> && std::equality_comparable<ChapterMark>);

using Marks = std::vector<ChapterMark>;

// A chapter that starts at each of `tokens`, called "1", "2" and so on.
std::vector<ScriptChapter> chaptersAt(const std::vector<std::int64_t>& tokens) {
    std::vector<ScriptChapter> chapters;
    for (const std::int64_t token : tokens) {
        const auto index = static_cast<std::int64_t>(chapters.size());
        chapters.emplace_back();
        chapters.back().index = index;
        chapters.back().title = std::to_string(index + 1);
        chapters.back().tokenRange = TokenRange::emptyAt(token);
    }
    return chapters;
}

TEST(ChapterMark, IsStoredWithTwoKeys) {
    const ChapterMark mark{"Main \"part\"", 65.9};
    const char* const stored = R"({"title":"Main \"part\"","seconds":65.9})";
    EXPECT_EQ(toJson(mark), stored);
    EXPECT_EQ(fromJson<ChapterMark>(stored), mark);
    EXPECT_EQ(toJson(ChapterMark{"", 3}), R"({"title":"","seconds":3})");
    EXPECT_EQ(fromJson<Marks>(R"([{"seconds": 90, "more": [], "title": "a"}])"),
              (Marks{{"a", 90}}));
    EXPECT_EQ(fromJson<ChapterMark>(R"({"title": "a", "seconds": -1})").seconds, -1)
        << "as it stands";
}

TEST(ChapterMark, NeedsBothKeys) {
    using Kind = RecordFailure::Kind;
    struct Case {
        const char* json;
        Kind kind;
        const char* what;
    };
    const Case cases[] = {
        {R"({"title": "a"})", Kind::missingKey, "\"seconds\": missing"},
        {R"({"seconds": 1})", Kind::missingKey, "\"title\": missing"},
        {R"({"title": "a", "seconds": "1"})", Kind::mismatch,
         "\"seconds\": a text where a number is required"},
        {R"({"title": "a", "seconds": true})", Kind::mismatch,
         "\"seconds\": true or false where a number is required"},
        {R"({"title": null, "seconds": 1})", Kind::mismatch,
         "\"title\": null where a text is required"},
        {R"({"title": 1, "seconds": 1})", Kind::mismatch,
         "\"title\": a number where a text is required"},
        {R"({"title": "a", "seconds": null})", Kind::mismatch,
         "\"seconds\": null where a number is required"},
        {R"(["a", 1])", Kind::mismatch, "the record: a list where a record is required"},
    };
    for (const auto& [json, kind, what] : cases) {
        SCOPED_TRACE(json);
        try {
            ADD_FAILURE() << fromJson<ChapterMark>(json);
        } catch (const RecordFailure& failure) {
            EXPECT_EQ(failure.kind(), kind);
            EXPECT_STREQ(failure.what(), what);
        }
    }
    EXPECT_THROW(std::ignore = toJson(ChapterMark{"a", std::nan("")}), RecordFailure);
}

TEST(ChapterMarker, MarksAChapterWhenItIsFirstReached) {
    ChapterMarker marker(chaptersAt({0, 40, 80}));
    EXPECT_EQ(marker.marks(), Marks());
    marker.update(0, 0);
    EXPECT_EQ(marker.marks(), (Marks{{"1", 0}}));
    marker.update(39, 12);
    EXPECT_EQ(marker.marks(), (Marks{{"1", 0}})) << "still in the same chapter";
    marker.update(40, 13.5);
    EXPECT_EQ(marker.marks(), (Marks{{"1", 0}, {"2", 13.5}}));
    marker.update(10, 20);
    EXPECT_EQ(marker.marks(), (Marks{{"1", 0}, {"2", 13.5}})) << "read backwards";
    EXPECT_EQ(marker.chapters(), chaptersAt({0, 40, 80}));
}

TEST(ChapterMarker, KeepsTheOrderOfReaching) {
    ChapterMarker marker(chaptersAt({0, 40, 80}));
    marker.update(90, 5);
    marker.update(50, 9);
    EXPECT_EQ(marker.marks(), (Marks{{"3", 5}, {"2", 9}}));
    marker.update(0, 5);
    EXPECT_EQ(marker.marks(), (Marks{{"3", 5}, {"1", 5}, {"2", 9}})) << "the same time: behind";
    ChapterMarker earlier(chaptersAt({0, 40}));
    earlier.update(40, 7);
    earlier.update(0, 3);
    EXPECT_EQ(earlier.marks(), (Marks{{"1", 3}, {"2", 7}})) << "the host's clock went back";
}

TEST(ChapterMarker, ReadsTheCursorLikeAReader) {
    struct Case {
        const char* what;
        std::vector<std::int64_t> starts;
        std::int64_t cursor;
        Marks marks;
    };
    const Case cases[] = {
        {"no chapters", {}, 5, {}},
        {"before the first chapter", {7}, 6, {}},
        {"nothing read, text before the first heading", {7}, -1, {}},
        {"nothing read, a heading first", {0, 7}, -1, {{"1", 2}}},
        {"far below zero is the beginning",
         {0, 7},
         std::numeric_limits<std::int64_t>::min(),
         {{"1", 2}}},
        {"at the chapter's first token", {0, 7}, 7, {{"2", 2}}},
        {"of chapters without words the last", {0, 0, 0, 7}, 0, {{"3", 2}}},
        {"behind the end", {0, 7}, std::numeric_limits<std::int64_t>::max(), {{"2", 2}}},
    };
    for (const auto& [what, starts, cursor, marks] : cases) {
        SCOPED_TRACE(what);
        ChapterMarker marker(chaptersAt(starts));
        marker.update(cursor, 2);
        EXPECT_EQ(marker.marks(), marks);
    }
}

TEST(ChapterMarker, StoresNoTimeBelowZero) {
    for (const double time : {-1.5, 0.0, -0.0, -std::numeric_limits<double>::infinity()}) {
        ChapterMarker marker(chaptersAt({0}));
        marker.update(50, time);
        ASSERT_EQ(marker.marks(), (Marks{{"1", 0}}));
        EXPECT_FALSE(std::signbit(marker.marks()[0].seconds));
    }
}

TEST(ChapterMarker, PassesATimeThatIsNoNumberThrough) {
    ChapterMarker marker(chaptersAt({0, 10, 20}));
    marker.update(0, 4);
    marker.update(10, std::nan(""));
    marker.update(20, 1);
    ASSERT_EQ(marker.marks().size(), 3U);
    EXPECT_EQ(marker.marks()[0], (ChapterMark{"1", 4}));
    EXPECT_TRUE(std::isnan(marker.marks()[1].seconds));
    EXPECT_EQ(marker.marks()[2], (ChapterMark{"3", 1})) << "nothing is compared across it";
}

TEST(ChapterMarker, MarksARealScript) {
    const Script script("Hello there.\n# Intro\nOne two three.\n# Main part\nFour five.");
    ChapterMarker marker(ScriptChapters::chaptersOf(script));
    marker.update(1, 0.5);
    EXPECT_EQ(marker.marks(), Marks()) << "no chapter yet";
    marker.update(2, 3.2);
    marker.update(5, 65.9);
    EXPECT_EQ(marker.marks(), (Marks{{"Intro", 3.2}, {"Main part", 65.9}}));
}

// Every update appended, then the whole list sorted again, as plainly as it can be said.
TEST(ChapterMarker, IsAStableSortOfTheFirstVisits) {
    Tests::forAll([](const std::vector<std::pair<std::int8_t, std::int8_t>>& updates) {
        const auto chapters = chaptersAt({3, 3, 10, 40, 90});
        ChapterMarker marker(chapters);
        std::vector<bool> reached(chapters.size());
        Marks plain;
        for (const auto& [cursor, quarters] : updates) {
            const double time = quarters / 4.0;
            marker.update(cursor, time);
            for (std::size_t i = chapters.size(); i-- > 0;) {
                if (chapters[i].tokenRange.lower() > std::max<int>(cursor, 0)) continue;
                if (!reached[i]) plain.push_back({chapters[i].title, std::max(time, 0.0)});
                reached[i] = true;
                break;
            }
            std::stable_sort(plain.begin(), plain.end(),
                             [](const auto& a, const auto& b) { return a.seconds < b.seconds; });
            RC_ASSERT(marker.marks() == plain);
        }
    });
}

}  // namespace
}  // namespace PrompterCore
