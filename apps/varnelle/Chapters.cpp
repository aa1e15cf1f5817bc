#include "apps/varnelle/Chapters.h"

#include <initializer_list>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "PrompterCore/script/ChapterEdits.h"
#include "PrompterCore/script/ChapterExcerpt.h"
#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Separator.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/TextFile.h"
#include "host/WriteFile.h"

namespace Varnelle {

namespace {

namespace ChapterEdits = PrompterCore::ChapterEdits;
using PrompterCore::TextEdit;

ExitStatus refused(const std::string& why) {
    complain(why);
    return ExitStatus::usage;
}

std::string noSuchChapter(const std::string& file, std::int64_t chapter, const Script& script) {
    const std::size_t count = script.headings().size();
    const std::string there = count == 0   ? "it has none"
                              : count == 1 ? "it has only chapter 1"
                                           : fmt::format("it has chapters 1 to {}", count);
    return fmt::format("{}: there is no chapter {}; {}", shownName(file), chapter, there);
}

// The chapter that does not exist, if there is one among `chapters`.
std::optional<std::string> missing(const EditedScript& script, const Script& content,
                                   std::initializer_list<std::int64_t> chapters) {
    for (const std::int64_t chapter : chapters)
        if (chapter < 1 || chapter > signedCount(content.headings().size()))
            return noSuchChapter(script.file, chapter, content);
    return std::nullopt;
}

// The title as a heading line would have it. Absent when it makes no heading, or more than one
// line.
std::optional<Text> asTitle(const std::string& title) {
    const std::optional<Text> text = Text::fromUtf8(title);
    if (!text) return std::nullopt;
    const Script line(Text(std::string(PrompterCore::ScriptHeadings::marker) + title));
    if (line.headings().size() != 1 ||
        line.headings()[0].sourceRange.upper() != line.characters().count())
        return std::nullopt;
    return line.headings()[0].title;
}

constexpr const char* noTitle = "a title is one line of UTF-8 text that is not empty";

void print(std::string_view text) {
    Output output;
    output.text(text);
    output.flush();
}

// No edit leaves the text as it is.
ExitStatus apply(const std::optional<TextEdit>& edit, const EditedScript& script,
                 const Script& content) {
    const Text edited = edit ? edit->appliedTo(content.text()) : content.text();
    if (!script.isInPlace) {
        print(edited.utf8());
    } else if (edit) {
        writeFile(script.file, edited.utf8());
    }
    return ExitStatus::done;
}

}  // namespace

void listChapters(const std::string& file, bool json) {
    const Script script(readText(file));
    Output output;
    Json list = Json::array();
    for (const ScriptChapter& chapter : ScriptChapters::chaptersOf(script)) {
        const std::string time = ReadingTime::summary(chapter.wordCount());
        if (json) {
            Json record = asJson(chapter);
            record["wordCount"] = chapter.wordCount();
            record["readingTime"] = time;
            list.push_back(std::move(record));
        } else {
            output.line(fmt::format("{:>3}  {:>3}:{:02}  {}{}{}", chapter.index + 1,
                                    chapter.startsAt / 60, chapter.startsAt % 60,
                                    shown(chapter.title.utf8()), separator, time));
        }
    }
    if (json) output.line(list.dump());
    output.flush();
}

ExitStatus addChapter(const EditedScript& script, const std::string& title,
                      const std::optional<std::string>& text, std::optional<std::int64_t> before) {
    const std::optional<Text> heading = asTitle(title);
    if (!heading) return refused(noTitle);
    const Script content(readText(script.file));
    if (before) {
        if (const auto why = missing(script, content, {*before})) return refused(*why);
        before = *before - 1;
    }
    const Text body = text ? readText(*text) : Text();
    return apply(ChapterEdits::add(*heading, body, before, content), script, content);
}

ExitStatus renameChapter(const EditedScript& script, std::int64_t chapter,
                         const std::string& title) {
    const std::optional<Text> heading = asTitle(title);
    if (!heading) return refused(noTitle);
    const Script content(readText(script.file));
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::rename(chapter - 1, *heading, content), script, content);
}

ExitStatus removeChapter(const EditedScript& script, std::int64_t chapter, bool keepingText) {
    const Script content(readText(script.file));
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::remove(chapter - 1, keepingText, content), script, content);
}

ExitStatus moveChapter(const EditedScript& script, std::int64_t chapter, std::int64_t destination) {
    const Script content(readText(script.file));
    if (const auto why = missing(script, content, {chapter, destination})) return refused(*why);
    return apply(ChapterEdits::move(chapter - 1, destination - 1, content), script, content);
}

ExitStatus replaceChapter(const EditedScript& script, std::int64_t chapter,
                          const std::string& text) {
    const Script content(readText(script.file));
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::replaceTextOf(chapter - 1, readText(text), content), script,
                 content);
}

ExitStatus excerptChapter(const std::string& file, std::int64_t chapter) {
    const Text text = readText(file);
    const auto excerpt = PrompterCore::ChapterExcerpt::make(text, chapter - 1);
    if (!excerpt) return refused(noSuchChapter(file, chapter, Script(text)));
    print(excerpt->text.utf8() + "\n");
    return ExitStatus::done;
}

}  // namespace Varnelle
