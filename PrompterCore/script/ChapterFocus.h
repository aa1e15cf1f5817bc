#pragma once

// The one chapter that the prompter shows alone, and its neighbours.
//
// Units: a chapter is an index into the chapters of the full script.
//
//   ChapterFocus focus{.index = 1, .titles = {"One", "Two"}, .utf16Offset = 14};
//   focus.title();       // "Two"
//   focus.previous();    // 0
//   focus.next();        // absent

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Which chapter is shown alone.
struct ChapterFocus {
    std::int64_t index = 0;        ///< the chapter
    std::vector<Text> titles;      ///< of all chapters of the full script
    std::int64_t utf16Offset = 0;  ///< UTF-16 code units before the chapter in the full script,
                                   ///< to lead the editor back to it

    /// The chapter's title. Stops the program unless `index` is one of the titles'.
    [[nodiscard]] const Text& title() const noexcept;
    /// The number of chapters.
    [[nodiscard]] std::int64_t count() const noexcept;
    /// The chapter before. Absent for the first.
    [[nodiscard]] std::optional<std::int64_t> previous() const noexcept;
    /// The chapter behind. Absent for the last.
    [[nodiscard]] std::optional<std::int64_t> next() const noexcept;

    friend bool operator==(const ChapterFocus&, const ChapterFocus&) = default;
};

}  // namespace PrompterCore
