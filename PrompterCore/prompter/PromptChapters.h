#pragma once

// A script's chapters as the prompter shows them: where each stands among the lines, which one is
// being read, and how much of it has been.
//
// Units: tokens as in Script; lengths are prompter lines; times are whole seconds at the reading
// pace. A cursor is the token being read, -1 before the first.
//
//   Script script("# One\nHello world\n# Two\nBye");
//   auto chapters = PromptChapters::chaptersOf(script, breaker.linesFor(script));
//   chapters[0].lineCount;                            // 2: its heading and "Hello world"
//   PromptChapters::current(2, chapters);             // 1
//   PromptChapters::fillOf(0, 0, chapters, 3);        // 0.5: one of its two tokens is read

#include <cstdint>
#include <span>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One chapter on the prompter.
struct PromptChapter {
    std::int64_t index = 0;       ///< its place in the list, which is also its identity
    Text title;                   ///< the heading's
    std::int64_t firstToken = 0;  ///< the first token below the heading
    std::int64_t lineCount = 0;   ///< lines from its heading line up to the next one or the end,
                                  ///< blank lines included
    std::int64_t startsAt = 0;    ///< whole seconds from the script's start until it is reached

    friend bool operator==(const PromptChapter&, const PromptChapter&) = default;
};

namespace PromptChapters {

/// One for each heading line that `lines` hold. Where they are not the script's own lines: the
/// chapters and the heading lines in pairs, for as long as there are both. O(n) in lines.
[[nodiscard]] std::vector<PromptChapter> chaptersOf(const Script& script,
                                                    std::span<const PromptLine> lines);

/// The index of the chapter that holds token `cursor`; a negative cursor counts as 0. Of chapters
/// that begin at the same token the last. Never absent: 0 before the first chapter's first token
/// and without chapters, since the prompter always has one to show. O(n); never allocates.
[[nodiscard]] std::int64_t current(std::int64_t cursor,
                                   std::span<const PromptChapter> chapters) noexcept;

/// How much of chapter `index` is read, 0 to 1; the token under the cursor counts as read. An empty
/// chapter is read once the cursor has reached its token. `tokenCount` ends the last chapter.
/// Stops the program unless `index` lies within `chapters`. O(1); never allocates.
[[nodiscard]] double fillOf(std::int64_t index, std::int64_t cursor,
                            std::span<const PromptChapter> chapters,
                            std::int64_t tokenCount) noexcept;

}  // namespace PromptChapters

}  // namespace PrompterCore
