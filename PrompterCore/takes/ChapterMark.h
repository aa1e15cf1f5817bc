#pragma once

// Where a take reached a chapter.
//
//   const ChapterMark mark{.title = "Intro", .seconds = 3.2};

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Stored with the take.
struct ChapterMark {
    Text title;          ///< the chapter's
    double seconds = 0;  ///< since the take began, not below 0

    friend bool operator==(const ChapterMark&, const ChapterMark&) = default;
};

}  // namespace PrompterCore
