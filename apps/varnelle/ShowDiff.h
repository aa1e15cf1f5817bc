#pragma once

// How a comparison looks: as lines of a terminal or a pipe, or as JSON.
//
//   lineDiffAsShown(LineDiff::between(before, after), {.marks = DiffMarks::brackets});
//   //  a
//   // -[-b-]
//   // +{+B x+}
//   // 1 added · 1 removed

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/library/LineDiff.h"
#include "apps/varnelle/Output.h"

namespace Varnelle {

/// How changed words are told from the others.
enum class DiffMarks {
    brackets,  ///< [-gone-] and {+new+}, for pipes and terminals without colours
    colours,   ///< red and green, in reverse where only words of a line changed
};

struct DiffStyle {
    DiffMarks marks = DiffMarks::brackets;
    /// Unchanged lines that are shown around changed ones. Absent: all of them.
    std::optional<std::int64_t> context = 3;
    /// What the lines do not show, in front of the summary. Empty for nothing.
    std::string note = {};
};

/// The lines with their gutter, unchanged ones far from any change counted instead of shown, and
/// the summary behind them. An edited line whose words are the old ones is said to be one.
[[nodiscard]] std::string lineDiffAsShown(const std::vector<PrompterCore::DiffLine>& lines,
                                          const DiffStyle& style);
/// The words as one text. Empty when there are none.
[[nodiscard]] std::string wordDiffAsShown(const std::vector<PrompterCore::DiffSegment>& segments,
                                          const DiffStyle& style);

void writeLineDiffJson(const std::vector<PrompterCore::DiffLine>& lines, Output& output);
void writeWordDiffJson(const std::vector<PrompterCore::DiffSegment>& segments, Output& output);

}  // namespace Varnelle
