#pragma once

// One chapter cut out of a script, to be prompted by itself.
//
//   auto excerpt = ChapterExcerpt::make("# One\na\n\n# Two\nb\n", 0);
//   excerpt->text;             // "# One\na\n\n# End of One"
//   excerpt->focus.next();     // 1

#include <cstdint>
#include <optional>

#include "PrompterCore/script/ChapterFocus.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore::ChapterExcerpt {

/// A chapter by itself.
struct Excerpt {
    Text text;           ///< its heading and body, then a heading that says where it ends
    ChapterFocus focus;  ///< where it is in the full script

    friend bool operator==(const Excerpt&, const Excerpt&) = default;
};

/// The chapter with this index. Absent when there is no such chapter. O(n): it builds the script.
[[nodiscard]] std::optional<Excerpt> make(const Text& text, std::int64_t chapter);

}  // namespace PrompterCore::ChapterExcerpt
