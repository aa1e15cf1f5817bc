#pragma once

// Paragraphs on the prompter: blocks of consecutive lines with text, so that a reader can jump from
// one to the next.
//
// Units: a block is a range of indices of the lines given; tokens as in Script.
//
//   // lines: text, text, blank, heading, text
//   auto blocks = PromptParagraphs::blocks(lines);     // 0 ..< 2 and 4 ..< 5
//   PromptParagraphs::blockContaining(3, blocks);      // 1: the heading belongs to what follows
//   PromptParagraphs::firstTokenOf(blocks[0], lines);  // 0

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "PrompterCore/prompter/PromptLine.h"
#include "PrompterCore/support/IndexRange.h"

namespace PrompterCore::PromptParagraphs {

/// The runs of lines that hold words, in order; blank and heading lines lie between them. O(n).
[[nodiscard]] std::vector<LineRange> blocks(std::span<const PromptLine> lines);

/// The index of the block that `line` lies in or, from between two blocks, of the one that follows.
/// Absent behind the last block. O(n) in blocks; never allocates.
[[nodiscard]] std::optional<std::int64_t> blockContaining(
    std::int64_t line, std::span<const LineRange> blocks) noexcept;

/// The first token on the lines of `block`. Absent when none of them has a token, as with a lone
/// dash. Lines of the block that do not exist have none. O(n) in its lines; never allocates.
[[nodiscard]] std::optional<std::int64_t> firstTokenOf(LineRange block,
                                                       std::span<const PromptLine> lines) noexcept;

}  // namespace PrompterCore::PromptParagraphs
