// A script is laid out and moved through by a sequence of calls; then the same calls meet lines
// that no script gives.
//
// Bytes: width in quarters, scroll threshold, the number of calls, two bytes for each call,
// then the script's text.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PromptChapters.h"
#include "PrompterCore/prompter/PromptParagraphs.h"
#include "PrompterCore/prompter/PrompterGeometry.h"
#include "PrompterCore/prompter/PrompterNavigation.h"
#include "PrompterCore/prompter/ScrollStepper.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/Utf8.h"
#include "fuzz/Bytes.h"
#include "tests/reference/PlainLineBreaker.h"
#include "tests/reference/PlainPrompter.h"

using namespace PrompterCore;

namespace {

using Lines = std::vector<PromptLine>;

// Small numbers, and both ends of what there is.
std::int64_t number(std::uint8_t byte) {
    if (byte == 0x7F) return std::numeric_limits<std::int64_t>::max();
    if (byte == 0x80) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int8_t>(byte);
}

double position(std::uint8_t byte) {
    if (byte == 0x7F) return std::numeric_limits<double>::infinity();
    if (byte == 0x80) return -std::numeric_limits<double>::infinity();
    if (byte == 0x81) return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(number(byte)) / 4;
}

double codePointsOf(std::string_view text) {
    double count = 0;
    for (std::size_t at = 0; at < text.size(); ++count)
        static_cast<void>(Utf8::next(text, at));
    return count;
}

Lines linesByTwoBreakers(const Script& script, double width) {
    std::vector<std::string> measured, plainlyMeasured;
    const LineBreaker breaker{.width = width, .measure = [&](std::string_view text) {
                                  measured.emplace_back(text);
                                  return codePointsOf(text);
                              }};
    Lines lines = breaker.linesFor(script);
    const Lines plain = Plain::linesFor(script, width, [&](std::string_view text) {
        plainlyMeasured.emplace_back(text);
        return codePointsOf(text);
    });
    require(lines == plain, "both break the same lines");
    require(measured == plainlyMeasured, "both measure the same texts");
    return lines;
}

void checkTiling(const Script& script, const Lines& lines) {
    std::int64_t word = 0, token = 0;
    for (const PromptLine& line : lines) {
        require(line.wordRange.lower() == word, "the words tile");
        require(line.tokenRange.lower() == token, "the tokens tile");
        word = line.wordRange.upper();
        token = line.tokenRange.upper();
    }
    require(word == signedCount(script.words().size()), "every word is on a line");
    require(token == signedCount(script.tokens().size()), "every token is on a line");
}

void checkChapters(const Script& script, const Lines& lines, std::int64_t cursor) {
    const auto chapters = PromptChapters::chaptersOf(script, lines);
    require(chapters.size() == script.headings().size(), "every heading has a chapter");
    require(PromptChapters::current(cursor, chapters) ==
                ScriptChapters::current(cursor, ScriptChapters::chaptersOf(script)).value_or(0),
            "both know the current chapter");
    const std::int64_t tokens = signedCount(script.tokens().size());
    for (std::int64_t i = 0; i < signedCount(chapters.size()); ++i) {
        const double fill = PromptChapters::fillOf(i, cursor, chapters, tokens);
        require(fill >= 0 && fill <= 1, "a fill is a part");
    }
}

// The calls, on the script's own lines.
void moveThrough(const Script& script, const Lines& lines, double threshold, Bytes calls) {
    ScrollStepper stepper{.threshold = threshold};
    std::int64_t cursor = -1;
    while (!calls.isEmpty()) {
        const std::uint8_t call = calls.next();
        const std::uint8_t argument = calls.next();
        std::optional<std::int64_t> moved;
        switch (call % 5) {
            case 0:
                moved = PrompterNavigation::lineStart(number(argument), cursor, lines);
                require(moved == Plain::lineStart(number(argument), cursor, lines), "lines alike");
                break;
            case 1:
                moved = PrompterNavigation::paragraphStart(number(argument), cursor, lines);
                require(moved == Plain::paragraphStart(number(argument), cursor, lines),
                        "paragraphs alike");
                break;
            case 2: {
                const std::int64_t steps = stepper.add(static_cast<std::int8_t>(argument) / 4.0);
                require(std::abs(stepper.pending) < std::abs(threshold),
                        "less than a step is left");
                moved = PrompterNavigation::lineStart(steps, cursor, lines);
                break;
            }
            case 3: {
                const double at = position(argument);
                const double index = LineBreaker::lineIndexFor(at, lines);
                require(index >= 0 && index <= static_cast<double>(lines.size()), "on the lines");
                require(at != at || index == Plain::lineIndexFor(at, lines), "positions alike");
                break;
            }
            default:
                cursor = number(argument);
                require(LineBreaker::lineContaining(cursor, lines) ==
                            Plain::lineContaining(cursor, lines),
                        "both find the line");
                checkChapters(script, lines, cursor);
        }
        if (!moved) continue;
        cursor = *moved;
        const auto line = LineBreaker::lineContaining(cursor, lines);
        require(line.has_value(), "a move ends on a line");
        require(lines[static_cast<std::size_t>(*line)].tokenRange.lower() == cursor,
                "and at its first token");
    }
}

// Whatever the lines: every question has an answer.
void askAnyLines(Bytes bytes) {
    Lines lines;
    std::vector<PromptChapter> chapters;
    while (!bytes.isEmpty()) {
        const std::int64_t a = number(bytes.next()), b = number(bytes.next());
        const auto [lower, upper] = std::minmax(a, b);
        const std::int64_t words = (a ^ b) & 1;
        lines.push_back({.text = {},
                         .tokenRange = TokenRange(lower, upper),
                         .wordRange = WordRange(0, words),
                         .indent = 0,
                         .heading = words == 0 ? std::optional<Text>("Title") : std::nullopt});
        chapters.push_back(
            {.index = 0, .title = {}, .firstToken = a, .lineCount = 1, .startsAt = 0});
        const auto line = LineBreaker::lineContaining(b, lines);
        require(!line || lines[static_cast<std::size_t>(*line)].tokenRange.contains(b), "it does");
        const double index =
            LineBreaker::lineIndexFor(position(static_cast<std::uint8_t>(b)), lines);
        require(index >= 0 && index <= static_cast<double>(lines.size()), "on the lines");
        static_cast<void>(PrompterNavigation::lineStart(a, b, lines));
        static_cast<void>(PrompterNavigation::paragraphStart(a, b, lines));
        static_cast<void>(PromptParagraphs::firstTokenOf(LineRange(lower, upper), lines));
        static_cast<void>(PromptParagraphs::blockContaining(a, PromptParagraphs::blocks(lines)));
        static_cast<void>(PrompterGeometry::bandOffset(a, index, b, 40, 300));
        const std::int64_t last = signedCount(chapters.size()) - 1;
        require(PromptChapters::current(b, chapters) <= last, "in the list");
        const double fill = PromptChapters::fillOf(last / 2, b, chapters, a);
        require(fill >= 0 && fill <= 1, "a fill is a part");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes({data, size});
    const double width = bytes.next() / 4.0;
    const double threshold = (static_cast<double>(number(bytes.next() % 100)) + 1) / 4;
    const Bytes calls(bytes.take(std::size_t{2} * bytes.next()));
    const Script script{Text(bytes.text())};

    const Lines lines = linesByTwoBreakers(script, width);
    checkTiling(script, lines);
    moveThrough(script, lines, threshold, calls);
    askAnyLines(calls);
    return 0;
}
