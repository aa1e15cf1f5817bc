// `varnelle script` and `varnelle lines`, run from outside.

#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/ScriptChapters.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Columns.h"
#include "tests/host/TemporaryFile.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using namespace PrompterCore;  // NOLINT
using Json = nlohmann::ordered_json;
using namespace std::string_view_literals;

constexpr std::string_view nastyTexts[] = {
    ""sv,
    "\n"sv,
    "Hello brave world.\n"sv,
    "# Only\n## Headings\n#\n"sv,
    "One\r\n# Two\r\n\r\n  - three\r\n\tfour\rfive"sv,
    "\U0001F468\u200D\U0001F469\u200D\U0001F467 two \U0001F1E9\U0001F1EA\U0001F1E9 \u2764\uFE0F"sv,
    "cafe\u0301 caf\u00E9 a\u0301\u0302\u0303 \u0301x"sv,
    "\uFF11\uFF12\uFF13 1,905.50 \u0663\u0664 \u00BD 2nd $5"sv,
    "\u0634\u0643\u0631\u0627 \u202Eabc\u202C \u05E9\u05C1\u05DC\u05D5\u05DD 42"sv,
    "a\0b \0 c\n# d\0e"sv,
    "\uFEFFmarked \uFEFF inside"sv,
    "\u65E5\u672C\u8A9E\u306E\u53F0\u672C\u3002 \u0E20\u0E32\u0E29\u0E32\u0E44\u0E17\u0E22"sv,
    "quotes \" \\ / \u0001 \u007F \u2028 isn't \u201Cwell-kept\u201D\n#  A \"title\" \n"sv,
};

template <class Unit>
Json rangeAsJson(const IndexRange<Unit>& range) {
    return Json::array({range.lower(), range.upper()});
}

// What the library says about a text, with each record's fields in their order.
Json expectedScript(const Script& script) {
    Json all{{"text", script.text().utf8()},
             {"characters", Json::array()},
             {"utf16Offsets", Json::array()},
             {"tokens", Json::array()},
             {"words", Json::array()},
             {"headings", Json::array()},
             {"chapters", Json::array()},
             {"readingTime", ReadingTime::summary(signedCount(script.words().size()))}};
    for (const Character character : script.characters()) {
        all["characters"].push_back(character.utf8());
    }
    for (const std::int64_t offset : script.utf16Offsets()) {
        all["utf16Offsets"].push_back(offset);
    }
    for (const ScriptToken& token : script.tokens()) {
        all["tokens"].push_back({{"index", token.index},
                                 {"text", token.text.utf8()},
                                 {"sourceRange", rangeAsJson(token.sourceRange)}});
    }
    for (const ScriptWord& word : script.words()) {
        all["words"].push_back({{"text", word.text.utf8()},
                                {"tokenRange", rangeAsJson(word.tokenRange)},
                                {"breaksBefore", word.breaksBefore},
                                {"indent", word.indent}});
    }
    for (const ScriptHeading& heading : script.headings()) {
        all["headings"].push_back({{"title", heading.title.utf8()},
                                   {"sourceRange", rangeAsJson(heading.sourceRange)},
                                   {"wordIndex", heading.wordIndex},
                                   {"firstToken", heading.firstToken},
                                   {"breaksBefore", heading.breaksBefore}});
    }
    for (const ScriptChapter& chapter : ScriptChapters::chaptersOf(script)) {
        all["chapters"].push_back({{"index", chapter.index},
                                   {"title", chapter.title.utf8()},
                                   {"sourceRange", rangeAsJson(chapter.sourceRange)},
                                   {"wordRange", rangeAsJson(chapter.wordRange)},
                                   {"tokenRange", rangeAsJson(chapter.tokenRange)},
                                   {"startsAt", chapter.startsAt}});
    }
    return all;
}

Json expectedLines(const Script& script, double width) {
    const LineBreaker breaker{.width = width, .measure = [](std::string_view text) {
                                  return static_cast<double>(columnsOf(text));
                              }};
    Json lines = Json::array();
    for (const PromptLine& line : breaker.linesFor(script)) {
        lines.push_back({{"text", line.text.utf8()},
                         {"tokenRange", rangeAsJson(line.tokenRange)},
                         {"wordRange", rangeAsJson(line.wordRange)},
                         {"indent", line.indent},
                         {"heading", line.heading ? Json(line.heading->utf8()) : Json()}});
    }
    return lines;
}

