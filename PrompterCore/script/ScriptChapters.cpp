#include "PrompterCore/script/ScriptChapters.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore::ScriptChapters {

std::vector<ScriptChapter> chaptersOf(const Script& script) {
    const std::vector<ScriptHeading>& headings = script.headings();
    std::vector<ScriptChapter> chapters;
    chapters.reserve(headings.size());
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const ScriptHeading& heading = headings[i];
        const ScriptHeading* const next = i + 1 < headings.size() ? &headings[i + 1] : nullptr;
        chapters.push_back(
            {.index = signedCount(i),
             .title = heading.title,
             .sourceRange =
                 CharacterRange(heading.sourceRange.lower(),
                                next ? next->sourceRange.lower() : script.characters().count()),
             .wordRange = WordRange(heading.wordIndex,
                                    next ? next->wordIndex : signedCount(script.words().size())),
             .tokenRange = TokenRange(
                 heading.firstToken, next ? next->firstToken : signedCount(script.tokens().size())),
             .startsAt = checkedMultiply(heading.wordIndex, 60) / ReadingTime::wordsPerMinute});
    }
    return chapters;
}

std::optional<std::int64_t> current(std::int64_t cursor,
                                    std::span<const ScriptChapter> chapters) noexcept {
    const std::int64_t token = std::max<std::int64_t>(cursor, 0);
    const auto found = std::find_if(
        chapters.rbegin(), chapters.rend(),
        [token](const ScriptChapter& chapter) { return chapter.tokenRange.lower() <= token; });
    if (found == chapters.rend()) return std::nullopt;
    return std::distance(chapters.begin(), found.base()) - 1;
}

}  // namespace PrompterCore::ScriptChapters
