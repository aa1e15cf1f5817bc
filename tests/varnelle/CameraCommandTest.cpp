// `varnelle camera` and `varnelle camera preview`, run from outside.

#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/TextFile.h"
#include "tests/host/TemporaryFile.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Json = nlohmann::ordered_json;

const std::string formats =
    R"([{"width": 1280, "height": 720, "frameRates": [[1, 60]]},
        {"width": 1920, "height": 1080, "frameRates": [[1, 30], [60, 60]]},
        {"width": 1920, "height": 1440, "frameRates": [[29.97, 29.97]]},
        {"width": 4096, "height": 2160, "frameRates": [[15, 15]]}])";

CommandResult camera(std::vector<std::string> arguments, const std::string& input = formats) {
    arguments.insert(arguments.begin(), {"camera", "--formats", "-"});
    return runVarnelle(std::move(arguments), {.input = input});
}

TEST(CameraCommand, ShowsTheMenuThatAHostWouldShow) {
    expectText(camera({}),
               "  Resolution    Camera\n"
               "* 1920 \u00D7 1080   1920 \u00D7 1440\n"
               "  1280 \u00D7 720    1280 \u00D7 720\n"
               "  Frame rate\n"
               "* 30\n");
}

TEST(CameraCommand, PrefersWhatWasChosenBefore) {
    EXPECT_EQ(camera({"--framing", "portrait", "--prefer", "1920x1080", "--prefer-rate", "29"}).out,
              "  Resolution   Camera\n"
              "  810 \u00D7 1440   1920 \u00D7 1440\n"
              "* 608 \u00D7 1080   1920 \u00D7 1080\n"
              "  406 \u00D7 720    1280 \u00D7 720\n"
              "  Frame rate\n"
              "  60\n"
              "  30\n"
              "  25\n"
              "  24\n"
              "* 29 (not in the menu)\n");
    EXPECT_EQ(camera({"--rotation", "90", "--prefer", "640x480"}).out,
              "  Resolution   Camera\n"
              "  1440 \u00D7 810   1920 \u00D7 1440\n"
              "  1080 \u00D7 608   1920 \u00D7 1080\n"
              "* 720 \u00D7 406    1280 \u00D7 720\n"
              "  Frame rate\n"
              "  60\n"
              "  50\n"
              "* 30\n"
              "  25\n"
              "  24\n");
}

TEST(CameraCommand, JsonSaysWhatIsChosenAndWhichEntryStandsForIt) {
    // 1920x1080 is no entry of its own in landscape: the larger picture is cropped to the same.
    const CommandResult result = camera({"--prefer", "1920x1080", "--json"});
    EXPECT_EQ(result.status, 0) << result.error;
    const Json small{{"width", 1280}, {"height", 720}}, full{{"width", 1920}, {"height", 1080}};
    const Json classic{{"width", 1920}, {"height", 1440}};
    const Json expected{{"framing", "landscape"},
                        {"rotation", 0},
                        {"resolutions", Json::array({{{"id", "1920x1440"},
                                                      {"title", "1920 \u00D7 1080"},
                                                      {"sensor", classic},
                                                      {"output", full}},
                                                     {{"id", "1280x720"},
                                                      {"title", "1280 \u00D7 720"},
                                                      {"sensor", small},
                                                      {"output", small}}})},
                        {"sensor", full},
                        {"resolution", "1920x1440"},
                        {"frameRates", {60, 30, 25, 24}},
                        {"frameRate", 30}};
    EXPECT_EQ(Json::parse(result.out).dump(), expected.dump());
}

TEST(CameraCommand, NoFormatsAreNoFailure) {
    EXPECT_EQ(camera({}, "[]").out, "The camera has no formats.\n");
    const CommandResult result = camera({"--json"}, "[]");
    EXPECT_EQ(result.out, R"({"framing":"landscape","rotation":0,"resolutions":[],"sensor":null,)"
                          R"("resolution":null,"frameRates":[],"frameRate":null})"
                          "\n");
    EXPECT_EQ(result.status, 0);
}

TEST(CameraCommand, RefusesWhatItCannotUseInOneSentence) {
    const TemporaryFile file(R"([{"width":1,"height":1,"frameRates":[[1,30]]},{"width":1}])");
    const CommandResult bad = runVarnelle({"camera", "--formats", file.name()});
    expectRefusal(bad, 65, file.name() + ": format 2: \"height\": missing");
    EXPECT_EQ(camera({}, "[").status, 65);
    EXPECT_EQ(camera({}, "[").error.rfind("varnelle: standard input: ", 0), 0U);
    EXPECT_EQ(runVarnelle({"camera", "--formats", "/no/such/file"}).status, 66);
    for (const std::vector<std::string>& wrong :
         std::vector<std::vector<std::string>>{{"--framing", "square"},
                                               {"--framing", "Portrait"},
                                               {"--rotation", "45"},
                                               {"--rotation", "right"},
                                               {"--prefer", "1920"},
                                               {"--prefer", "1920 \u00D7 1080"},
                                               {"--prefer-rate", "0"},
                                               {"--prefer-rate", "fast"}}) {
        const CommandResult result = camera(wrong);
        EXPECT_EQ(result.status, 2) << wrong[1];
        EXPECT_EQ(result.error.find('\n'), result.error.size() - 1) << result.error;
    }
    EXPECT_EQ(runVarnelle({"camera"}).status, 2);
}

