#include "apps/varnelle/ShowScript.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/script/ScriptHeadings.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Separator.h"
#include "apps/varnelle/ColumnLines.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/TextFile.h"

namespace Varnelle {

namespace {

std::string summary(const Script& script) {
    return ReadingTime::summary(signedCount(script.words().size()));
}

// A list of a long script is written in pieces: as one JSON value it would take many times the
// script's own memory.
template <class List, class ToJson>
void writeList(Output& output, std::string_view key, const List& list, ToJson toJson) {
    constexpr std::size_t pieceSize = 1024;
    output.write(fmt::format("\"{}\":[", key));
    Json piece = Json::array();
    bool isFirst = true;
    const auto writePiece = [&] {
        if (piece.empty()) return;
        if (!isFirst) output.write(",");
        isFirst = false;
        const std::string written = piece.dump();
        output.write(std::string_view(written).substr(1, written.size() - 2));  // no brackets
        piece.clear();
    };
    for (const auto& entry : list) {
        piece.push_back(toJson(entry));
        if (piece.size() == pieceSize) writePiece();
    }
    writePiece();
    output.write("],");
}

void writeJson(const Script& script) {
    Output output;
    const auto record = [](const auto& entry) { return asJson(entry); };
    output.write(fmt::format("{{\"text\":{},", asJson(script.text()).dump()));
    writeList(output, "characters", script.characters(),
              [](Character character) { return Json(character.utf8()); });
    writeList(output, "utf16Offsets", script.utf16Offsets(),
              [](std::int64_t offset) { return Json(offset); });
    writeList(output, "tokens", script.tokens(), record);
    writeList(output, "words", script.words(), record);
    writeList(output, "headings", script.headings(), record);
    writeList(output, "chapters", ScriptChapters::chaptersOf(script), record);
    output.line(fmt::format("\"readingTime\":{}}}", Json(summary(script)).dump()));
    output.flush();
}

}  // namespace

void showScript(const std::string& file, bool json) {
    const Script script(readText(file));
    if (json) {
        writeJson(script);
        return;
    }
    Output output;
    output.line(summary(script));
    for (const ScriptChapter& chapter : ScriptChapters::chaptersOf(script)) {
        output.line(fmt::format("{:>3}:{:02}  {}{}{}", chapter.startsAt / 60, chapter.startsAt % 60,
                                shown(chapter.title.utf8()), separator,
                                ReadingTime::summary(chapter.wordCount())));
    }
    output.flush();
}

void showLines(const std::string& file, std::int64_t width, bool json) {
    const std::vector<PromptLine> lines =
        columnBreaker(static_cast<double>(width)).linesFor(Script(readText(file)));
    Output output;
    if (json) {
        output.write("[");
        for (const PromptLine& line : lines) {
            output.write(&line == &lines.front() ? "" : ",");
            output.write(asJson(line).dump());
        }
        output.line("]");
    } else {
        for (const PromptLine& line : lines) {
            output.line(line.heading
                            ? std::string(ScriptHeadings::marker) + shown(line.heading->utf8())
                            : std::string(static_cast<std::size_t>(line.indent), ' ') +
                                  shown(line.text.utf8()));
        }
    }
    output.flush();
}

void addScript(CLI::App& app) {
    const auto script = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    CLI::App& scriptApp = *app.add_subcommand(
        "script",
        "Examples:\n"
        "  varnelle script talk.txt\n"
        "  varnelle script talk.txt --json\n\n"
        "Says what SCRIPT is: words, reading time, chapters with their starts.");
    scriptApp.add_option("SCRIPT", *script, "the script; - is standard input")->required();
    scriptApp.add_flag("--json", *json, "everything that is derived from the text, as JSON");
    scriptApp.callback([script, json] { showScript(*script, *json); });
}

void addLines(CLI::App& app) {
    const auto script = std::make_shared<std::string>();
    const auto json = std::make_shared<bool>(false);
    const auto width = std::make_shared<std::int64_t>(40);
    CLI::App& linesApp = *app.add_subcommand("lines",
                                             "Examples:\n"
                                             "  varnelle lines talk.txt --width 40\n"
                                             "  varnelle lines talk.txt --width 40 --json\n\n"
                                             "Breaks SCRIPT into prompt lines.");
    linesApp.add_option("SCRIPT", *script, "the script; - is standard input")->required();
    linesApp.add_option("--width", *width, "columns of a line")
        ->check(numberBetween<std::int64_t>(1, 1'000'000))
        ->capture_default_str();
    linesApp.add_flag("--json", *json, "the lines as JSON");
    linesApp.callback([script, width, json] { showLines(*script, *width, *json); });
}

}  // namespace Varnelle
