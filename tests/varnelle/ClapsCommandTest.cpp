// `varnelle claps`, run from outside on sound files made here.

#include <span>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sndfile.h>

#include "host/SoundFileSource.h"
#include "host/TextFile.h"
#include "tests/host/Sound.h"
#include "tests/host/TemporaryFile.h"
#include "tests/support/Sounds.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Json = nlohmann::ordered_json;
using PrompterCore::Tests::Sounds;

// The bytes of a WAV file of 32-bit floats, the same on each of its channels.
std::string wav(const Sounds& sounds, int channels = 1) {
    const TemporaryFile file("");
    SF_INFO info{};
    info.samplerate = static_cast<int>(sounds.rate());
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* out = sf_open(file.name().c_str(), SFM_WRITE, &info);
    for (const float sample : sounds.samples()) {
        const std::vector<float> frame(static_cast<std::size_t>(channels), sample);
        sf_writef_float(out, frame.data(), 1);
    }
    sf_close(out);
    return readFile(file.name());
}

CommandResult claps(const Sounds& sounds, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments{"claps", "-"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runVarnelle(arguments, {.input = wav(sounds)});
}

Sounds twoTakes(double rate) {
    Sounds sounds(rate, 9.0, 11);
    sounds.noise(0.001).clapAt(0.5).clapAt(0.8);                    // start
    sounds.clapAt(2.5);                                             // one is none
    sounds.thumpAt(3.5).thumpAt(3.8);                               //
    sounds.clapAt(4.5).clapAt(4.8).clapAt(5.1);                     // nor are three
    return sounds.clapAt(6.0).clapAt(6.3).clapAt(8.0).clapAt(8.4);  // stop; start
}

TEST(ClapsCommand, SaysWhatEachGestureWouldCommand) {
    EXPECT_EQ(claps(twoTakes(48'000)).out,
              "   0.500 s     0.800 s  2 claps    start\n"
              "   2.500 s     2.500 s  1 clap\n"
              "   4.500 s     5.100 s  3 claps\n"
              "   6.000 s     6.300 s  2 claps    stop\n"
              "   8.000 s     8.400 s  2 claps    start\n")
        << "the last gesture is over when the file is";
}

TEST(ClapsCommand, HearsEachFilesOwnRate) {
    for (const double rate : {8000.0, 16'000.0, 22'050.0, 44'100.0, 96'000.0}) {
        SCOPED_TRACE(rate);
        const CommandResult result = claps(twoTakes(rate), {"--json"});
        EXPECT_EQ(result.status, 0) << result.error;
        std::vector<Json> gestures;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) {
            gestures.push_back(Json::parse(line));
        }
        ASSERT_EQ(gestures.size(), 5U) << result.out;
        EXPECT_EQ(gestures[0]["count"], 2);
        EXPECT_NEAR(gestures[0]["firstClap"].get<double>(), 0.5, 0.003);
        EXPECT_NEAR(gestures[0]["lastClap"].get<double>(), 0.8, 0.003);
        EXPECT_EQ(gestures[0]["standsOut"], true);
        EXPECT_EQ(gestures[0]["command"], "start");
        EXPECT_EQ(gestures[1]["command"], nullptr);
        EXPECT_EQ(gestures[3]["command"], "stop");
        EXPECT_EQ(gestures[4]["command"], "start");
    }
}

TEST(ClapsCommand, AFileIsHeardLikeStandardInput) {
    const TemporaryFile stereo(wav(twoTakes(44'100), 2));
    EXPECT_EQ(runVarnelle({"claps", stereo.name()}).out, claps(twoTakes(44'100)).out);
}

// The sample in a room that is not silent: made by a machine, it has no room of its own, and what
// rises out of nothing rises like a clap.
Sounds speechInARoom(double before, double after, double room = 0.005) {
    SoundFileSource file(sampleSound);
    const std::vector<float> speech = restOf(file);
    const double length = static_cast<double>(speech.size()) / file.sampleRate();
    Sounds sounds(file.sampleRate(), before + length + after, 4);
    sounds.noise(room).mixAt(before, speech);
    return sounds;
}

TEST(ClapsCommand, ASpeechInARoomGivesNoCommand) {
    for (const double room : {0.002, 0.005, 0.02}) {
        SCOPED_TRACE(room);
        const CommandResult result = claps(speechInARoom(0.0, 1.0, room));
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_EQ(result.out.find("start"), std::string::npos) << result.out;
    }
}

TEST(ClapsCommand, ClapsAroundASpeechStartAndStop) {
    Sounds sounds = speechInARoom(3.0, 3.0);
    const double end = static_cast<double>(sounds.samples().size()) / sounds.rate();
    sounds.clapAt(1.0).clapAt(1.3).clapAt(end - 2.0).clapAt(end - 1.65);
    const std::string out = claps(sounds).out;
    EXPECT_TRUE(out.starts_with("   1.000 s     1.300 s  2 claps    start\n")) << out;
    EXPECT_TRUE(out.ends_with("2 claps    stop\n")) << out;
    EXPECT_EQ(out.find("start"), out.rfind("start")) << out;
}

// A consonant pair of the sample is heard as two claps, the vowels beside it are louder.
TEST(ClapsCommand, SaysOfWhichClapsASessionWouldNotObeyAndWhy) {
    const std::string out = runVarnelle({"claps", sampleSound}).out;
    EXPECT_TRUE(
        out.starts_with("   8.520 s     8.867 s  2 claps    not obeyed: softer than the "
                        "sound around them\n"))
        << out;
    EXPECT_EQ(out.find("start"), std::string::npos) << out;
    const std::string lines = runVarnelle({"claps", sampleSound, "--json"}).out;
    const Json first = Json::parse(lines.substr(0, lines.find('\n')));
    EXPECT_EQ(first["count"], 2);
    EXPECT_EQ(first["standsOut"], false);
    EXPECT_EQ(first["command"], nullptr);
}

TEST(ClapsCommand, ClapsThatAreNotObeyedDoNotChangeWhatTheNextOnesCommand) {
    SoundFileSource file(sampleSound);
    const std::vector<float> speech = restOf(file);
    Sounds sounds(file.sampleRate(), 16.0, 4);
    sounds.mixAt(0.0, std::span(speech).first(static_cast<std::size_t>(10 * file.sampleRate())));
    sounds.clapAt(12.0).clapAt(12.3);
    const std::string out = claps(sounds).out;
    EXPECT_NE(out.find("not obeyed"), std::string::npos) << out;
    EXPECT_TRUE(out.ends_with("  12.000 s    12.300 s  2 claps    start\n")) << out;
}

TEST(ClapsCommand, SilenceHasNoClaps) {
    for (const double seconds : {2.0, 0.0}) {
        const CommandResult result = claps(Sounds(16'000, seconds, 1));
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.error, "varnelle: standard input: no claps in its " +
                                    std::to_string(static_cast<int>(seconds)) + " seconds\n");
        EXPECT_EQ(result.status, 0);
    }
    expectText(claps(Sounds(16'000, 2.0, 1), {"--json"}), "");
}

TEST(ClapsCommand, WhatIsNoSoundIsRefused) {
    EXPECT_EQ(runVarnelle({"claps", "/no/such/file"}).status, 66);
    EXPECT_EQ(runVarnelle({"claps", sampleScript}).status, 65);
    EXPECT_EQ(runVarnelle({"claps"}).status, 2);
    std::string cut = wav(twoTakes(16'000));
    cut.resize(cut.size() / 2);
    const CommandResult result = runVarnelle({"claps", "-"}, {.input = cut});
    EXPECT_EQ(result.status, 65);
    EXPECT_NE(result.out.find("start"), std::string::npos) << "what is there is heard";
    EXPECT_NE(result.error.find("breaks off"), std::string::npos) << result.error;
}

}  // namespace
}  // namespace Varnelle::Tests
