// `varnelle colours`, run from outside.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "PrompterCore/colour/ColourPreset.h"
#include "apps/varnelle/CheckColours.h"
#include "apps/varnelle/Swatch.h"
#include "host/TextFile.h"
#include "tests/host/TemporaryFile.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Arguments = std::vector<std::string>;
using Json = nlohmann::ordered_json;

constexpr std::string_view twoPresets =
    R"([{"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Studio",)"
    R"("text":{"red":1,"green":1,"blue":1,"alpha":1},)"
    R"("highlight":{"red":1,"green":0.5,"blue":0,"alpha":1}},)"
    R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950F","name":"日本 2",)"
    R"("text":{"red":0,"green":0,"blue":0,"alpha":1},)"
    R"("highlight":{"red":1,"green":1,"blue":1,"alpha":1},)"
    R"("marker":{"red":0,"green":0,"blue":0,"alpha":0.25}}])"
    "\n";

CommandResult presets(const std::string& file, const Arguments& verb) {
    Arguments all{"colours", "presets", file};
    all.insert(all.end(), verb.begin(), verb.end());
    return runVarnelle(all);
}

TEST(ColourLevels, AreThoseOfWCAG) {
    struct Case {
        double contrast;
        std::string_view normal, large;
    };
    const Case cases[] = {
        {1, "", ""},        {2.999, "", ""},      {3, "", "AA"},     {4.499, "", "AA"},
        {4.5, "AA", "AAA"}, {6.999, "AA", "AAA"}, {7, "AAA", "AAA"}, {21, "AAA", "AAA"},
    };
    for (const auto& [contrast, normal, large] : cases) {
        SCOPED_TRACE(contrast);
        EXPECT_EQ(levelOfNormalText(contrast).value_or(""), normal);
        EXPECT_EQ(levelOfLargeText(contrast).value_or(""), large);
    }
}

TEST(ColourLevels, NoContrastLooksBetterThanItIs) {
    EXPECT_EQ(contrastText(4.499), "4.49:1");
    EXPECT_EQ(contrastText(4.5), "4.50:1");
    EXPECT_EQ(contrastText(1), "1.00:1");
    EXPECT_EQ(contrastText(21), "21.00:1");
}

TEST(ColoursCommand, ChecksAPairOfColours) {
    expectText(runVarnelle({"colours", "check", "#ffffff", "#000000"}),
               "#FFFFFFFF on #000000FF  21.00:1\n"
               "normal text  AAA\n"
               "large text   AAA\n"
               "eye line     #FFFFFFFF\n");
    expectText(runVarnelle({"colours", "check", "777777", "FFFFFF"}),
               "#777777FF on #FFFFFFFF  4.47:1\n"
               "normal text  too weak for AA\n"
               "large text   AA\n"
               "eye line     #777777FF\n");
    expectText(runVarnelle({"colours", "check", "#FFFF99", "#FFFFFF80"}),
               "#FFFF99FF on #FFFFFF80  1.04:1\n"
               "normal text  too weak for AA\n"
               "large text   too weak for AA\n"
               "eye line     #000000FF\n");
}

TEST(ColoursCommand, ChecksThemAsJson) {
    const CommandResult result = runVarnelle({"colours", "check", "000066", "000000", "--json"});
    EXPECT_EQ(result.status, 0);
    Json record = Json::parse(result.out);
    EXPECT_NEAR(record["contrast"].get<double>(), 1.19, 0.005);
    record.erase("contrast");
    EXPECT_EQ(record.dump(), R"({"text":"#000066FF","background":"#000000FF","normalText":null,)"
                             R"("largeText":null,"eyeLine":"#FFFFFFFF"})");
}

TEST(ColoursCommand, WhatIsNoColourIsRefused) {
    for (const char* colour : {"", "#", "red", "#FFF", "##FF8000", "#FF80000", "#GG8000", "\xFF"}) {
        SCOPED_TRACE(colour);
        const Arguments all[] = {
            {"colours", "check", colour, "000000"},
            {"colours", "check", "000000", colour},
            {"colours", "presets", "/no/such", "add", "x", colour, "000000"},
            {"colours", "presets", "/no/such", "add", "x", "000000", "000000", "--marker", colour}};
        for (const Arguments& arguments : all) {
            const CommandResult result = runVarnelle(arguments);
            EXPECT_EQ(result.status, 2);
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1)
                << result.error;
        }
    }
    expectRefusal(runVarnelle({"colours", "check", "red", "000000"}), 2,
                  "red is no colour; write six or eight hexadecimal digits, like #FF8000");
}

