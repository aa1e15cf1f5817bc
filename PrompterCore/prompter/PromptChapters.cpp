#include "PrompterCore/prompter/PromptChapters.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore::PromptChapters {

std::vector<PromptChapter> chaptersOf(const Script& script, std::span<const PromptLine> lines) {
    const auto headingAfter = [lines](auto line) {
        return std::find_if(line, lines.end(),
                            [](const PromptLine& next) { return next.heading.has_value(); });
    };
    std::vector<PromptChapter> chapters;
    auto line = headingAfter(lines.begin());
    for (const ScriptChapter& chapter : ScriptChapters::chaptersOf(script)) {
        if (line == lines.end()) break;
        const auto next = headingAfter(line + 1);
        chapters.push_back({.index = chapter.index,
                            .title = chapter.title,
                            .firstToken = chapter.tokenRange.lower(),
                            .lineCount = std::distance(line, next),
                            .startsAt = chapter.startsAt});
        line = next;
    }
    return chapters;
}

std::int64_t current(std::int64_t cursor, std::span<const PromptChapter> chapters) noexcept {
    const std::int64_t token = std::max<std::int64_t>(cursor, 0);
    const auto found =
        std::find_if(chapters.rbegin(), chapters.rend(),
                     [token](const PromptChapter& chapter) { return chapter.firstToken <= token; });
    if (found == chapters.rend()) return 0;
    return std::distance(chapters.begin(), found.base()) - 1;
}

double fillOf(std::int64_t index, std::int64_t cursor, std::span<const PromptChapter> chapters,
              std::int64_t tokenCount) noexcept {
    require(0 <= index && index < signedCount(chapters.size()), "the chapter is in the list");
    const auto place = static_cast<std::size_t>(index);
    const std::int64_t start = chapters[place].firstToken;
    const std::int64_t end =
        place + 1 < chapters.size() ? chapters[place + 1].firstToken : tokenCount;
    // The ends first: what remains lies within the chapter, where nothing overflows.
    if (cursor < start) return 0;
    if (start >= end || cursor >= end - 1) return 1;
    return static_cast<double>(distanceBetween(start, cursor + 1)) /
           static_cast<double>(distanceBetween(start, end));
}

}  // namespace PrompterCore::PromptChapters
