#include <concepts>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "host/ReadThrough.h"
#include "host/Tuning.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Printing.h"

namespace Varnelle {
namespace {

static_assert(std::copyable<ReadThrough>);

const char* const text =
    "alpha bravo charlie delta\n"
    "echo foxtrot golf hotel\n"
    "\n"
    "# Second\n"
    "india juliet kilo lima\n"
    "mike november oscar papa\n"
    "\n"
    "# Third\n"
    "quebec romeo sierra tango\n";

std::vector<PromptLine> linesOf(const Script& script, double width) {
    const LineBreaker breaker{.width = width, .measure = [](std::string_view line) {
                                  return static_cast<double>(line.size());
                              }};
    return breaker.linesFor(script);
}

ReadThrough readingOf(const char* written) {
    const Script script{Text(written)};
    return {script, linesOf(script, 30), Tuning::aligner, Tuning::scroll};
}

WordsUpdate said(double time, std::int64_t keep, const std::vector<std::string>& words) {
    WordsUpdate update{.time = time, .keep = keep, .words = {}, .final = false};
    for (const std::string& word : words) {
        update.words.push_back(
            {.word = word, .start = time - 0.3, .end = time, .confidence = std::nullopt});
    }
    return update;
}

TEST(ReadThrough, BeginsWithNothingRead) {
    ReadThrough reading = readingOf(text);
    EXPECT_EQ(reading.cursor(), -1);
    EXPECT_EQ(reading.frameAt(0), (Frame{.time = 0, .cursor = -1, .position = 0, .line = 0}));
    EXPECT_FALSE(reading.isSpeaking());
    EXPECT_EQ(reading.lastLevel(), std::nullopt);
}

TEST(ReadThrough, WordsMoveTheCursorAndTheScrollFollows) {
    ReadThrough reading = readingOf(text);
    static_cast<void>(reading.frameAt(0));
    const auto alignment = reading.hear(said(1, 0, {"alpha", "bravo", "charlie"}));
    ASSERT_TRUE(alignment);
    EXPECT_EQ(alignment->tokenIndex, 2);
    EXPECT_EQ(reading.cursor(), 2);
    double last = 0;
    for (int frame = 1; frame < 30; ++frame) {
        const double position = reading.frameAt(1 + frame / 30.0).position;
        EXPECT_GE(position, last);
        last = position;
    }
    EXPECT_GT(last, 2);
}

TEST(ReadThrough, AnUpdateThatOnlyWithdrawsWordsMovesNothing) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo", "charlie", "delta"}));
    EXPECT_EQ(reading.cursor(), 3);
    EXPECT_EQ(reading.hear({.time = 1.2, .keep = 2, .words = {}, .final = false}), std::nullopt);
    EXPECT_EQ(reading.cursor(), 3);
    EXPECT_EQ(reading.heard().words().size(), 2U) << "but they are no longer heard";
}

TEST(ReadThrough, RevisedWordsCountInsteadOfTheWithdrawnOnes) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo", "chair"}));
    reading.hear(said(1.2, 2, {"charlie", "delta"}));
    EXPECT_EQ(reading.cursor(), 3);
}

TEST(ReadThrough, AHandMoveWinsAndFollowingResumesFromThere) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo", "charlie", "delta"}));
    ASSERT_TRUE(reading.moveChapters(1, 2));
    EXPECT_EQ(reading.cursor(), 8);
    EXPECT_EQ(reading.frameAt(2).position, 8);
    EXPECT_EQ(reading.hear(said(2.1, 4, {"echo"})), std::nullopt)
        << "a word that was begun before the move belongs to the old place";
    EXPECT_EQ(reading.cursor(), 8);
    ASSERT_TRUE(reading.hear(said(3, 5, {"juliet", "kilo"})));
    EXPECT_EQ(reading.cursor(), 10);
}

TEST(ReadThrough, WordsOfAPauseDoNotCount) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo"}));
    const double before = reading.frameAt(1.5).position;
    reading.ignoreBefore(2);
    EXPECT_EQ(reading.hear(said(2.1, 2, {"golf", "hotel"})), std::nullopt);
    EXPECT_EQ(reading.cursor(), 1);
    EXPECT_GE(reading.frameAt(2.1).position, before) << "the display does not jump";
    ASSERT_TRUE(reading.hear(said(3, 4, {"charlie", "delta"})));
    EXPECT_EQ(reading.cursor(), 3);
}

TEST(ReadThrough, LinesMoveByHand) {
    ReadThrough reading = readingOf(text);
    EXPECT_FALSE(reading.moveLines(-1, 1)) << "already at the first line";
    ASSERT_TRUE(reading.moveLines(1, 1));
    EXPECT_EQ(reading.cursor(), 4);
    ASSERT_TRUE(reading.moveLines(1, 1));
    EXPECT_EQ(reading.cursor(), 8);
    ASSERT_TRUE(reading.moveLines(-1, 1));
    EXPECT_EQ(reading.cursor(), 4);
    ASSERT_TRUE(reading.moveLines(99, 1));
    EXPECT_EQ(reading.cursor(), 16);
}

