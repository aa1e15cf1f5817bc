#include "PrompterCore/script/ChapterExcerpt.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore::ChapterExcerpt {

std::optional<Excerpt> make(const Text& text, std::int64_t chapter) {
    const Script script(text);
    const std::vector<ScriptChapter> chapters = ScriptChapters::chaptersOf(script);
    if (chapter < 0 || chapter >= signedCount(chapters.size())) return std::nullopt;
    const ScriptChapter& found = chapters[static_cast<std::size_t>(chapter)];
    std::string cut(trimmedOfWhiteSpace(script.characters().slice(found.sourceRange)));
    cut.append("\n\n").append(ScriptHeadings::marker).append("End of ").append(found.title.utf8());
    ChapterFocus focus{.index = chapter,
                       .titles = {},
                       .utf16Offset = script.utf16OffsetOfCharacter(found.sourceRange.lower())};
    for (const ScriptChapter& each : chapters)
        focus.titles.push_back(each.title);
    return Excerpt{.text = Text(std::move(cut)), .focus = std::move(focus)};
}

}  // namespace PrompterCore::ChapterExcerpt
