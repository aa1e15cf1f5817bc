#include "apps/varnelle/Chapters.h"

#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

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
#include "host/LineEnds.h"
#include "host/TextFile.h"
#include "host/WriteFile.h"

namespace Varnelle {

namespace {

namespace ChapterEdits = PrompterCore::ChapterEdits;
using PrompterCore::TextEdit;

// A script, and what its file has beside it.
struct Content {
    Script script;
    bool hasMark = false;
};

Content contentOf(const EditedScript& script) {
    FileText file = readFileText(script.file);
    return {.script = Script(std::move(file.text)), .hasMark = file.hasMark};
}

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
std::optional<std::string> missing(const EditedScript& script, const Content& content,
                                   std::initializer_list<std::int64_t> chapters) {
    for (const std::int64_t chapter : chapters)
        if (chapter < 1 || chapter > signedCount(content.script.headings().size()))
            return noSuchChapter(script.file, chapter, content.script);
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

// What an edit brings into a script ends its lines as the script does.
Text inLinesOf(const Text& script, const Text& text) {
    const auto end = lineEndOf(script.utf8());
    return end ? Text(withLineEnd(text.utf8(), *end)) : text;
}

// No edit leaves the file as it is.
ExitStatus apply(std::optional<TextEdit> edit, const EditedScript& script, const Content& content) {
    if (!edit && script.isInPlace) return ExitStatus::done;
    const Text& text = content.script.text();
    if (edit) edit->replacement = inLinesOf(text, edit->replacement);
    std::string edited(content.hasMark ? FileText::mark : "");
    edited += edit ? edit->appliedTo(text).utf8() : text.utf8();
    if (script.isInPlace) {
        writeFile(script.file, edited);
    } else {
        print(edited);
    }
    return ExitStatus::done;
}

}  // namespace

void listChapters(const std::string& file, bool json) {
    const Script script(readText(file));
    Output output;
    Json list = Json::array();
    const std::vector<ScriptChapter> chapters = ScriptChapters::chaptersOf(script);
    for (const ScriptChapter& chapter : chapters) {
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
    if (chapters.empty() && !json)
        complain(shownName(file) + ": no chapters; a line that begins with \"" +
                 std::string(PrompterCore::ScriptHeadings::marker) + "\" and a title opens one");
}

ExitStatus addChapter(const EditedScript& script, const std::string& title,
                      const std::optional<std::string>& text, std::optional<std::int64_t> before) {
    const std::optional<Text> heading = asTitle(title);
    if (!heading) return refused(noTitle);
    const Content content = contentOf(script);
    if (before) {
        if (const auto why = missing(script, content, {*before})) return refused(*why);
        before = *before - 1;
    }
    const Text body = text ? readText(*text) : Text();
    return apply(ChapterEdits::add(*heading, body, before, content.script), script, content);
}

ExitStatus renameChapter(const EditedScript& script, std::int64_t chapter,
                         const std::string& title) {
    const std::optional<Text> heading = asTitle(title);
    if (!heading) return refused(noTitle);
    const Content content = contentOf(script);
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::rename(chapter - 1, *heading, content.script), script, content);
}

ExitStatus removeChapter(const EditedScript& script, std::int64_t chapter, bool keepingText) {
    const Content content = contentOf(script);
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::remove(chapter - 1, keepingText, content.script), script, content);
}

ExitStatus moveChapter(const EditedScript& script, std::int64_t chapter, std::int64_t destination) {
    const Content content = contentOf(script);
    if (const auto why = missing(script, content, {chapter, destination})) return refused(*why);
    return apply(ChapterEdits::move(chapter - 1, destination - 1, content.script), script, content);
}

ExitStatus replaceChapter(const EditedScript& script, std::int64_t chapter,
                          const std::string& text) {
    const Content content = contentOf(script);
    if (const auto why = missing(script, content, {chapter})) return refused(*why);
    return apply(ChapterEdits::replaceTextOf(chapter - 1, readText(text), content.script), script,
                 content);
}

ExitStatus excerptChapter(const std::string& file, std::int64_t chapter) {
    const Text text = readText(file);
    const auto excerpt = PrompterCore::ChapterExcerpt::make(text, chapter - 1);
    if (!excerpt) return refused(noSuchChapter(file, chapter, Script(text)));
    print(inLinesOf(text, Text(excerpt->text.utf8() + "\n")).utf8());
    return ExitStatus::done;
}

}  // namespace Varnelle
