#include "apps/varnelle/ScreenLayout.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PromptPanel.h"
#include "PrompterCore/prompter/PrompterGeometry.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Segmentation.h"
#include "apps/varnelle/ColumnLines.h"
#include "apps/varnelle/StatusLine.h"
#include "apps/varnelle/TerminalText.h"

namespace Varnelle::ScreenLayout {

namespace {

// How the screen is divided.
struct Areas {
    std::int64_t textRows;    // from the top; the rest is status and keys
    std::int64_t lineHeight;  // rows from one line to the next
    std::int64_t left, width;
    bool hasMargin;  // the three columns left of the text: eye line, band, blank
    bool hasTake, hasStatus, hasKeys;
};

enum class TakeRow { none, wanted };

Areas areasOf(ScreenSize size, TakeRow takeRow = TakeRow::none) noexcept {
    constexpr std::int64_t leftMargin = 3, rightMargin = 1;
    Areas areas{};
    areas.hasStatus = size.rows >= 3;
    areas.hasKeys = size.rows >= 8;
    areas.hasTake = takeRow == TakeRow::wanted && size.rows >= 5;
    areas.textRows =
        size.rows - (areas.hasTake ? 1 : 0) - (areas.hasStatus ? 1 : 0) - (areas.hasKeys ? 1 : 0);
    areas.lineHeight = size.rows >= 20 ? 2 : 1;
    areas.hasMargin = size.columns >= 12;
    const std::int64_t room =
        areas.hasMargin ? size.columns - leftMargin - rightMargin : size.columns;
    areas.width = std::min(room, widestText);
    areas.left = (areas.hasMargin ? leftMargin : 0) + (room - areas.width) / 2;
    return areas;
}

// Where each row's part of a line's text ends, as byte offsets. Only a word that is wider than the
// column, or lines of another width, take more than one row; a blank line takes one, too.
std::vector<std::size_t> rowEnds(std::string_view text, std::int64_t width) {
    std::vector<std::size_t> ends;
    std::int64_t used = 0;
    const auto isLetter = [text](std::size_t at) { return text[at] > 0x20 && text[at] < 0x7F; };
    for (std::size_t at = 0; at < text.size();) {
        // Of a word of megabytes every frame asks this: between ASCII letters without a look-up.
        const bool isPlain = isLetter(at) && at + 1 < text.size() && isLetter(at + 1);
        const std::size_t end = isPlain ? at + 1 : Segmentation::clusterEnd(text, at);
        const std::int64_t columns = isPlain ? 1 : columnsOf(text.substr(at, end - at));
        if (used > 0 && used + columns > width) {
            ends.push_back(at);
            used = 0;
        }
        used += columns;
        at = end;
    }
    ends.push_back(text.size());
    return ends;
}

TakeRow takeRowOf(const ScreenView& view) noexcept {
    return view.take ? TakeRow::wanted : TakeRow::none;
}

SpanStyle styleOf(PrompterCore::ControllerStatus::Tone tone) noexcept {
    using enum PrompterCore::ControllerStatus::Tone;
    switch (tone) {
        case neutral: return SpanStyle::takeNeutral;
        case waiting: return SpanStyle::takeWaiting;
        case recording: return SpanStyle::takeRecording;
        case practising: return SpanStyle::takePractising;
    }
    return SpanStyle::takeNeutral;
}

class Painter {
public:
    Painter(const ScreenView& view, ScreenSize size)
        : view_(view),
          lines_(view.reading.lines()),
          areas_(areasOf(size, takeRowOf(view))),
          eye_(eyeRow(size)) {}

    std::vector<ScreenSpan> paint() && {
        if (view_.panel) {
            paintPanel();
            return std::move(spans_);
        }
        paintLines();
        if (areas_.hasMargin) put(eye_, areas_.left - 3, "\u25B6", SpanStyle::marker);
        return std::move(spans_);
    }

private:
    // Lines are laid out from the eye line outwards, so that a frame costs what is seen of the
    // script, not what there is of it.
    void paintLines() {
        if (lines_.empty()) return;
        const std::int64_t count = signedCount(lines_.size());
        const double index = std::clamp(view_.frame.line, 0.0, static_cast<double>(count));
        const std::int64_t eyeLine = static_cast<std::int64_t>(index);
        reading_ = readingLine();

        std::int64_t top = eye_;
        if (eyeLine < count) {
            const double height = static_cast<double>(heightOf(eyeLine));
            top = static_cast<std::int64_t>(std::ceil(PrompterGeometry::contentOffset(
                index, eyeLine, height, static_cast<double>(eye_))));
        }
        std::int64_t below = top;
        for (std::int64_t line = eyeLine; line < count && below < areas_.textRows; ++line) {
            below += paintLine(line, below);
        }
        for (std::int64_t line = eyeLine - 1; line >= 0 && top > 0; --line) {
            top -= heightOf(line);
            paintLine(line, top);
        }
    }

