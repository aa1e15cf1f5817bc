#pragma once

// Where a take reached a chapter. Stored with the take.
//
//   const ChapterMark mark{.title = "Intro", .seconds = 3.2};
//   toJson(mark);   // {"title":"Intro","seconds":3.2}

#include "PrompterCore/records/Record.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A chapter, and the time at which the take first reached it.
struct ChapterMark {
    Text title;          ///< the chapter's
    double seconds = 0;  ///< since the take began, not below 0

    /// The mark of a stored record, its numbers as they stand. Throws RecordFailure unless both
    /// keys are there.
    [[nodiscard]] static ChapterMark fromRecord(const Record& record);
    /// "title", "seconds". Throws RecordFailure unless the time is finite.
    [[nodiscard]] Record toRecord() const;

    friend bool operator==(const ChapterMark&, const ChapterMark&) = default;
};

}  // namespace PrompterCore
