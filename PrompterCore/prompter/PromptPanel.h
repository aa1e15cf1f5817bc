#pragma once

// A small panel that goes along with the prompter, as on the operator's window: a few lines around
// the one being read, how much of a line is said, and how much of the script.
//
// Units: line indices are those of the lines given; words and tokens as in Script. A cursor is the
// token being read, -1 before the first.
//
//   // lines: "Hello brave", "world", a blank line, "Bye"
//   PromptPanel::current(lines, 2);             // 1
//   PromptPanel::visible(lines, 2, 2);          // 0, 1 and 3: the line just read stays
//   PromptPanel::wordsSaidOn(lines[0], script, 0);   // 1
//   PromptPanel::progress(1, script);           // 0.5

#include <cstdint>
#include <span>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/script/Script.h"

namespace PrompterCore::PromptPanel {

/// The line that holds the cursor; before the first token the first line with words. 0 when there
/// is no such line. O(n); never allocates.
[[nodiscard]] std::int64_t current(std::span<const PromptLine> lines, std::int64_t cursor) noexcept;

/// The lines to show, only such with words: the one just read, then `count` from the current one
/// on; nothing is read before the first token. Fewer at either end; none without such lines. O(n).
[[nodiscard]] std::vector<std::int64_t> visible(std::span<const PromptLine> lines,
                                                std::int64_t cursor, std::int64_t count);

/// The words of `line` whose tokens have all been reached; the token under the cursor counts as
/// said, and a word without tokens is said once the cursor has come to its place. Stops the program
/// unless the line's words lie within the script's. O(n) in the line's words; never allocates.
[[nodiscard]] std::int64_t wordsSaidOn(const PromptLine& line, const Script& script,
                                       std::int64_t cursor) noexcept;

/// How much of the script is said, 0 to 1, the token under the cursor included. 0 without tokens.
/// O(1); never allocates.
[[nodiscard]] double progress(std::int64_t cursor, const Script& script) noexcept;

}  // namespace PrompterCore::PromptPanel
