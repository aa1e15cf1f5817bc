#pragma once

// Marks each chapter of a script when a take first reaches it.
//
// Units: positions are tokens of the script; times are seconds since the take began.
//
//   ChapterMarker marker(ScriptChapters::chaptersOf(script));
//   marker.update(0, 0);        // the first chapter begins with the take
//   marker.update(120, 65.9);   // token 120 lies in the next one
//   marker.marks();             // both, in the order in which they were reached

#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/takes/ChapterMark.h"

namespace PrompterCore {

/// A value, one for each take.
class ChapterMarker {
public:
    /// Nothing is reached yet.
    explicit ChapterMarker(std::vector<ScriptChapter> chapters) : chapters_(std::move(chapters)) {}

    /// In script order.
    [[nodiscard]] const std::vector<ScriptChapter>& chapters() const noexcept { return chapters_; }
    /// By time; of the same time in the order of reaching.
    [[nodiscard]] const std::vector<ChapterMark>& marks() const noexcept { return marks_; }

    /// The reader is at token `cursor` (-1 before the first) at `time`. Marks the chapter there
    /// unless it has a mark; a time below 0 counts as 0. Nothing happens before the first chapter.
    /// A time that is no number is kept, and later marks stay behind it. O(n) in chapters.
    void update(std::int64_t cursor, double time);

    friend bool operator==(const ChapterMarker&, const ChapterMarker&) = default;

private:
    std::vector<ScriptChapter> chapters_;
    std::set<std::int64_t> reached_;  // places in chapters_
    std::vector<ChapterMark> marks_;
};

}  // namespace PrompterCore
