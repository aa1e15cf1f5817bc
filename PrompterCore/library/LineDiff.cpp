#include "PrompterCore/library/LineDiff.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "PrompterCore/library/LCS.h"
#include "PrompterCore/library/WordDiff.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore {

namespace {

// A line is a text only where it is shown: copying every line to compare it costs more than the
// comparison.
using Lines = std::vector<WellFormed>;

Lines linesOf(const Text& text) {
    Lines lines;
    if (text.isEmpty()) return lines;
    const std::string_view bytes = text.utf8();
    for (std::size_t start = 0; start <= bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        lines.push_back({bytes.substr(start, end - start)});
        start = end + 1;
    }
    return lines;
}

std::vector<DiffSegment> whole(WellFormed line) {
    std::vector<DiffSegment> segments;
    segments.push_back({Text(line), DiffOperation::equal});
    return segments;
}

// What one side of an edited line shows: the segments without those of the other side.
std::vector<DiffSegment> side(const std::vector<DiffSegment>& words, DiffOperation other,
                              WellFormed line) {
    std::vector<DiffSegment> segments;
    for (const DiffSegment& segment : words) {
        if (segment.operation == other) continue;
        segments.push_back({Text(segment.text.utf8() + " "), segment.operation});
    }
    return segments.empty() ? whole(line) : segments;
}

using LineSteps = std::vector<LCS::Step<WellFormed>>;

// The end of the run of `operation` that starts at `from`.
std::size_t runEnd(const LineSteps& steps, std::size_t from, DiffOperation operation) {
    while (from < steps.size() && steps[from].operation == operation)
        ++from;
    return from;
}

}  // namespace

Text DiffLine::text() const {
    std::string joined;
    for (const DiffSegment& segment : segments) {
        joined += segment.text.utf8();
    }
    return Text(std::move(joined));
}

bool DiffLine::isBlank() const { return trimmedOfBlanks(text().utf8()).empty(); }

std::vector<DiffLine> LineDiff::between(const Text& before, const Text& after) {
    const LineSteps steps = LCS::diff(linesOf(before), linesOf(after));
    std::vector<DiffLine> lines;
    lines.reserve(steps.size());
    const auto emit = [&lines](LineChange change, std::vector<DiffSegment> segments) {
        lines.push_back({signedCount(lines.size()), change, std::move(segments)});
    };
    for (std::size_t k = 0; k < steps.size();) {
        if (steps[k].operation == DiffOperation::equal) {
            emit(LineChange::context, whole(steps[k++].element));
        } else if (steps[k].operation == DiffOperation::insert) {
            emit(LineChange::added, whole(steps[k++].element));
        } else {
            const std::size_t removedEnd = runEnd(steps, k, DiffOperation::delete_);
            const std::size_t addedEnd = runEnd(steps, removedEnd, DiffOperation::insert);
            if (removedEnd - k == 1 && addedEnd - removedEnd == 1) {
                const WellFormed oldLine = steps[k].element;
                const WellFormed newLine = steps[k + 1].element;
                const std::vector<DiffSegment> words =
                    WordDiff::between(Text(oldLine), Text(newLine));
                emit(LineChange::removed, side(words, DiffOperation::insert, oldLine));
                emit(LineChange::added, side(words, DiffOperation::delete_, newLine));
                k = addedEnd;
                continue;
            }
            for (; k < removedEnd; ++k) {
                emit(LineChange::removed, whole(steps[k].element));
            }
        }
    }
    return lines;
}

DiffSummary LineDiff::summary(const std::vector<DiffLine>& lines) {
    DiffSummary summary;
    for (const DiffLine& line : lines) {
        if (line.change == LineChange::context || line.isBlank()) continue;
        (line.change == LineChange::added ? summary.added : summary.removed) += 1;
    }
    return summary;
}

}  // namespace PrompterCore
