#pragma once

// What stands where on the full-screen prompter: a pure function of the reading and the terminal's
// size, so that a screen can be tested without a terminal.
//
// Units: rows and columns of the terminal, counted from its upper left corner, from 0.
//
//   ScreenSize size{.rows = 24, .columns = 80};
//   reading.layOut(ScreenLayout::linesFor(script, size));
//   for (const ScreenSpan& span : ScreenLayout::spansOf({.reading = reading, .frame = frame},
//   size))
//       ...                                    // put span.text at span.row and span.column

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/varnelle/TakeDisplay.h"
#include "host/ReadThrough.h"

namespace Varnelle {

/// A terminal's size. Any is served, down to nothing at all.
struct ScreenSize {
    std::int64_t rows = 0;
    std::int64_t columns = 0;

    friend bool operator==(const ScreenSize&, const ScreenSize&) = default;
};

/// What is to be seen. Refers to the reading for the time of the call.
struct ScreenView {
    const ReadThrough& reading;
    Frame frame;
    bool paused = false;
    bool ended = false;                              ///< the sound or the words are over
    std::optional<TakeDisplay> take = std::nullopt;  ///< drawn as a bar where there is one
    bool recordsTakes = false;  ///< in a session, where space is the take's next step
    bool panel = false;         ///< the compact panel instead of the scrolling text
    /// What is wrong with the sound at present, in a sentence. Absent when nothing is.
    std::optional<std::string> trouble = std::nullopt;
};

/// What a stretch of text is, from which the screen chooses its looks.
enum class SpanStyle {
    ahead,    ///< words not yet read
    reading,  ///< words not yet read, of the line being read
    read,     ///< words read, wherever they stand
    heading,
    readHeading,
    marker,  ///< the eye line's
    band,    ///< the bar beside the line being read
    status,
    takeNeutral,  ///< the take bar, by the tone of its status
    takeWaiting,
    takeRecording,
    takePractising,
    keys,
};

/// A stretch of text on one row. It is terminalText: each row's spans lie within the screen, in no
/// order, and do not overlap.
struct ScreenSpan {
    std::int64_t row = 0;
    std::int64_t column = 0;
    std::string text;
    SpanStyle style = SpanStyle::ahead;

    friend bool operator==(const ScreenSpan&, const ScreenSpan&) = default;
};

namespace ScreenLayout {

/// The text's column is never wider: longer lines make the eyes travel.
inline constexpr std::int64_t widestText = 60;

/// The width of the text's column: up to widestText, less the margins where there is room for some.
[[nodiscard]] std::int64_t textColumns(ScreenSize size) noexcept;
/// The eye line's row, at a third of the height.
[[nodiscard]] std::int64_t eyeRow(ScreenSize size) noexcept;

/// The script's lines as they fit the screen's text column.
[[nodiscard]] std::vector<PromptLine> linesFor(const Script& script, ScreenSize size);

/// One frame. With `panel` a few lines around the cursor's and how much of the script is said;
/// otherwise the scrolling text: the line position being read stands at the eye row, take bar or
/// not; a line that is wider than the column goes on in the rows below it. The text before the last
/// heard token is read. Empty for a screen without rows or columns. O(size of the screen) beside
/// the length of the lines in it; the panel and the status line look at every line's ranges, too.
[[nodiscard]] std::vector<ScreenSpan> spansOf(const ScreenView& view, ScreenSize size);

}  // namespace ScreenLayout

}  // namespace Varnelle