    // The lines around the cursor from the top on, then how much of the script is said.
    void paintPanel() {
        const std::int64_t cursor = view_.frame.cursor;
        const std::int64_t current = PromptPanel::current(lines_, cursor);
        const std::int64_t room = areas_.textRows - 1;  // the last row is the progress
        const std::int64_t justRead = cursor >= 0 ? 1 : 0;
        std::int64_t row = 0;
        for (const std::int64_t index : PromptPanel::visible(lines_, cursor, room - justRead)) {
            if (row == room) break;
            paintPanelLine(index, row, index == current);
            ++row;
        }
        const double progress = PromptPanel::progress(cursor, view_.reading.script());
        const auto full = roundedToNearest(progress * static_cast<double>(areas_.width));
        std::string bar;
        for (std::int64_t i = 0; i < areas_.width; ++i)
            bar += i < full ? "\u2588" : "\u2591";
        put(std::max<std::int64_t>(room, 0), areas_.left, std::move(bar), SpanStyle::band);
    }

    void paintPanelLine(std::int64_t index, std::int64_t row, bool isCurrent) {
        const PromptLine& shown = line(index);
        const std::int64_t said =
            PromptPanel::wordsSaidOn(shown, view_.reading.script(), view_.frame.cursor);
        const std::size_t cut = endOfWords(shown, said);
        const std::string_view text = textOf(shown);
        const std::string read = shortened(text.substr(0, cut), areas_.width);
        const std::int64_t used = columnsOf(read);
        put(row, areas_.left, read, SpanStyle::read);
        put(row, areas_.left + used, shortened(text.substr(cut), areas_.width - used),
            isCurrent ? SpanStyle::reading : SpanStyle::ahead);
        if (isCurrent && areas_.hasMargin) put(row, areas_.left - 3, "\u25B6", SpanStyle::marker);
    }

    // Where the first `count` words of the line's text end, the blank behind them included.
    std::size_t endOfWords(const PromptLine& line, std::int64_t count) const {
        const std::vector<ScriptWord>& words = view_.reading.script().words();
        std::size_t end = 0;
        for (std::int64_t i = 0; i < count; ++i)
            end +=
                words[static_cast<std::size_t>(line.wordRange.lower() + i)].text.utf8().size() + 1;
        return std::min(end, textOf(line).size());
    }

    // The line that holds the token at the eye line; from the end on the last one with tokens.
    std::optional<std::int64_t> readingLine() const {
        const std::int64_t last = signedCount(view_.reading.script().tokens().size()) - 1;
        if (last < 0) return std::nullopt;
        const double token = std::clamp(view_.frame.position, 0.0, static_cast<double>(last));
        return LineBreaker::lineContaining(static_cast<std::int64_t>(token), lines_);
    }

    const PromptLine& line(std::int64_t index) const {
        return lines_[static_cast<std::size_t>(index)];
    }
    static std::string_view textOf(const PromptLine& line) {
        return line.heading ? line.heading->utf8() : line.text.utf8();
    }
    // Indentation may take half the column, no more.
    std::int64_t indentOf(const PromptLine& line) const {
        return std::min(line.indent, areas_.width / 2);
    }
    std::vector<std::size_t> rowEndsOf(const PromptLine& line) const {
        return rowEnds(textOf(line), areas_.width - indentOf(line));
    }
    std::int64_t heightOf(std::int64_t index) const {
        return signedCount(rowEndsOf(line(index)).size()) * areas_.lineHeight;
    }

    // Up to where, as a byte offset, the line's words are read: the words before the cursor's.
    std::size_t readEnd(const PromptLine& line) const {
        const std::int64_t cursor = view_.frame.cursor;
        if (cursor < line.tokenRange.lower()) return 0;
        if (cursor >= line.tokenRange.upper()) return textOf(line).size();
        const std::vector<ScriptWord>& words = view_.reading.script().words();
        std::size_t end = 0;
        for (std::int64_t i = line.wordRange.lower(); i < line.wordRange.upper(); ++i) {
            const ScriptWord& word = words[static_cast<std::size_t>(i)];
            if (word.tokenRange.upper() > cursor) break;
            end += word.text.utf8().size() + 1;  // and the space behind it
        }
        return end;
    }