TEST(ColoursCommand, ListsPresetsInColumns) {
    const TemporaryFile file(twoPresets);
    expectText(presets(file.name(), {}),
               "  1  Studio  #FFFFFFFF  #FF8000FF\n"
               "  2  日本 2  #000000FF  #FFFFFFFF  marker #00000040\n");
    expectText(presets(file.name(), {"--json"}), twoPresets);
    expectText(runVarnelle({"colours", "presets", "-"}, {.input = std::string(twoPresets)}),
               presets(file.name(), {}).out);
    const TemporaryFile none("[]");
    expectText(presets(none.name(), {}), "");
    expectText(presets(none.name(), {"--json"}), "[]\n");
}

TEST(ColoursCommand, ListsWhatIsStoredOutsideItsRangeToo) {
    const TemporaryFile file(R"([{"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","name":"Odd",)"
                             R"("text":{"red":-1,"green":1e300,"blue":0,"alpha":1},)"
                             R"("highlight":{"red":1,"green":2,"blue":0,"alpha":1}}])");
    expectText(presets(file.name(), {}), "  1  Odd  #00FF00FF  #FFFF00FF\n");
    EXPECT_EQ(presets(file.name(), {"rename", "1", "Even"}).status, 0);
    EXPECT_NE(readFile(file.name()).find(R"({"red":-1,"green":1e+300,"blue":0,"alpha":1})"),
              std::string::npos)
        << "stored numbers stay as they are";
}

TEST(ColoursCommand, KeepsPresetsInAFile) {
    const TemporaryFolder folder;
    const std::string file = folder.path() / "mine.json";
    expectText(presets(file, {"add", " Studio\n", "FFFFFF", "#ff8000"}),
               "  1  Studio  #FFFFFFFF  #FF8000FF\n");
    expectText(presets(file, {"add", "Studio", "000000", "FFFFFF", "--marker", "00C8FF80"}),
               "  2  Studio 2  #000000FF  #FFFFFFFF  marker #00C8FF80\n");
    expectText(presets(file, {"rename", "1", "Studio 2"}),
               "  1  Studio 2 2  #FFFFFFFF  #FF8000FF\n");
    expectText(presets(file, {"rename", "2", "Blue  room"}),
               "  2  Blue room  #000000FF  #FFFFFFFF  marker #00C8FF80\n");
    const auto kept =
        PrompterCore::fromJson<std::vector<PrompterCore::ColourPreset>>(readFile(file));
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_NE(kept[0].id, kept[1].id);
    for (const auto& preset : kept) {
        EXPECT_EQ(preset.id.text()[14], '4') << "a random UUID";
    }
    EXPECT_EQ(readFile(file), PrompterCore::toJson(kept) + "\n") << "in the stored form";
    expectText(presets(file, {"remove", "1"}), "  1  Studio 2 2  #FFFFFFFF  #FF8000FF\n");
    expectText(presets(file, {}), "  1  Blue room  #000000FF  #FFFFFFFF  marker #00C8FF80\n");
    expectText(presets(file, {"remove", "1"}),
               "  1  Blue room  #000000FF  #FFFFFFFF  marker #00C8FF80\n");
    EXPECT_EQ(readFile(file), "[]\n");
    EXPECT_EQ(folder.names(), Arguments{"mine.json"});
}

TEST(ColoursCommand, ChangesAreToldAsJsonToo) {
    const TemporaryFile file(twoPresets);
    const Arguments ways[] = {{"--json", "rename", "1", "Day"}, {"rename", "1", "Day", "--json"}};
    for (const Arguments& way : ways) {
        const CommandResult renamed = presets(file.name(), way);
        EXPECT_EQ(renamed.status, 0);
        EXPECT_EQ(Json::parse(renamed.out)["name"], "Day");
        EXPECT_EQ(Json::parse(renamed.out)["id"], "0F8FAD5B-D9CB-469F-A165-70867728950E");
    }
}

TEST(ColoursCommand, ABrokenFileIsSaidToBeNoneAndKept) {
    struct Case {
        std::string_view content, why;
    };
    const Case cases[] = {
        {"", ""},
        {"not JSON", ""},
        {"{}", ""},
        {R"([{"name":"x"}])", "\"[0].id\": missing"},
        {R"([{"id":"1"}])", "\"[0].id\": \"1\" where a UUID is required"},
    };
    std::vector<std::string> broken;
    for (const auto& [content, why] : cases)
        broken.emplace_back(content);
    broken.push_back(std::string(twoPresets) + "x");
    std::string twice(twoPresets);
    twice.replace(twice.find("950F"), 4, "950e");
    broken.push_back(twice);
    const Arguments verbs[] = {
        {}, {"--json"}, {"add", "x", "000000", "000000"}, {"rename", "1", "x"}, {"remove", "1"}};
    for (const std::string& content : broken) {
        SCOPED_TRACE(content);
        const TemporaryFile file(content);
        for (const Arguments& verb : verbs) {
            const CommandResult result = presets(file.name(), verb);
            EXPECT_EQ(result.status, 65);
            EXPECT_EQ(result.out, "");
            EXPECT_TRUE(
                result.error.starts_with("varnelle: " + file.name() + " is no list of presets: "))
                << result.error;
            EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1);
            EXPECT_EQ(readFile(file.name()), content);
        }
    }
    for (const auto& [content, why] : cases) {
        if (why.empty()) continue;
        const TemporaryFile file(content);
        expectRefusal(presets(file.name(), {}), 65,
                      file.name() + " is no list of presets: " + std::string(why));
    }
}