TEST(ReadThrough, ParagraphsMoveByHand) {
    ReadThrough reading = readingOf(text);
    reading.seekTo(10, 1);
    ASSERT_TRUE(reading.moveParagraphs(-1, 1)) << "first to the start of the one being read";
    EXPECT_EQ(reading.cursor(), 8);
    ASSERT_TRUE(reading.moveParagraphs(-1, 1));
    EXPECT_EQ(reading.cursor(), 0);
    EXPECT_FALSE(reading.moveParagraphs(-1, 1));
}

TEST(ReadThrough, ChaptersMoveByHand) {
    struct Case {
        const char* what;
        std::int64_t from, step, to;  // to -1: nothing moves
    };
    const Case cases[] = {
        {"from before the first chapter to it", 3, 1, 8},
        {"two ahead from before the first", 3, 2, 16},
        {"nothing lies before the first", 3, -1, -1},
        {"first to the start of the one being read", 10, -1, 8},
        {"from a start to the one before", 16, -1, 8},
        {"from the first chapter's start there is none before", 8, -1, -1},
        {"on to the next", 8, 1, 16},
        {"none behind the last", 17, 1, -1},
        {"too far stops at the last", 8, 99, 16},
        {"as far as can be counted", 8, INT64_MAX, 16},
        {"and back", 17, INT64_MIN, 8},
        {"no step", 10, 0, -1},
    };
    for (const auto& [what, from, step, to] : cases) {
        SCOPED_TRACE(what);
        ReadThrough reading = readingOf(text);
        reading.seekTo(from, 1);
        EXPECT_EQ(reading.moveChapters(step, 1), to >= 0);
        EXPECT_EQ(reading.cursor(), to >= 0 ? to : from);
    }
    ReadThrough withoutChapters = readingOf("alpha bravo");
    EXPECT_FALSE(withoutChapters.moveChapters(1, 1));
}

TEST(ReadThrough, RestartGoesBackToTheBeginning) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo", "charlie", "delta"}));
    reading.restart(2);
    EXPECT_EQ(reading.cursor(), -1);
    EXPECT_EQ(reading.frameAt(2).position, 0);
    EXPECT_EQ(reading.hear(said(2.1, 4, {"echo"})), std::nullopt);
    ASSERT_TRUE(reading.hear(said(3, 5, {"alpha", "bravo"})));
    EXPECT_EQ(reading.cursor(), 1);
}

TEST(ReadThrough, OtherLinesKeepThePlace) {
    ReadThrough reading = readingOf(text);
    reading.seekTo(9, 1);
    const double before = reading.frameAt(1).line;
    reading.layOut(linesOf(reading.script(), 14));
    const Frame after = reading.frameAt(1);
    EXPECT_EQ(after.cursor, 9);
    EXPECT_EQ(after.position, 9);
    EXPECT_GT(after.line, before) << "narrower lines, more of them";
}

TEST(ReadThrough, AnEmptyScriptIsFollowedNowhere) {
    ReadThrough reading = readingOf("# Only a heading");
    EXPECT_EQ(reading.hear(said(1, 0, {"alpha"})), std::nullopt);
    reading.seekTo(5, 2);
    EXPECT_EQ(reading.cursor(), -1);
    EXPECT_FALSE(reading.moveLines(1, 2));
    EXPECT_EQ(reading.frameAt(3).line, 0);
}

TEST(ReadThrough, TheLevelDecidesWhoSpeaks) {
    ReadThrough reading = readingOf(text);
    reading.level(0.6, 1);
    EXPECT_TRUE(reading.isSpeaking());
    EXPECT_EQ(reading.lastLevel(), 0.6);
    reading.level(0, 2);
    reading.level(0, 3);
    EXPECT_FALSE(reading.isSpeaking());
}

TEST(ReadThrough, AFrameNeverAllocates) {
    ReadThrough reading = readingOf(text);
    reading.hear(said(1, 0, {"alpha", "bravo"}));
    EXPECT_EQ(PrompterCore::Tests::allocationsDuring([&] {
                  for (int frame = 0; frame < 100; ++frame) {
                      static_cast<void>(reading.frameAt(1 + frame / 30.0));
                  }
              }),
              0);
}

TEST(ReadThrough, TheSameCallsGiveTheSameReading) {
    const auto play = [] {
        ReadThrough reading = readingOf(text);
        std::vector<Frame> frames;
        const std::vector<std::string> words = {"alpha",   "bravo", "charlie", "delta", "echo",
                                                "foxtrot", "gulf",  "hotel",   "india"};
        for (std::size_t i = 0; i < words.size(); ++i) {
            const double time = 0.4 * static_cast<double>(i + 1);
            reading.level(0.6, time);
            reading.hear(said(time, static_cast<std::int64_t>(i), {words[i]}));
            for (int frame = 0; frame < 12; ++frame) {
                frames.push_back(reading.frameAt(time + frame / 30.0));
            }
            if (i == 5) reading.moveLines(-1, time + 0.4);
        }
        return frames;
    };
    EXPECT_EQ(play(), play());
}

}  // namespace
}  // namespace Varnelle
