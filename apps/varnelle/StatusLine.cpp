#include "apps/varnelle/StatusLine.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "PrompterCore/prompter/PromptChapters.h"
#include "PrompterCore/prompter/ReadingProgress.h"
#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/ScriptEnd.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Separator.h"
#include "apps/varnelle/TerminalText.h"

namespace Varnelle::StatusLine {

namespace {

constexpr std::int64_t barColumns = 8;

std::string stateOf(const ScreenView& view) {
    if (view.ended) return "ended";
    if (view.paused) return "paused";
    if (view.trouble) return *view.trouble;
    const bool isRunning =
        !view.recordsTakes || (view.take && view.take->mode == TakeBarMode::recording());
    const std::int64_t lastWord = signedCount(view.reading.script().tokens().size()) - 1;
    if (ScriptEnd::reached(view.frame.cursor, lastWord, isRunning)) return "end of the script";
    return view.reading.isSpeaking() ? "speaking" : "listening";
}

std::string chapterOf(const ScreenView& view) {
    const std::vector<PromptChapter>& chapters = view.reading.chapters();
    if (chapters.empty()) return {};
    const std::int64_t current = PromptChapters::current(view.frame.cursor, chapters);
    return fmt::format("{}{}/{} {}", separator, current + 1, chapters.size(),
                       chapters[static_cast<std::size_t>(current)].title.utf8());
}

std::string_view spaceOf(const ScreenView& view) {
    if (!view.recordsTakes || !view.take) return "space pause";
    return view.take->mode.visit([](const TakeBarMode::CountingDown&) { return "space call off"; },
                                 [](const TakeBarMode::Recording&) { return "space end take"; },
                                 [](const auto&) { return "space record"; });
}

std::string repeated(std::string_view text, std::int64_t times) {
    std::string all;
    for (std::int64_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

}  // namespace

std::int64_t wordsLeft(const ScreenView& view) {
    const std::vector<ScriptWord>& words = view.reading.script().words();
    const auto isRead = [cursor = view.frame.cursor](const ScriptWord& word) {
        return word.tokenRange.upper() <= cursor + 1;
    };
    if (view.frame.cursor < 0) return signedCount(words.size());
    return words.end() - std::partition_point(words.begin(), words.end(), isRead);
}

std::string timeLeft(std::int64_t words) {
    const double minutes =
        static_cast<double>(words) / static_cast<double>(ReadingTime::wordsPerMinute);
    const std::int64_t seconds = roundedToNearest(minutes * 60);
    return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

std::string levelBar(double level) {
    const double clamped = level > 0 ? std::min(level, 1.0) : 0;  // not a number counts as 0
    const std::int64_t full = roundedToNearest(clamped * static_cast<double>(barColumns));
    return repeated("\u2588", full) + repeated("\u2591", barColumns - full);
}

std::string statusOf(const ScreenView& view, std::int64_t columns) {
    const std::string time = timeLeft(wordsLeft(view)) + " left";
    const std::optional<double> level = view.reading.lastLevel();
    std::string right = level ? levelBar(*level) + "  " + time : time;
    std::string left = stateOf(view) + chapterOf(view);

    const std::int64_t inside = columns - 2;  // a blank at either end
    constexpr std::int64_t gap = 2;
    constexpr std::int64_t leastLeft = 24;  // of state and chapter, before the level has to go
    if (inside < columnsOf(time)) {
        const std::string cut = shortened(time, columns);
        return cut + repeated(" ", columns - columnsOf(cut));
    }
    if (inside < columnsOf(right) + gap + std::min(leastLeft, columnsOf(left))) right = time;
    const std::string progress =
        ReadingProgress(view.reading.script(), view.frame.cursor, view.reading.lines()).label();
    if (columnsOf(left) + columnsOf(progress) + columnsOf(right) + 2 * gap <= inside)
        right = progress + "  " + right;
    left = shortened(left, inside - gap - columnsOf(right));
    return " " + left + repeated(" ", inside - columnsOf(left) - columnsOf(right)) + right + " ";
}

std::string keysOf(const ScreenView& view, std::int64_t columns) {
    struct Key {
        std::string_view text;
        int place;  // from the left; in the list the most needed come first
    };
    const std::array<Key, 6> all{{{"q quit", 5},
                                  {spaceOf(view), 0},
                                  {"\u2191\u2193 line", 1},
                                  {"PgUp PgDn paragraph", 2},
                                  {"\u2190\u2192 chapter", 3},
                                  {"r restart", 4}}};
    constexpr std::string_view gap = "   ";
    std::array<std::string_view, all.size()> shown;
    std::int64_t room = columns;
    for (const Key& key : all) {
        room -= columnsOf(key.text) + columnsOf(gap);
        if (room < 0) break;
        shown[static_cast<std::size_t>(key.place)] = key.text;
    }
    std::string text;
    for (const std::string_view key : shown) {
        if (key.empty()) continue;
        text.append(text.empty() ? " " : gap).append(key);
    }
    return text;
}

}  // namespace Varnelle::StatusLine
