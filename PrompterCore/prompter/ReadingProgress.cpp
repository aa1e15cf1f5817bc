#include "PrompterCore/prompter/ReadingProgress.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PromptParagraphs.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Separator.h"

namespace PrompterCore {

namespace {

std::vector<PromptLine> linesOfTheText(const Script& script) {
    return LineBreaker{.width = std::numeric_limits<double>::max(),
                       .measure = [](std::string_view) { return 0.0; }}
        .linesFor(script);
}

// The word with the token `cursor`, by index. The words' token ranges follow one another without
// gaps, so that the first one that ends behind the cursor is the only one that can hold it.
std::optional<std::int64_t> wordHolding(std::int64_t cursor, const std::vector<ScriptWord>& words) {
    const auto word = std::partition_point(
        words.begin(), words.end(),
        [cursor](const ScriptWord& before) { return before.tokenRange.upper() <= cursor; });
    if (word == words.end() || !word->tokenRange.contains(cursor)) return std::nullopt;
    return word - words.begin();
}

}  // namespace

ReadingProgress::ReadingProgress(const Script& script, std::int64_t cursor,
                                 std::span<const PromptLine> lines) {
    const std::vector<std::int64_t>& firstWords = script.lineFirstWords();
    lineCount = std::max<std::int64_t>(signedCount(firstWords.size()), 1);
    if (const std::optional<std::int64_t> word = wordHolding(cursor, script.words())) {
        line = std::ranges::upper_bound(firstWords, *word) - firstWords.begin();
        fraction = static_cast<double>(*word + 1) / static_cast<double>(script.words().size());
    }

    std::vector<PromptLine> own;
    if (lines.empty()) lines = own = linesOfTheText(script);
    const std::vector<LineRange> blocks = PromptParagraphs::blocks(lines);
    if (blocks.empty()) return;
    const std::int64_t shown = LineBreaker::lineContaining(std::max<std::int64_t>(cursor, 0), lines)
                                   .value_or(blocks.front().lower());
    const std::int64_t index =
        PromptParagraphs::blockContaining(shown, blocks).value_or(signedCount(blocks.size()) - 1);
    const LineRange block = blocks[static_cast<std::size_t>(index)];
    paragraph = index + 1;
    paragraphLine = std::max(shown, block.lower()) - block.lower() + 1;
    paragraphLineCount = block.count();
}

std::string ReadingProgress::label() const {
    std::string text = "Paragraph " + std::to_string(paragraph);
    text.append(separator);
    return text + "Line " + std::to_string(paragraphLine) + " of " +
           std::to_string(paragraphLineCount);
}

}  // namespace PrompterCore