TEST(ColoursCommand, WhatMakesNoSenseChangesNothing) {
    const TemporaryFile file(twoPresets);
    const std::string has = ": there is no preset 3; it has presets 1 to 2";
    expectRefusal(presets(file.name(), {"remove", "3"}), 2, file.name() + has);
    expectRefusal(presets(file.name(), {"rename", "3", "x"}), 2, file.name() + has);
    expectRefusal(presets(file.name(), {"remove", "0"}), 2,
                  file.name() + ": there is no preset 0; it has presets 1 to 2");
    const std::string name = "a name is UTF-8 text that is not only white space";
    for (const char* blank : {"", " \n", "\u3000", "\xFF"}) {
        expectRefusal(presets(file.name(), {"rename", "1", blank}), 2, name);
        expectRefusal(presets(file.name(), {"add", blank, "000000", "000000"}), 2, name);
    }
    expectRefusal(presets("-", {"remove", "1"}), 2,
                  "presets: standard input has no place to write to");
    expectRefusal(presets("/no/such", {}), 66, "/no/such: No such file or directory");
    expectRefusal(presets("/no/such", {"remove", "1"}), 66, "/no/such: No such file or directory");
    const Arguments wrong[] = {{"remove"},        {"remove", "0"}, {"remove", "-1"},
                               {"remove", "one"}, {"rename", "1"}, {"add", "x"},
                               {"turn"}};
    for (const Arguments& verb : wrong) {
        SCOPED_TRACE(::testing::PrintToString(verb));
        EXPECT_EQ(presets(file.name(), verb).status, 2);
    }
    EXPECT_EQ(runVarnelle({"colours"}).status, 2);
    EXPECT_EQ(runVarnelle({"colours", "check", "FFFFFF"}).status, 2);
    EXPECT_EQ(readFile(file.name()), twoPresets);
}

TEST(ColoursCommand, ProcessesThatAddAtOnceLoseNothing) {
    const TemporaryFolder folder;
    const std::string file = folder.path() / "mine.json";
    std::vector<std::unique_ptr<RunningCommand>> writers;
    for (int writer = 0; writer < 8; ++writer) {
        writers.push_back(std::make_unique<RunningCommand>(
            varnelle({"colours", "presets", file, "add", "x", "000000", "FFFFFF"})));
    }
    for (const auto& writer : writers)
        EXPECT_EQ(writer->finish().status, 0);
    EXPECT_EQ(Json::parse(presets(file, {"--json"}).out).size(), 8U);
    EXPECT_EQ(folder.names(), Arguments{"mine.json"});
}

TEST(ColoursCommand, WhatCannotBeWrittenIsSaidAndTheFileIsKept) {
    const TemporaryFolder folder;
    const std::string file = folder.path() / "mine.json";
    std::filesystem::copy_file(TemporaryFile(twoPresets).name(), file);
    // A file may not grow at all: as on a disk that is full.
    const CommandResult full =
        runCommand({"sh", "-c", "trap '' XFSZ; ulimit -f 0; exec \"$@\"", "sh", VARNELLE_PROGRAM,
                    "colours", "presets", file, "rename", "1", "x"});
    EXPECT_EQ(full.status, 74);
    EXPECT_EQ(full.out, "");
    EXPECT_EQ(readFile(file), twoPresets);
    EXPECT_EQ(folder.names(), Arguments{"mine.json"});
    expectRefusal(presets(folder.path() / "no" / "mine.json", {"add", "x", "000000", "000000"}), 74,
                  (folder.path() / "no" / "mine.json").string() + ": No such file or directory");
}

// `script` is a terminal: what the command writes goes through it unchanged but for CR LF.
std::string onTerminal(const std::string& arguments, const Arguments& environment) {
    CommandResult result =
        runCommand({"script", "-qec", VARNELLE_PROGRAM " " + arguments, "/dev/null"},
                   {.environment = environment});
    EXPECT_EQ(result.status, 0) << result.error;
    std::erase(result.out, '\r');
    return result.out;
}

