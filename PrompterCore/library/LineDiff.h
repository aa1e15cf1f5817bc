#pragma once

// Two versions of a script compared line by line, as they are shown: unchanged lines as context,
// removed and added ones, and where a single line was edited, its changed words.
//
//   std::vector<DiffLine> lines = LineDiff::between("a\nb\nc", "a\nB x\nc");
//   lines[1].text();             // "b ", removed; its segments say which words went
//   LineDiff::summary(lines);    // {.added = 1, .removed = 1}

#include <cstdint>
#include <string_view>
#include <vector>

#include "PrompterCore/library/DiffOperation.h"
#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Which versions a line is in.
enum class LineChange {
    context,  ///< in both versions
    added,    ///< only in the new one
    removed,  ///< only in the old one
};

template <>
struct Enumeration<LineChange> {
    struct Row {
        LineChange value;
        std::string_view caseName, marker;
    };
    static constexpr Row rows[] = {{LineChange::context, "context", " "},
                                   {LineChange::added, "added", "+"},
                                   {LineChange::removed, "removed", "-"}};
};

/// The one character that stands in the gutter.
[[nodiscard]] constexpr std::string_view marker(LineChange change) noexcept {
    return enumerationRow(change).marker;
}

/// A line as it is shown.
struct DiffLine {
    std::int64_t id = 0;                      ///< its place in the comparison, from 0
    LineChange change = LineChange::context;  ///< what became of it
    /// One segment with the whole line, as `equal`; in a pair of an edited line, its words, each
    /// segment followed by a space.
    std::vector<DiffSegment> segments;

    /// The segments' texts, one behind the other.
    [[nodiscard]] Text text() const;
    /// True when the text holds nothing but horizontal blanks.
    [[nodiscard]] bool isBlank() const;

    friend bool operator==(const DiffLine&, const DiffLine&) = default;
};

/// How many lines that are not blank came and went.
struct DiffSummary {
    std::int64_t added = 0;    ///< lines
    std::int64_t removed = 0;  ///< lines

    /// True when both are 0.
    [[nodiscard]] bool isUnchanged() const noexcept { return added == 0 && removed == 0; }

    friend bool operator==(const DiffSummary&, const DiffSummary&) = default;
};

namespace LineDiff {

/// The lines of both versions in the order in which they are shown; where lines were replaced, the
/// old ones come first. Lines end at line feeds alone: a carriage return belongs to its line. An
/// empty text has no lines. One removed line followed by exactly one added line is an edited line.
/// O(n m) in lines, with 8 bytes of memory for each pair.
[[nodiscard]] std::vector<DiffLine> between(const Text& before, const Text& after);

/// Context and blank lines do not count.
[[nodiscard]] DiffSummary summary(const std::vector<DiffLine>& lines);

}  // namespace LineDiff

}  // namespace PrompterCore