TEST(CameraPreviewCommand, DrawsEachPartWithItsNumbers) {
    const CommandResult result =
        runVarnelle({"camera", "preview", "--framing", "portrait", "--pane", "800x600"});
    EXPECT_EQ(result.status, 0) << result.error;
    for (const char* const part :
         {"<svg ", "1065.79 \u00D7 599.51 at (-132.89, 0): all that the sensor sees<",
          "1920 \u00D7 1080 pixels<", "337.5 \u00D7 600 at (231.25, 0): what is recorded",
          "800 \u00D7 600 points: where", "728.29 \u00D7 0: how far", "(0.5, 0.32) of the window",
          "</svg>\n"}) {
        EXPECT_NE(result.out.find(part), std::string::npos) << part << "\n" << result.out;
    }
}

TEST(CameraPreviewCommand, MirrorsAndSlides) {
    const auto draw = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"camera", "preview", "--framing", "portrait"});
        return runVarnelle(std::move(arguments)).out;
    };
    const std::string left = draw({"--offset", "-1,0"});
    EXPECT_NE(left.find("at (231.25, 0): all that"), std::string::npos) << left;
    const std::string mirrored = draw({"--offset", "-1,0", "--mirrored"});
    EXPECT_NE(mirrored.find("at (-497.04, 0): all that"), std::string::npos) << mirrored;
    EXPECT_NE(mirrored.find("1080 pixels, mirrored<"), std::string::npos) << mirrored;
}

TEST(CameraPreviewCommand, OptionsOfTheMenuAreNotPassedOverSilently) {
    const CommandResult result = runVarnelle({"camera", "--framing", "portrait", "preview"});
    expectRefusal(result, 2, "--framing: is not for preview; the options of that stand behind it");
    EXPECT_EQ(runVarnelle({"camera", "--formats", "-", "preview"}).status, 2);
}

TEST(CameraPreviewCommand, StandardOutputMayBeCalledByItsName) {
    expectText(runVarnelle({"camera", "preview", "-o", "/dev/stdout"}),
               runVarnelle({"camera", "preview", "-o", "-"}).out);
}

// Beside the drawing there is no place for it: the picture would end before the number does.
TEST(CameraPreviewCommand, ANumberBesideTheDrawingStandsAlongItsArrow) {
    const CommandResult result =
        runVarnelle({"camera", "preview", "--sensor", "1920x1440", "--offset", "0,1"});
    EXPECT_NE(result.out.find("rotate(-90)\" y=\"19\" text-anchor=\"middle\">150<"),
              std::string::npos)
        << result.out;
}

// Written anew by: varnelle camera preview --framing portrait -o docs/camera-preview.svg
TEST(CameraPreviewCommand, TheDocumentsShowWhatItDraws) {
    EXPECT_EQ(runVarnelle({"camera", "preview", "--framing", "portrait"}).out,
              readFile(VARNELLE_SAMPLE_DIRECTORY "/../../docs/camera-preview.svg"));
}

TEST(CameraPreviewCommand, ReplacesTheFileAsAWhole) {
    const TemporaryFile file("what was there before");
    const std::vector<std::string> arguments{"camera", "preview", "--sensor", "1920x1440"};
    std::vector<std::string> toFile = arguments;
    toFile.insert(toFile.end(), {"-o", file.name()});
    const CommandResult written = runVarnelle(toFile);
    EXPECT_EQ(written.status, 0) << written.error;
    EXPECT_EQ(written.out, "");
    EXPECT_EQ(runCommand({"cat", file.name()}).out, runVarnelle(arguments).out);
    const CommandResult refused = runVarnelle({"camera", "preview", "-o", "/no/such/folder/p.svg"});
    EXPECT_EQ(refused.status, 74);
    EXPECT_NE(refused.error.find("/no/such/folder/p.svg"), std::string::npos);
}

TEST(CameraPreviewCommand, RefusesWhatIsNoSizeOrPlace) {
    for (const std::vector<std::string>& wrong :
         std::vector<std::vector<std::string>>{{"--sensor", "0x0"},
                                               {"--pane", "800"},
                                               {"--pane", "100001x1"},
                                               {"--offset", "1"},
                                               {"--offset", "1,"},
                                               {"--offset", "1,2,3"},
                                               {"--offset", "nan,0"},
                                               {"--offset", "0,-1.01"},
                                               {"--offset", "0,1e400"},
                                               {"--marker", "left,top"},
                                               {"--marker", "-0.1,0"},
                                               {"--marker", "0,inf"}}) {
        std::vector<std::string> arguments{"camera", "preview"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        const CommandResult result = runVarnelle(arguments);
        EXPECT_EQ(result.status, 2) << wrong[0] << ' ' << wrong[1];
        EXPECT_NE(result.error.find(wrong[0]), std::string::npos) << result.error;
    }
}

}  // namespace
}  // namespace Varnelle::Tests
