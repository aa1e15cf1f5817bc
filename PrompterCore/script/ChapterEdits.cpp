#include "PrompterCore/script/ChapterEdits.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore::ChapterEdits {

namespace {

constexpr std::string_view blankLine = "\n\n";

std::int64_t countOf(std::string_view text) { return Characters(Text(text)).count(); }

bool isWhiteSpace(Character character) { return character.isWhiteSpace(); }

// Where the line that holds `position` starts.
std::int64_t lineStart(const Characters& characters, std::int64_t position) {
    while (position > 0 && !characters[position - 1].isLineBreak())
        --position;
    return position;
}

// Behind the last character that is not white space.
std::int64_t visibleEnd(const Characters& characters) {
    std::int64_t end = characters.count();
    while (end > 0 && characters[end - 1].isWhiteSpace())
        --end;
    return end;
}

std::string headingLine(const Text& title) {
    return std::string(ScriptHeadings::marker) + title.utf8();
}

// Of a heading line that begins at `start` of the edited text.
CharacterRange titleSelection(std::int64_t start, const Text& title) {
    const std::int64_t first = start + countOf(ScriptHeadings::marker);
    return CharacterRange(first, first + countOf(title.utf8()));
}

std::optional<ScriptChapter> chapterAt(std::int64_t index, const Script& script) {
    if (index < 0 || index >= signedCount(script.headings().size())) return std::nullopt;
    return ScriptChapters::chaptersOf(script)[static_cast<std::size_t>(index)];
}

const CharacterRange& headingRange(std::int64_t chapter, const Script& script) {
    return script.headings()[static_cast<std::size_t>(chapter)].sourceRange;
}

TextEdit withoutSelection(CharacterRange range, std::string replacement) {
    return {.range = range, .replacement = Text(std::move(replacement)), .selection = std::nullopt};
}

// What separates a heading at the start of the line `start` from the line before.
std::string_view prefixAtLine(const Characters& characters, std::int64_t start) {
    if (start == 0) return "";
    const bool isEmptyBefore = lineStart(characters, start - 1) == start - 1;
    return isEmptyBefore ? "" : "\n";
}

}  // namespace

TextEdit insertHeading(const Text& title, std::int64_t position, const Script& script) {
    const Characters& characters = script.characters();
    const std::int64_t count = characters.count();
    const std::int64_t caret = std::clamp<std::int64_t>(position, 0, count);
    const std::int64_t line = lineStart(characters, caret);
    CharacterRange range = CharacterRange::emptyAt(line);
    std::string_view prefix;
    if (std::all_of(characters.begin() + line, characters.begin() + caret, isWhiteSpace)) {
        prefix = prefixAtLine(characters, line);
    } else {
        std::int64_t start = caret;
        while (start > line && characters[start - 1].is(' '))
            --start;
        range = CharacterRange(start, caret);
        prefix = blankLine;
    }
    const bool hasTextBehind =
        !std::all_of(characters.begin() + range.upper(), characters.end(), isWhiteSpace);
    const std::string_view suffix = hasTextBehind ? blankLine : "";
    std::string replacement(prefix);
    replacement.append(headingLine(title)).append(suffix);
    return {.range = range,
            .replacement = Text(std::move(replacement)),
            .selection = titleSelection(range.lower() + countOf(prefix), title)};
}

std::optional<TextEdit> add(const Text& title, const Text& text,
                            std::optional<std::int64_t> chapter, const Script& script) {
    std::string block = headingLine(title);
    const std::string_view body = trimmedOfWhiteSpace(text.utf8());
    if (!body.empty()) block.append(blankLine).append(body);
    if (chapter) {
        const std::optional<ScriptChapter> next = chapterAt(*chapter, script);
        if (!next) return std::nullopt;
        return withoutSelection(CharacterRange::emptyAt(next->sourceRange.lower()),
                                block.append(blankLine));
    }
    const std::int64_t end = visibleEnd(script.characters());
    std::string replacement(end > 0 ? blankLine : "");
    return withoutSelection(CharacterRange(end, script.characters().count()),
                            replacement.append(block).append("\n"));
}

std::optional<TextEdit> rename(std::int64_t chapter, const Text& title, const Script& script) {
    if (!chapterAt(chapter, script)) return std::nullopt;
    const CharacterRange range = headingRange(chapter, script);
    return TextEdit{.range = range,
                    .replacement = Text(headingLine(title)),
                    .selection = titleSelection(range.lower(), title)};
}

std::optional<TextEdit> replaceTextOf(std::int64_t chapter, const Text& text,
                                      const Script& script) {
    const std::optional<ScriptChapter> found = chapterAt(chapter, script);
    if (!found) return std::nullopt;
    const std::int64_t end = found->sourceRange.upper();
    std::string replacement(blankLine);
    replacement.append(trimmedOfWhiteSpace(text.utf8()));
    if (end != script.characters().count()) replacement.append(blankLine);
    return withoutSelection(CharacterRange(headingRange(chapter, script).upper(), end),
                            std::move(replacement));
}

std::optional<TextEdit> remove(std::int64_t chapter, bool keepingText, const Script& script) {
    const std::optional<ScriptChapter> found = chapterAt(chapter, script);
    if (!found) return std::nullopt;
    if (!keepingText) return withoutSelection(found->sourceRange, "");
    const Characters& characters = script.characters();
    const CharacterRange heading = headingRange(chapter, script);
    std::int64_t end = heading.upper();
    while (end < characters.count() && characters[end].isLineBreak())
        ++end;
    return withoutSelection(CharacterRange(heading.lower(), end), "");
}

std::optional<TextEdit> move(std::int64_t chapter, std::int64_t destination, const Script& script) {
    const std::vector<ScriptChapter> chapters = ScriptChapters::chaptersOf(script);
    const auto exists = [count = signedCount(chapters.size())](std::int64_t index) {
        return 0 <= index && index < count;
    };
    if (!exists(chapter) || !exists(destination) || chapter == destination) return std::nullopt;

    const Characters& characters = script.characters();
    std::vector<std::string_view> blocks;
    blocks.reserve(chapters.size());
    for (const ScriptChapter& each : chapters)
        blocks.push_back(trimmedOfWhiteSpace(characters.slice(each.sourceRange)));
    const std::string_view moved = blocks[static_cast<std::size_t>(chapter)];
    blocks.erase(blocks.begin() + chapter);
    blocks.insert(blocks.begin() + destination, moved);

    const CharacterRange range(chapters.front().sourceRange.lower(), characters.count());
    std::string replacement(blocks.front());
    for (std::size_t i = 1; i < blocks.size(); ++i)
        replacement.append(blankLine).append(blocks[i]);
    replacement.append(
        characters.slice(CharacterRange(visibleEnd(characters), characters.count())));
    return withoutSelection(range, std::move(replacement));
}

}  // namespace PrompterCore::ChapterEdits
