#include "PrompterCore/prompter/PromptParagraphs.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore::PromptParagraphs {

std::vector<LineRange> blocks(std::span<const PromptLine> lines) {
    const auto isBlank = [](const PromptLine& line) { return line.isBlank(); };
    std::vector<LineRange> found;
    for (auto first = std::find_if_not(lines.begin(), lines.end(), isBlank);
         first != lines.end();) {
        const auto end = std::find_if(first, lines.end(), isBlank);
        found.push_back(LineRange(first - lines.begin(), end - lines.begin()));
        first = std::find_if_not(end, lines.end(), isBlank);
    }
    return found;
}

std::optional<std::int64_t> blockContaining(std::int64_t line,
                                            std::span<const LineRange> blocks) noexcept {
    const auto found = std::find_if(blocks.begin(), blocks.end(), [line](const LineRange& block) {
        return block.upper() > line;
    });
    if (found == blocks.end()) return std::nullopt;
    return std::distance(blocks.begin(), found);
}

std::optional<std::int64_t> firstTokenOf(LineRange block,
                                         std::span<const PromptLine> lines) noexcept {
    const std::int64_t end = std::min(block.upper(), signedCount(lines.size()));
    for (std::int64_t line = std::max<std::int64_t>(block.lower(), 0); line < end; ++line) {
        const TokenRange tokens = lines[static_cast<std::size_t>(line)].tokenRange;
        if (!tokens.isEmpty()) return tokens.lower();
    }
    return std::nullopt;
}

}  // namespace PrompterCore::PromptParagraphs
