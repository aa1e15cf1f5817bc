#include <limits>

#include <gtest/gtest.h>

#include "PrompterCore/text/Columns.h"
#include "apps/varnelle/StatusLine.h"
#include "host/Tuning.h"

namespace Varnelle {
namespace {

ReadThrough readingOf(std::string_view text) {
    const Script script{Text(text)};
    return {script, ScreenLayout::linesFor(script, {.rows = 24, .columns = 80}), Tuning::aligner,
            Tuning::scroll};
}

std::string words(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "word ";
    return text;
}

TEST(StatusLine, TimeLeftIsMinutesAndSecondsAtTheReadingPace) {
    struct Case {
        std::int64_t words;
        const char* time;
    };
    for (const auto& [count, time] :
         {Case{0, "0:00"}, Case{1, "0:00"}, Case{2, "0:01"}, Case{150, "1:00"}, Case{149, "1:00"},
          Case{148, "0:59"}, Case{375, "2:30"}, Case{15000, "100:00"}}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(StatusLine::timeLeft(count), time);
    }
}

TEST(StatusLine, WordsLeftAreThoseBehindTheCursor) {
    const ReadThrough reading = readingOf("one 42 - four");  // tokens: one, forty, two, four
    struct Case {
        const char* what;
        std::int64_t cursor, left;
    };
    for (const auto& [what, cursor, left] :
         {Case{"nothing heard", -1, 4}, Case{"the first", 0, 3}, Case{"half a number", 1, 3},
          Case{"the number, and the dash behind it", 2, 1}, Case{"the last", 3, 0}}) {
        SCOPED_TRACE(what);
        EXPECT_EQ(StatusLine::wordsLeft({.reading = reading, .frame = {.cursor = cursor}}), left);
    }
}

TEST(StatusLine, LevelIsABarOfEight) {
    struct Case {
        double level;
        const char* bar;
    };
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [level, bar] :
         {Case{0, "░░░░░░░░"}, Case{0.5, "████░░░░"}, Case{1, "████████"}, Case{7, "████████"},
          Case{-1, "░░░░░░░░"}, Case{none, "░░░░░░░░"}, Case{0.06, "░░░░░░░░"},
          Case{0.07, "█░░░░░░░"}}) {
        SCOPED_TRACE(level);
        EXPECT_EQ(StatusLine::levelBar(level), bar);
    }
}

TEST(StatusLine, SaysStateChapterLevelAndTime) {
    ReadThrough reading = readingOf("# Light\n" + words(75) + "\n# Keeper\n" + words(75));
    ScreenView view{.reading = reading, .frame = {.cursor = -1}};
    EXPECT_EQ(StatusLine::statusOf(view, 60),
              " listening · 1/2 Light                            1:00 left ");
    reading.level(0.5, 0);
    view.frame.cursor = 75;
    EXPECT_EQ(StatusLine::statusOf(view, 60),
              " speaking · 2/2 Keeper                  ████░░░░  0:30 left ");
    view.trouble = "Lavalier\x1b is not connected; listening to Built-in";
    EXPECT_TRUE(StatusLine::statusOf(view, 100).starts_with(" Lavalier"));
    EXPECT_NE(StatusLine::statusOf(view, 100).find("not connected; listening to Built-in"),
              std::string::npos);
    EXPECT_EQ(StatusLine::statusOf(view, 100).find('\x1b'), std::string::npos);
    EXPECT_EQ(PrompterCore::columnsOf(StatusLine::statusOf(view, 40)), 40);
    view.trouble.reset();
    view.paused = true;
    EXPECT_EQ(StatusLine::statusOf(view, 60).substr(0, 8), " paused ");
    view.ended = true;
    EXPECT_EQ(StatusLine::statusOf(view, 60).substr(0, 7), " ended ");
}

TEST(StatusLine, SaysParagraphAndLineWhereThereIsRoomForAll) {
    const ReadThrough reading = readingOf("# Light\none two\nthree\n\nfour");
    const ScreenView view{.reading = reading, .frame = {.cursor = 2}};
    EXPECT_EQ(StatusLine::statusOf(view, 62),
              " listening · 1/1 Light   Paragraph 1 · Line 2 of 2  0:00 left ");
    EXPECT_EQ(StatusLine::statusOf(view, 60),
              " listening · 1/1 Light                            0:00 left ");
}

TEST(StatusLine, FillsExactlyTheColumnsAndKeepsTheTimeLongest) {
    ReadThrough reading =
        readingOf("# A title \U0001F468\u200D\U0001F469\u200D\U0001F467 日本語の章\n" + words(75));
    reading.level(0.5, 0);
    const ScreenView view{.reading = reading, .frame = {.cursor = -1}};
    for (std::int64_t columns = 1; columns < 120; ++columns) {
        SCOPED_TRACE(columns);
        const std::string status = StatusLine::statusOf(view, columns);
        EXPECT_EQ(PrompterCore::columnsOf(status), columns) << status;
        if (columns < 9) continue;
        EXPECT_NE(status.find("0:30 left"), std::string::npos) << status;
    }
}

TEST(StatusLine, ATitleCannotSteerTheTerminal) {
    const ReadThrough reading = readingOf("# a\x1B[2J\nword");
    const ScreenView view{.reading = reading, .frame = {.cursor = -1}};
    EXPECT_EQ(StatusLine::statusOf(view, 40), " listening · 1/1 a[2J         0:00 left ");
}

TEST(StatusLine, SaysTheEndOfTheScriptWhereTheReadingRuns) {
    const ReadThrough reading = readingOf("one two three");
    ScreenView view{.reading = reading, .frame = {.cursor = 1}};
    const auto saysTheEnd = [&view] {
        return StatusLine::statusOf(view, 60).starts_with(" end of the script ");
    };
    EXPECT_FALSE(saysTheEnd());
    view.frame.cursor = 2;
    EXPECT_TRUE(saysTheEnd());
    view.take = TakeDisplay{};
    EXPECT_TRUE(saysTheEnd());
    view.recordsTakes = true;
    EXPECT_FALSE(saysTheEnd()) << "no take runs";
    view.take = TakeDisplay{.mode = PrompterCore::TakeBarMode::recording()};
    EXPECT_TRUE(saysTheEnd());
    const ReadThrough empty = readingOf("");
    EXPECT_TRUE(StatusLine::statusOf({.reading = empty, .frame = {.cursor = -1}}, 60)
                    .starts_with(" listening "));
}

TEST(StatusLine, OfASessionTheKeysSayTheTakesNextStep) {
    using PrompterCore::TakeBarMode;
    const ReadThrough reading = readingOf("one");
    struct Case {
        TakeBarMode mode;
        const char* keys;
    };
    for (const auto& [mode, keys] : {Case{TakeBarMode::rest(), " space record   q quit"},
                                     Case{TakeBarMode::countingDown(3), " space call off   q quit"},
                                     Case{TakeBarMode::recording(), " space end take   q quit"}}) {
        const ScreenView view{.reading = reading,
                              .frame = {},
                              .take = TakeDisplay{.mode = mode},
                              .recordsTakes = true};
        EXPECT_EQ(StatusLine::keysOf(view, 30), keys);
    }
}

TEST(StatusLine, AsManyKeysAsFitWithQuitFirst) {
    const ReadThrough reading = readingOf("one");
    const ScreenView view{.reading = reading, .frame = {}, .take = TakeDisplay{}};
    EXPECT_EQ(StatusLine::keysOf(view, 80),
              " space pause   ↑↓ line   PgUp PgDn paragraph   ←→ chapter   r restart   q quit");
    EXPECT_EQ(StatusLine::keysOf(view, 30), " space pause   q quit");
    EXPECT_EQ(StatusLine::keysOf(view, 9), " q quit");
    EXPECT_EQ(StatusLine::keysOf(view, 8), "");
    for (std::int64_t columns = 0; columns < 100; ++columns) {
        EXPECT_LE(PrompterCore::columnsOf(StatusLine::keysOf(view, columns)), columns);
    }
}

}  // namespace
}  // namespace Varnelle
