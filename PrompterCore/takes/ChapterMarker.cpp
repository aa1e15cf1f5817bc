#include "PrompterCore/takes/ChapterMarker.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace PrompterCore {

void ChapterMarker::update(std::int64_t cursor, double time) {
    const std::optional<std::int64_t> chapter = ScriptChapters::current(cursor, chapters_);
    if (!chapter || !reached_.insert(*chapter).second) return;
    const double seconds = time <= 0 ? 0.0 : time;
    // The marks are in order: the new one goes behind all that are not later. Asked from the end,
    // so that a time that is no number parts the list instead of breaking the order's rules.
    const auto notLater = [seconds](const ChapterMark& mark) { return !(mark.seconds > seconds); };
    const auto behind = std::find_if(marks_.rbegin(), marks_.rend(), notLater).base();
    marks_.insert(
        behind, {.title = chapters_[static_cast<std::size_t>(*chapter)].title, .seconds = seconds});
}

}  // namespace PrompterCore