TEST(ColoursCommand, ATerminalShowsTheColoursUnlessTheyAreRefused) {
    const TemporaryFile file(twoPresets);
    const std::string list = "colours presets " + file.name();
    const Arguments all{"TERM=xterm-256color", "COLORTERM=truecolor", "NO_COLOR="};
    const Arguments refused{"TERM=xterm-256color", "COLORTERM=truecolor", "NO_COLOR=1"};
    EXPECT_EQ(onTerminal(list, all),
              "  1  Studio  \x1B[38;2;255;255;255;48;2;255;255;255m  \x1B[0m #FFFFFFFF"
              "  \x1B[38;2;255;128;0;48;2;255;128;0m  \x1B[0m #FF8000FF\n"
              "  2  日本 2  \x1B[38;2;0;0;0;48;2;0;0;0m  \x1B[0m #000000FF"
              "  \x1B[38;2;255;255;255;48;2;255;255;255m  \x1B[0m #FFFFFFFF"
              "  marker \x1B[38;2;0;0;0;48;2;0;0;0m  \x1B[0m #00000040\n");
    EXPECT_EQ(onTerminal(list, refused), presets(file.name(), {}).out);
    EXPECT_EQ(onTerminal(list + " --json", all), twoPresets);
    const std::string check = onTerminal("colours check FF8000 000000", all);
    EXPECT_NE(check.find("\x1B[38;2;255;128;0;48;2;0;0;0m  The words that you read aloud  \x1B[0m"),
              std::string::npos)
        << check;
    EXPECT_EQ(onTerminal("colours check FF8000 000000", refused).find('\x1B'), std::string::npos);
}

TEST(ColoursCommand, ATerminalIsSentNoMoreColoursThanItKnows) {
    const TemporaryFolder folder;
    const std::string name = folder.path() / "mine.json";
    expectText(presets(name, {"add", "Studio", "FFFFFF", "FF8000"}),
               "  1  Studio  #FFFFFFFF  #FF8000FF\n");
    const std::string list = "colours presets " + name;
    const std::string all =
        "  1  Studio  \x1B[38;2;255;255;255;48;2;255;255;255m  \x1B[0m #FFFFFFFF"
        "  \x1B[38;2;255;128;0;48;2;255;128;0m  \x1B[0m #FF8000FF\n";
    const std::string palette =
        "  1  Studio  \x1B[38;5;231;48;5;231m  \x1B[0m #FFFFFFFF"
        "  \x1B[38;5;208;48;5;208m  \x1B[0m #FF8000FF\n";
    const std::string none = "  1  Studio  #FFFFFFFF  #FF8000FF\n";
    struct Case {
        Arguments environment;
        std::string shown;
    };
    const Case cases[] = {
        {{"TERM=xterm-256color"}, palette},
        {{"TERM=linux", "COLORTERM="}, palette},
        {{"TERM=xterm-256color", "COLORTERM=yes"}, palette},
        {{"TERM=xterm", "COLORTERM=24bit"}, all},
        {{"TERM=xterm-direct"}, all},
        {{"TERM=dumb", "COLORTERM=truecolor"}, none},
        {{"TERM=", "COLORTERM=truecolor"}, none},
    };
    for (const auto& [environment, shown] : cases) {
        SCOPED_TRACE(::testing::PrintToString(environment));
        EXPECT_EQ(onTerminal(list, environment), shown);
    }
    EXPECT_NE(onTerminal("colours check FF8000 000000", {"TERM=xterm"})
                  .find("\x1B[38;5;208;48;5;16m  The words that you read aloud  \x1B[0m"),
              std::string::npos);
}

TEST(Swatch, ThePaletteIsAskedForTheNearestColour) {
    struct Case {
        const char* hex;
        std::int64_t index;
    };
    const Case cases[] = {
        {"000000", 16},  {"FFFFFF", 231}, {"FF0000", 196}, {"0000FF", 21},  {"5F87AF", 67},
        {"808080", 244}, {"080808", 232}, {"EEEEEE", 255}, {"FF8000", 208}, {"2F0000", 233},
        {"5F0000", 52},  {"767676", 243}, {"7F7F7F", 244}, {"FAFAFA", 231},
    };
    for (const auto& [hex, index] : cases)
        EXPECT_EQ(paletteIndex(*PrompterCore::RGBA::fromHex(hex)), index) << hex;
    EXPECT_EQ(paletteIndex(PrompterCore::RGBA::unclamped(-1e300, 2, 0.5, 1)), 48)
        << "as a screen would show it";
}

TEST(ColoursCommand, ANameSteersNoTerminal) {
    std::string steering(twoPresets);
    steering.replace(steering.find("Studio"), 6, "a\\u001b[2Jb");
    const TemporaryFile file(steering);
    EXPECT_EQ(onTerminal("colours presets " + file.name(), {"NO_COLOR=1"}).find('\x1B'),
              std::string::npos);
}

}  // namespace
}  // namespace Varnelle::Tests
