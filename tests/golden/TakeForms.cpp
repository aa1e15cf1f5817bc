#include <chrono>

#include "PrompterCore/takes/ChapterMark.h"
#include "PrompterCore/takes/ChapterTimestamps.h"
#include "PrompterCore/takes/RecordingName.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

using RecordingName::Kind;

const std::vector<ChapterMark> marks = {
    {.title = "Intro", .seconds = 3.2},
    {.title = "Main part", .seconds = 65.9},
    {.title = "Caf\u00E9 \"\u4E2D\" \\ \U0001F3A5", .seconds = 3599.9},
    {.title = "", .seconds = 3725},
    {.title = "Tab\tin it", .seconds = 43209},
};

std::string recordingNames() {
    // 5 March 2025, 14:07:09 UTC.
    const std::chrono::system_clock::time_point moment{std::chrono::seconds(1741183629)};
    const std::optional<Text> scripts[] = {std::nullopt, Text("Launch: video"), Text(" a/b\n "),
                                           Text("\u4E2D caf\u00E9"), Text("?*")};
    std::string lines;
    for (const auto& script : scripts)
        for (const Kind kind : {Kind::video, Kind::sound})
            lines += RecordingName::file(script, moment, TimeZone::utc(), kind).utf8() + '\n';
    return lines + RecordingName::renamed("Launch: final", "mov").value().utf8() + '\n';
}

}  // namespace

std::vector<Form> takeForms() {
    return {
        {"chapter-marks.jsonl", recordLines(marks), recordsReadAndWritten<ChapterMark>},
        // The last line of a chapter list ends without a line feed, and so does the file.
        {"chapter-list.txt", ChapterTimestamps::youTube(marks)},
        {"recording-names.txt", recordingNames()},
    };
}

}  // namespace PrompterCore::Tests