// The text without the byte order mark that only says how a file is written.
Script scriptOf(std::string_view text) {
    if (text.starts_with("\uFEFF")) text.remove_prefix(3);
    return Script(Text(text));
}

TEST(ScriptCommand, JsonIsAllThatTheLibraryDerives) {
    for (const std::string_view text : nastyTexts) {
        SCOPED_TRACE(::testing::PrintToString(text));
        const TemporaryFile file(text);
        const CommandResult result = runVarnelle({"script", file.name(), "--json"});
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.out, expectedScript(scriptOf(text)).dump() + "\n");
        EXPECT_EQ(result.error, "");
    }
}

TEST(ScriptCommand, AListLongerThanAPieceIsWhole) {
    std::string text;
    for (int i = 0; i < 5000; ++i)
        text += "# a\nb\n";
    const CommandResult result = runVarnelle({"script", "-", "--json"}, {.input = text});
    EXPECT_TRUE(result.out == expectedScript(scriptOf(text)).dump() + "\n");
}

TEST(ScriptCommand, SaysWordsReadingTimeAndChapters) {
    EXPECT_EQ(runVarnelle({"script", sampleScript}).out,
              "158 words \u00B7 about a minute aloud\n"
              "  0:00  The Light \u00B7 78 words \u00B7 under a minute aloud\n"
              "  0:31  The Keeper \u00B7 80 words \u00B7 under a minute aloud\n");
    EXPECT_EQ(runVarnelle({"script", "-"}, {.input = "# A\n# B\n"}).out,
              "Empty\n  0:00  A \u00B7 Empty\n  0:00  B \u00B7 Empty\n");
    EXPECT_EQ(runVarnelle({"script", "-"}).out, "Empty\n");
}

TEST(LinesCommand, JsonIsTheLibrarysLinesInColumns) {
    for (const std::string_view text : nastyTexts) {
        for (const int width : {1, 7, 40, 1'000'000}) {
            SCOPED_TRACE(::testing::PrintToString(text) + " " + std::to_string(width));
            const CommandResult result =
                runVarnelle({"lines", "-", "--json", "--width", std::to_string(width)},
                            {.input = std::string(text)});
            EXPECT_EQ(result.status, 0) << result.error;
            EXPECT_EQ(result.out, expectedLines(scriptOf(text), width).dump() + "\n");
        }
    }
}

TEST(LinesCommand, ShowsHeadingsAndIndentation) {
    const std::string text = "# One\nand two three four\n  five\n";
    EXPECT_EQ(runVarnelle({"lines", "-", "--width", "9"}, {.input = text}).out,
              "# One\nand two\nthree\nfour\n  five\n");
    EXPECT_EQ(runVarnelle({"lines", "-"}, {.input = text}).out,
              "# One\nand two three four\n  five\n");
    EXPECT_EQ(runVarnelle({"lines", "-"}).out, "");
}

TEST(LinesCommand, AWideCharacterTakesTwoColumns) {
    EXPECT_EQ(
        runVarnelle({"lines", "-", "--width", "5"}, {.input = "\u65E5\u672C \u8A9E ab cd"}).out,
        "\u65E5\u672C\n\u8A9E ab\ncd\n");
}

TEST(BigScript, TenMegabytesInOneLineTakeSecondsAndLittleMemory) {
    std::string text;
    while (text.size() < 10'000'000)
        text += "lighthouse keeper walks ";
    const TemporaryFile words(text);
    const TemporaryFile word(std::string(10'000'000, 'a'));
    for (const std::string& file : {words.name(), word.name()}) {
        for (const std::string command : {"script", "lines"}) {
            const CommandResult result = runVarnelle({command, file}, {.outputFile = "/dev/null"});
            SCOPED_TRACE(command + ": " + std::to_string(result.seconds) + " s, " +
                         std::to_string(result.peakKilobytes) + " kB");
            EXPECT_EQ(result.status, 0) << result.error;
            EXPECT_LT(result.seconds, 20);
            EXPECT_LT(result.peakKilobytes, 1'000'000);
        }
    }
}

}  // namespace
}  // namespace Varnelle::Tests
