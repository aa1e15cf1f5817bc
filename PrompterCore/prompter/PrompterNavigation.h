#pragma once

// Moves the reading position by whole lines or paragraphs.
//
// Units: a cursor and the results are tokens of Script::tokens, -1 before the first; a step counts
// lines or paragraphs, positive is down. Lines without tokens are passed over.
//
//   // lines: tokens 0 ..< 4, tokens 4 ..< 7, a blank line, tokens 7 ..< 9
//   PrompterNavigation::lineStart(1, 5, lines);         // 7
//   PrompterNavigation::paragraphStart(-1, 5, lines);   // 0: back to the paragraph's own start
//   PrompterNavigation::paragraphStart(1, 8, lines);    // 7: even from within the last one

#include <cstdint>
#include <optional>
#include <span>

#include "PrompterCore/prompter/PromptLine.h"

namespace PrompterCore::PrompterNavigation {

/// The first token of the line that is `step` lines away from the cursor's, or of the outermost one
/// when there are not so many. A negative cursor counts as 0; one on no line, as past the end,
/// counts as on the first line with tokens. Absent when that is the cursor's own line: at the ends,
/// and for step 0.
/// O(n) in lines; never allocates.
[[nodiscard]] std::optional<std::int64_t> lineStart(std::int64_t step, std::int64_t cursor,
                                                    std::span<const PromptLine> lines) noexcept;

/// The first token of the paragraph that is `step` paragraphs away, or of the outermost one. From
/// within a paragraph the first step back leads to its own start; so does a step down from within
/// the last one, since nothing lies further. A negative cursor counts as 0. Absent when that token
/// is the cursor itself, for step 0, and without tokens. O(n) in lines.
[[nodiscard]] std::optional<std::int64_t> paragraphStart(std::int64_t step, std::int64_t cursor,
                                                         std::span<const PromptLine> lines);

}  // namespace PrompterCore::PrompterNavigation
