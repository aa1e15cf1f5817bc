#pragma once

// A frame as rows of text, as a terminal would show its spans.
//
//   ScreenPicture picture(ScreenLayout::spansOf(view, size), size);
//   picture.row(7);       // " ▶▎ Hello brave world", without trailing blanks
//   picture.styleOf("brave");

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/text/Columns.h"
#include "apps/varnelle/ScreenLayout.h"

namespace Varnelle::Tests {

class ScreenPicture {
public:
    ScreenPicture(std::vector<ScreenSpan> spans, ScreenSize size)
        : spans_(std::move(spans)), size_(size) {
        std::sort(spans_.begin(), spans_.end(), [](const ScreenSpan& a, const ScreenSpan& b) {
            return a.row != b.row ? a.row < b.row : a.column < b.column;
        });
    }

    const std::vector<ScreenSpan>& spans() const { return spans_; }

    std::string row(std::int64_t index) const {
        std::string text;
        std::int64_t column = 0;
        for (const ScreenSpan& span : spans_) {
            if (span.row != index) continue;
            text.append(static_cast<std::size_t>(std::max<std::int64_t>(span.column - column, 0)),
                        ' ');
            text += span.text;
            column = span.column + PrompterCore::columnsOf(span.text);
        }
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }

    /// Absent when no row shows `text`.
    std::optional<std::int64_t> rowOf(std::string_view text) const {
        for (std::int64_t i = 0; i < size_.rows; ++i) {
            if (row(i).find(text) != std::string::npos) return i;
        }
        return std::nullopt;
    }

    /// Of the first span that shows `text` whole. Absent when none does.
    std::optional<SpanStyle> styleOf(std::string_view text) const {
        for (const ScreenSpan& span : spans_) {
            if (span.text.find(text) != std::string::npos) return span.style;
        }
        return std::nullopt;
    }

    /// The first span that leaves the screen or overlaps its neighbour. Absent when all is well.
    std::optional<ScreenSpan> misplaced() const {
        std::int64_t row = -1, free = 0;
        for (const ScreenSpan& span : spans_) {
            if (span.row != row) free = 0;
            row = span.row;
            const std::int64_t end = span.column + PrompterCore::columnsOf(span.text);
            if (span.row < 0 || span.row >= size_.rows || span.column < free || end > size_.columns)
                return span;
            free = end;
        }
        return std::nullopt;
    }

private:
    std::vector<ScreenSpan> spans_;  // from the top, from the left
    ScreenSize size_;
};

}  // namespace Varnelle::Tests
