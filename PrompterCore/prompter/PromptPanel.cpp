#include "PrompterCore/prompter/PromptPanel.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore::PromptPanel {

std::int64_t current(std::span<const PromptLine> lines, std::int64_t cursor) noexcept {
    if (cursor >= 0) return LineBreaker::lineContaining(cursor, lines).value_or(0);
    const auto text = std::ranges::find(lines, false, &PromptLine::isBlank);
    return text == lines.end() ? 0 : std::distance(lines.begin(), text);
}

std::vector<std::int64_t> visible(std::span<const PromptLine> lines, std::int64_t cursor,
                                  std::int64_t count) {
    std::vector<std::int64_t> textLines;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (!lines[i].isBlank()) textLines.push_back(signedCount(i));
    const auto behind = std::ranges::upper_bound(textLines, current(lines, cursor));
    const std::int64_t here =
        std::max<std::int64_t>(std::distance(textLines.begin(), behind) - 1, 0);
    const std::int64_t first = cursor >= 0 ? std::max<std::int64_t>(here - 1, 0) : here;
    const std::int64_t last = std::min(saturatingAdd(here, count), signedCount(textLines.size()));
    if (last <= first) return {};
    return {textLines.begin() + first, textLines.begin() + last};
}

std::int64_t wordsSaidOn(const PromptLine& line, const Script& script,
                         std::int64_t cursor) noexcept {
    const std::vector<ScriptWord>& words = script.words();
    require(0 <= line.wordRange.lower() && line.wordRange.upper() <= signedCount(words.size()),
            "the line's words lie within the script's");
    const std::int64_t reached = saturatingAdd(cursor, 1);
    return std::count_if(
        words.begin() + line.wordRange.lower(), words.begin() + line.wordRange.upper(),
        [reached](const ScriptWord& word) { return word.tokenRange.upper() <= reached; });
}

double progress(std::int64_t cursor, const Script& script) noexcept {
    if (script.isEmpty() || cursor < 0) return 0;
    const std::int64_t tokens = signedCount(script.tokens().size());
    return static_cast<double>(std::min(cursor, tokens - 1) + 1) / static_cast<double>(tokens);
}

}  // namespace PrompterCore::PromptPanel