    // Paints the line with its first row at `top`; returns its height.
    std::int64_t paintLine(std::int64_t index, std::int64_t top) {
        const PromptLine& line = this->line(index);
        const std::vector<std::size_t> ends = rowEndsOf(line);
        const std::int64_t height = signedCount(ends.size()) * areas_.lineHeight;
        const bool isHeading = line.heading.has_value();
        const SpanStyle readStyle = isHeading ? SpanStyle::readHeading : SpanStyle::read;
        const SpanStyle style = isHeading           ? SpanStyle::heading
                                : index == reading_ ? SpanStyle::reading
                                                    : SpanStyle::ahead;
        const std::size_t read = readEnd(line);
        std::size_t start = 0;
        std::int64_t row = top;
        for (const std::size_t end : ends) {
            const std::size_t cut = std::clamp(read, start, end);
            const std::int64_t column = areas_.left + indentOf(line);
            const std::int64_t used = putText(row, column, line, start, cut, readStyle);
            putText(row, column + used, line, cut, end, style);
            start = end;
            row += areas_.lineHeight;
        }
        if (index == reading_ && areas_.hasMargin) {
            for (std::int64_t i = top; i < top + height; ++i) {
                put(i, areas_.left - 2, "\u258E", SpanStyle::band);
            }
        }
        return height;
    }

    // Puts the bytes from `start` to `end` of the line's text; returns the columns they take.
    std::int64_t putText(std::int64_t row, std::int64_t column, const PromptLine& line,
                         std::size_t start, std::size_t end, SpanStyle style) {
        if (row < 0 || row >= areas_.textRows) return 0;
        std::string text = terminalText(textOf(line).substr(start, end - start));
        std::int64_t columns = columnsOf(text);
        if (column + columns >
            areas_.left + areas_.width) {  // one character, wider than the column
            text = "\uFFFD";
            columns = 1;
        }
        put(row, column, std::move(text), style);
        return columns;
    }

    void put(std::int64_t row, std::int64_t column, std::string text, SpanStyle style) {
        if (row < 0 || row >= areas_.textRows || text.empty()) return;
        spans_.push_back({.row = row, .column = column, .text = std::move(text), .style = style});
    }

    const ScreenView& view_;
    const std::vector<PromptLine>& lines_;
    const Areas areas_;
    const std::int64_t eye_;
    std::optional<std::int64_t> reading_;  // absent without tokens
    std::vector<ScreenSpan> spans_;
};

}  // namespace

std::int64_t textColumns(ScreenSize size) noexcept { return areasOf(size).width; }

std::int64_t eyeRow(ScreenSize size) noexcept { return areasOf(size).textRows / 3; }

std::vector<PromptLine> linesFor(const Script& script, ScreenSize size) {
    const std::int64_t width = std::max<std::int64_t>(textColumns(size), 1);
    return columnBreaker(static_cast<double>(width)).linesFor(script);
}

std::vector<ScreenSpan> spansOf(const ScreenView& view, ScreenSize size) {
    if (size.rows < 1 || size.columns < 1) return {};
    std::vector<ScreenSpan> spans = Painter(view, size).paint();
    const Areas areas = areasOf(size, takeRowOf(view));
    const auto add = [&spans](std::int64_t row, std::string text, SpanStyle style) {
        if (!text.empty()) spans.push_back({row, 0, std::move(text), style});
    };
    if (areas.hasTake) {
        if (std::optional<TakeBar> bar = takeBar(*view.take, size.columns))
            spans.push_back({.row = areas.textRows,
                             .column = bar->column,
                             .text = std::move(bar->text),
                             .style = styleOf(view.take->status.tone())});
    }
    if (areas.hasStatus)
        add(areas.textRows + (areas.hasTake ? 1 : 0), StatusLine::statusOf(view, size.columns),
            SpanStyle::status);
    if (areas.hasKeys) add(size.rows - 1, StatusLine::keysOf(view, size.columns), SpanStyle::keys);
    return spans;
}

}  // namespace Varnelle::ScreenLayout
