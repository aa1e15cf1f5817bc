#include "PrompterCore/prompter/ReadingProgress.h"

#include <algorithm>
#include <cstddef>
#include <limits>
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

}  // namespace

ReadingProgress::ReadingProgress(const Script& script, std::int64_t cursor,
                                 std::span<const PromptLine> lines) {
    const std::vector<ScriptWord>& words = script.words();
    const auto current = std::ranges::find_if(
        words, [cursor](const ScriptWord& word) { return word.tokenRange.contains(cursor); });
    std::int64_t begun = 0;  // script lines so far
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (word == words.begin() || word->breaksBefore >= 1) ++begun;
        if (word == current) line = begun;
    }
    lineCount = std::max<std::int64_t>(begun, 1);
    if (current != words.end())
        fraction =
            static_cast<double>(current - words.begin() + 1) / static_cast<double>(words.size());

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
