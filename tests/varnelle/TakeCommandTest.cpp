#include <chrono>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sndfile.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "apps/varnelle/TakeCommand.h"
#include "tests/host/DecodedSound.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/support/Sounds.h"
#include "tests/varnelle/RunCommand.h"
#include "tests/varnelle/SoundServer.h"

namespace Varnelle {
namespace {

using namespace Tests;  // NOLINT
using Json = nlohmann::json;
using Names = std::vector<std::string>;
using PrompterCore::Tests::Sounds;

constexpr double rate = 16000;

const std::vector<float>& spokenSample() {
    static const std::vector<float> samples = [] {
        SF_INFO info{};
        SNDFILE* const file = sf_open(sampleSound.c_str(), SFM_READ, &info);
        std::vector<float> all(static_cast<std::size_t>(info.frames));
        EXPECT_EQ(sf_readf_float(file, all.data(), info.frames), info.frames);
        EXPECT_EQ(info.samplerate, static_cast<int>(rate));
        sf_close(file);
        return all;
    }();
    return samples;
}

std::span<const float> spoken(double from, double seconds) {
    return std::span(spokenSample())
        .subspan(static_cast<std::size_t>(from * rate), static_cast<std::size_t>(seconds * rate));
}

double sampleSeconds() { return static_cast<double>(spokenSample().size()) / rate; }

// A recorded session, and a folder for its takes. The recording ended on 5 March 2025 at 14:07:09
// in Berlin.
class Recording {
public:
    explicit Recording(const Sounds& sounds) {
        SF_INFO info{};
        info.samplerate = static_cast<int>(sounds.rate());
        info.channels = 1;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* const file = sf_open(sound().c_str(), SFM_WRITE, &info);
        sf_writef_float(file, sounds.samples().data(),
                        static_cast<sf_count_t>(sounds.samples().size()));
        sf_close(file);
        const timespec times[2] = {{1741180029, 0}, {1741180029, 0}};
        EXPECT_EQ(utimensat(AT_FDCWD, sound().c_str(), times, 0), 0);
        std::filesystem::create_directory(takes());
    }

    std::string sound() const { return folder_.path() / "session.wav"; }
    std::filesystem::path takes() const { return folder_.path() / "Takes"; }
    Names names() const {
        Names names;
        for (const auto& entry : std::filesystem::directory_iterator(takes())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    std::vector<std::string> arguments(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> all{"take", sampleScript,     "--audio",     sound(),
                                     "--to", takes().string(), "--time-zone", "Europe/Berlin"};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    CommandResult run(const std::vector<std::string>& more = {}) const {
        return runVarnelle(arguments(more));
    }

private:
    TemporaryFolder folder_;
};

Sounds room(double seconds) {
    Sounds sounds(rate, seconds, 7);
    sounds.noise(0.0005);
    return sounds;
}

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

// The events of one kind among JSON Lines.
std::vector<Json> eventsOf(const CommandResult& result, std::string_view kind) {
    std::vector<Json> events;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
        Json event = Json::parse(line);
        if (event["event"] == kind) events.push_back(std::move(event));
    }
    return events;
}

double loudest(std::span<const float> samples) {
    float most = 0;
    for (const float sample : samples) {
        most = std::max(most, std::abs(sample));
    }
    return static_cast<double>(most);
}

TEST(TakeCommand, OutOfASessionComesTheTakeBetweenTheClapsWithItsChapters) {
    const double length = sampleSeconds();
    Recording recording(room(length + 7.5)
                            .clapAt(1)
                            .clapAt(1.3)
                            .mixAt(2.5, spokenSample())
                            .clapAt(length + 4)
                            .clapAt(length + 4.35));
    const CommandResult result = recording.run({"--json"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(result.error, "");

    // It began 1.55 s into 70.05 s of sound that ended at 14:07:09.
    const std::string name = "sample 2025-03-05 at 14.06.00";
    ASSERT_EQ(recording.names(),
              (Names{name + ".chapters.txt", name + ".m4a", name + ".marks.json"}));

    const DecodedSound sound = decodedSound(recording.takes() / (name + ".m4a"));
    EXPECT_NEAR(sound.duration, length + 4 - 0.05 - 1.55, 0.01);
    EXPECT_NEAR(static_cast<double>(sound.samples.size()) / rate, sound.duration, 1024 / rate);
    EXPECT_LT(loudest(std::span(sound.samples).first(8000)), 0.01) << "no clap at its beginning";
    EXPECT_LT(loudest(std::span(sound.samples).last(8000)), 0.01) << "none at its end";

    const Json marks = Json::parse(contentOf(recording.takes() / (name + ".marks.json")));
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(marks[0], (Json{{"title", "The Light"}, {"seconds", 0.0}}));
    EXPECT_EQ(marks[1]["title"], "The Keeper");
    const double keeper = marks[1]["seconds"];
    EXPECT_NEAR(keeper, 34.3, 1.5);
    EXPECT_EQ(contentOf(recording.takes() / (name + ".chapters.txt")),
              "0:00 The Light\n0:" + std::to_string(static_cast<int>(keeper)) + " The Keeper\n");

    const Json saved = eventsOf(result, "saved").at(0);
    EXPECT_EQ(saved["file"], (recording.takes() / (name + ".m4a")).string());
    EXPECT_EQ(saved["marks"], (recording.takes() / (name + ".marks.json")).string());
    EXPECT_EQ(saved["chapters"], (recording.takes() / (name + ".chapters.txt")).string());
    EXPECT_NEAR(saved["seconds"], sound.duration, 0.001);
    EXPECT_EQ(saved["trouble"], Json());
    EXPECT_EQ(eventsOf(result, "chapter").size(), 2U);
    const Json end = eventsOf(result, "end").at(0);
    EXPECT_EQ(end["takes"], 1);
    EXPECT_EQ(end["interrupted"], false);
    EXPECT_NEAR(end["time"], length + 7.5, 0.001);
}

TEST(TakeCommand, ACountdownIsNoPartOfTheTake) {
    Recording recording(room(16).clapAt(1).clapAt(1.3).clapAt(12).clapAt(12.3));
    const CommandResult result = recording.run({"--countdown", "3", "--json"});
    EXPECT_EQ(result.status, 0);
    const double began = eventsOf(result, "recording").at(0)["time"];
    EXPECT_EQ(eventsOf(result, "countdown").at(0)["seconds"], 3);
    EXPECT_NEAR(began, 1.3 + 0.66 + 3, 0.03);
    EXPECT_NEAR(eventsOf(result, "saved").at(0)["seconds"], 11.95 - began, 0.01);
}

TEST(TakeCommand, TwoTakesOfOneSessionAreTwoFiles) {
    Recording recording(room(22)
                            .clapAt(1)
                            .clapAt(1.3)
                            .mixAt(2, spoken(0, 5))
                            .clapAt(8)
                            .clapAt(8.3)
                            .clapAt(11)
                            .clapAt(11.3)
                            .mixAt(12, spoken(0, 6))
                            .clapAt(19)
                            .clapAt(19.3));
    const CommandResult result = recording.run();
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(
        recording.names(),
        (Names{"sample 2025-03-05 at 14.06.48.chapters.txt", "sample 2025-03-05 at 14.06.48.m4a",
               "sample 2025-03-05 at 14.06.48.marks.json",
               "sample 2025-03-05 at 14.06.58.chapters.txt", "sample 2025-03-05 at 14.06.58.m4a",
               "sample 2025-03-05 at 14.06.58.marks.json"}));
    EXPECT_NE(result.out.find("recording   take 2"), std::string::npos) << result.out;
}

TEST(TakeCommand, TheSameSessionAgainOverwritesNothing) {
    Recording recording(room(8).clapAt(1).clapAt(1.3).clapAt(5).clapAt(5.3));
    EXPECT_EQ(recording.run().status, 0);
    const std::string first = contentOf(recording.takes() / "sample 2025-03-05 at 14.07.02.m4a");
    EXPECT_EQ(recording.run().status, 0);
    EXPECT_EQ(
        recording.names(),
        (Names{"sample 2025-03-05 at 14.07.02 2.chapters.txt",
               "sample 2025-03-05 at 14.07.02 2.m4a", "sample 2025-03-05 at 14.07.02 2.marks.json",
               "sample 2025-03-05 at 14.07.02.chapters.txt", "sample 2025-03-05 at 14.07.02.m4a",
               "sample 2025-03-05 at 14.07.02.marks.json"}));
    EXPECT_EQ(contentOf(recording.takes() / "sample 2025-03-05 at 14.07.02.m4a"), first);
}

TEST(TakeCommand, TheEndOfTheSoundEndsATake) {
    Recording recording(room(8).clapAt(1).clapAt(1.3).mixAt(2, spoken(0, 6)));
    const CommandResult result = recording.run({"--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NEAR(eventsOf(result, "saved").at(0)["seconds"], 8 - 1.55, 0.01);
}

TEST(TakeCommand, ClapsAtTheVeryEndEndATakeBeforeThem) {
    Recording recording(room(6).clapAt(1).clapAt(1.3).clapAt(5.5).clapAt(5.8));
    const CommandResult result = recording.run({"--json"});
    EXPECT_NEAR(eventsOf(result, "saved").at(0)["seconds"], 5.45 - 1.55, 0.01);
}

TEST(TakeCommand, WithoutClapsTheWholeSoundIsATake) {
    Recording recording(room(6).clapAt(1).clapAt(1.3).clapAt(4).clapAt(4.3));
    const CommandResult result = recording.run({"--no-claps", "--json"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(eventsOf(result, "recording").at(0)["time"], 0);
    EXPECT_NEAR(eventsOf(result, "saved").at(0)["seconds"], 6, 0.001);
}

TEST(TakeCommand, ClapsInTheCountdownCallItOff) {
    Recording recording(room(10).clapAt(1).clapAt(1.3).clapAt(3).clapAt(3.3));
    const CommandResult result = recording.run({"--countdown", "5", "--json"});
    EXPECT_EQ(eventsOf(result, "calledOff").size(), 1U);
    EXPECT_EQ(result.status, 65) << "and so there is no take";
    EXPECT_EQ(recording.names(), Names{});
}

TEST(TakeCommand, ASessionWithoutClapsSaysThatThereIsNoTake) {
    Recording recording(room(62).mixAt(0.5, spoken(0, 61)));
    const CommandResult result = recording.run();
    EXPECT_EQ(result.status, 65) << "consonants are no claps";
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error,
              "varnelle: " + recording.sound() +
                  ": no take; nowhere in its 62 seconds are two claps to begin one\n");
    EXPECT_EQ(recording.names(), Names{});
}

TEST(TakeCommand, SaysBeforeTheSessionThatSpaceIsScarce) {
    struct Case {
        const char* what;
        std::optional<std::int64_t> bytes;  // 1 920 000 are a minute
        const char* room;
    };
    const Case cases[] = {
        {"half an hour is enough", 57'600'000, nullptr},
        {"a byte less is not", 57'599'999, "about 29 minutes"},
        {"two minutes", 3'840'000, "about 2 minutes"},
        {"one", 1'920'000, "about a minute"},
        {"hardly anything", 1'919'999, "less than a minute"},
        {"nothing", 0, "less than a minute"},
        {"more than any disk has", std::numeric_limits<std::int64_t>::max(), nullptr},
        {"nobody knows", std::nullopt, nullptr},
    };
    const Recording silence(room(1));
    TakeArguments arguments;
    arguments.script = sampleScript;
    arguments.audio = silence.sound();
    arguments.folder = silence.takes();
    for (const auto& [what, bytes, scarce] : cases) {
        SCOPED_TRACE(what);
        const auto freeBytes = [&, left = bytes](const std::filesystem::path& folder) {
            EXPECT_EQ(folder, silence.takes());
            return left;
        };
        ::testing::internal::CaptureStderr();
        const ExitStatus status = takeCommand(arguments, {.speed = std::nullopt}, freeBytes);
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(status, ExitStatus::badData) << "nobody clapped; it was listened all the same";
        const std::string warning = "varnelle: " + silence.takes().string() + ": room for ";
        if (scarce != nullptr) {
            EXPECT_TRUE(said.starts_with(warning + scarce + " of takes\n")) << said;
        } else {
            EXPECT_EQ(said.find(warning), std::string::npos) << said;
        }
    }
}

TEST(TakeCommand, ASecondTakeBeginsAtTheScriptsStartUnlessItGoesOn) {
    Recording recording(room(50)
                            .clapAt(1)
                            .clapAt(1.3)
                            .mixAt(2, spoken(0, 36))
                            .clapAt(40)
                            .clapAt(40.3)
                            .clapAt(43)
                            .clapAt(43.3));
    const auto firstChapterOfTheSecondTake = [](const CommandResult& result) {
        for (const Json& event : eventsOf(result, "chapter")) {
            if (event["take"] == 2) return event["title"].get<std::string>();
        }
        return std::string("none");
    };
    EXPECT_EQ(firstChapterOfTheSecondTake(recording.run({"--json"})), "The Light");
    EXPECT_EQ(firstChapterOfTheSecondTake(recording.run({"--json", "--continue"})), "The Keeper");
}

TEST(TakeCommand, AKilledSessionKeepsItsTakesAndTheNextOneSavesTheRest) {
    Recording recording(
        room(60).clapAt(1).clapAt(1.3).clapAt(3).clapAt(3.3).clapAt(5).clapAt(5.3).mixAt(
            6, spoken(0, 50)));
    {
        RunningCommand command(varnelle(recording.arguments({"--json", "--speed", "20"})));
        ASSERT_TRUE(command.readUntil("The Keeper"));
        command.send(SIGKILL);
        EXPECT_EQ(command.finish().status, 137);
    }
    EXPECT_EQ(recording.names(), (Names{"sample 2025-03-05 at 14.06.10.chapters.txt",
                                        "sample 2025-03-05 at 14.06.10.m4a",
                                        "sample 2025-03-05 at 14.06.10.marks.json",
                                        "sample 2025-03-05 at 14.06.14.unfinished.aac"}));
    EXPECT_NEAR(decodedSound(recording.takes() / "sample 2025-03-05 at 14.06.10.m4a").duration,
                2.95 - 1.55, 0.01);

    std::filesystem::rename(recording.takes() / "sample 2025-03-05 at 14.06.10.m4a",
                            recording.takes() / "kept.m4a");
    Recording silence(room(1));
    const CommandResult result = runVarnelle({"take", sampleScript, "--audio", silence.sound(),
                                              "--to", recording.takes().string(), "--json"});
    EXPECT_EQ(result.status, 65);
    const Json recovered = eventsOf(result, "recovered").at(0);
    EXPECT_EQ(recovered["file"],
              (recording.takes() / "sample 2025-03-05 at 14.06.14.m4a").string());
    EXPECT_GT(recovered["seconds"], 30);
    EXPECT_NEAR(decodedSound(recording.takes() / "sample 2025-03-05 at 14.06.14.m4a").duration,
                recovered["seconds"], 0.001);
}

TEST(TakeCommand, AnInterruptKeepsTheRunningTake) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Recording recording(room(60).clapAt(1).clapAt(1.3).mixAt(2, spoken(0, 50)));
        RunningCommand command(varnelle(recording.arguments({"--json", "--speed", "4"})));
        ASSERT_TRUE(command.readUntil("recording"));
        command.send(signal);
        const CommandResult result = command.finish();
        EXPECT_EQ(result.status, 130);
        EXPECT_EQ(eventsOf(result, "saved").size(), 1U);
        EXPECT_EQ(eventsOf(result, "end").at(0)["interrupted"], true);
        EXPECT_EQ(recording.names().size(), 3U);
    }
}

TEST(TakeCommand, WhatEndsASessionLeavesItsTakeAndSaysWhere) {
    Recording recording(room(60).mixAt(1, spoken(0, 55)));
    RunningCommand command(varnelle(recording.arguments({"--no-claps", "--json", "--speed", "1"})));
    ASSERT_TRUE(command.readUntil("recording"));
    // One recogniser after the other is ended, be it ready yet or not.
    const auto isGivenUp = [&] {
        return command.error().find("it is given up") != std::string::npos ||
               command.error().find("cannot be started") != std::string::npos;
    };
    for (int i = 0; i < 300 && !isGivenUp(); ++i) {
        if (const auto recogniser = childOf(command.processId())) kill(*recogniser, SIGKILL);
        command.isSilent();
    }
    EXPECT_TRUE(isGivenUp()) << command.error();
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 69);
    ASSERT_EQ(eventsOf(result, "saved").size(), 1U) << result.out;
    const Json saved = eventsOf(result, "saved").at(0);
    EXPECT_EQ(eventsOf(result, "end").size(), 1U);
    EXPECT_NEAR(decodedSound(std::string(saved["file"])).duration, saved["seconds"], 0.001);
    EXPECT_EQ(recording.names().size(), 3U);
}

TEST(TakeCommand, ASessionWithoutAnySoundSaysWhyThereIsNoTake) {
    const Recording recording(Sounds(rate, 0, 1));
    const std::string none = "varnelle: " + recording.sound() + ": no take; ";
    const CommandResult atOnce = recording.run({"--no-claps"});
    EXPECT_EQ(atOnce.status, 65);
    EXPECT_EQ(atOnce.error, none + "there is no sound in it\n");
    EXPECT_EQ(recording.run().error,
              none + "nowhere in its 0 seconds are two claps to begin one\n");
    EXPECT_EQ(recording.names(), Names{});
}

TEST(TakeCommand, UnderNohupATerminalMayBeClosed) {
    Recording recording(
        room(30).clapAt(1).clapAt(1.3).mixAt(2, spoken(0, 20)).clapAt(25).clapAt(25.3));
    std::vector<std::string> command{"nohup"};
    for (const std::string& argument : varnelle(recording.arguments({"--json", "--speed", "20"}))) {
        command.push_back(argument);
    }
    RunningCommand session(command);
    ASSERT_TRUE(session.readUntil("recording"));
    session.send(SIGHUP);
    const CommandResult result = session.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(eventsOf(result, "end").at(0)["interrupted"], false);
}

TEST(TakeCommand, WhenNobodyReadsTheOutputAnyMoreTheTakeIsSavedAllTheSame) {
    Recording recording(
        room(30).clapAt(1).clapAt(1.3).mixAt(2, spoken(0, 20)).clapAt(25).clapAt(25.3));
    RunningCommand command(varnelle(recording.arguments({"--json", "--speed", "20"})));
    ASSERT_TRUE(command.readUntil("recording"));
    command.closeOutput();
    static_cast<void>(command.finish());
    EXPECT_EQ(recording.names().size(), 3U);
}

TEST(TakeCommand, AFullDiskEndsTheSessionAndKeepsWhatThereIs) {
    Recording recording(
        room(60).clapAt(1).clapAt(1.3).clapAt(4).clapAt(4.3).clapAt(7).clapAt(7.3).mixAt(
            9, spoken(0, 50)));
    std::vector<std::string> command{"prlimit", "--fsize=200000"};
    for (const std::string& argument : varnelle(recording.arguments({"--json"}))) {
        command.push_back(argument);
    }
    const CommandResult result = runCommand(command);
    EXPECT_EQ(result.status, 74);
    EXPECT_NE(result.error.find("File too large; the take ends after"), std::string::npos)
        << result.error;
    const std::vector<Json> saved = eventsOf(result, "saved");
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0]["trouble"], Json());
    EXPECT_NE(saved[1]["trouble"], Json());
    const double seconds = saved[1]["seconds"];
    EXPECT_GT(seconds, 5);
    EXPECT_LT(seconds, 50);
    const std::string file = saved[1]["file"];
    EXPECT_NEAR(static_cast<double>(decodedSound(file).samples.size()) / rate, seconds, 0.2);
}

TEST(TakeCommand, ADiskWithoutAnyRoomHoldsNoTake) {
    Recording recording(room(6).mixAt(0, spoken(0, 6)));
    RunningCommand command(varnelle(
        recording.arguments({"--no-claps", "--countdown", "3", "--speed", "1", "--json"})));
    ASSERT_TRUE(command.readUntil("countdown"));
    // The recogniser has its files by now.
    const rlimit none{.rlim_cur = 0, .rlim_max = 0};
    ASSERT_EQ(prlimit(command.processId(), RLIMIT_FSIZE, &none, nullptr), 0);
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 74);
    EXPECT_NE(result.error.find("File too large; the take ends after 0 seconds"), std::string::npos)
        << result.error;
    EXPECT_EQ(eventsOf(result, "saved").size(), 0U);
    EXPECT_EQ(eventsOf(result, "calledOff").size(), 1U);
    EXPECT_EQ(eventsOf(result, "end").at(0)["takes"], 0);
    EXPECT_EQ(recording.names(), Names{});
}

TEST(TakeCommand, AFolderIsMadeInsideOneThatExists) {
    Recording recording(room(4).clapAt(1).clapAt(1.3));
    const std::filesystem::path inside = recording.takes() / "new";
    EXPECT_EQ(
        runVarnelle({"take", sampleScript, "--audio", recording.sound(), "--to", inside}).status,
        0);
    EXPECT_TRUE(std::filesystem::is_directory(inside));

    const std::filesystem::path nowhere = recording.takes() / "no" / "where";
    const CommandResult result =
        runVarnelle({"take", sampleScript, "--audio", recording.sound(), "--to", nowhere});
    EXPECT_EQ(result.status, 74);
    EXPECT_EQ(result.error, "varnelle: " + nowhere.string() +
                                ": no takes can be stored here (No such file or directory)\n");
    EXPECT_EQ(
        runVarnelle({"take", sampleScript, "--audio", recording.sound(), "--to", sampleScript})
            .status,
        74);
    const std::filesystem::path round = recording.takes() / "round";
    std::filesystem::create_symlink("round", round);
    EXPECT_EQ(
        runVarnelle({"take", sampleScript, "--audio", recording.sound(), "--to", round}).error,
        "varnelle: " + round.string() +
            ": no takes can be stored here (Too many levels of symbolic links)\n");
}

TEST(TakeCommand, ALongTitleIsShortenedToWhatAFilesNameHolds) {
    Recording recording(room(4).clapAt(1).clapAt(1.3));
    std::string script;
    for (int i = 0; i < 60; ++i) {
        script += "\U0001F469\u200D\U0001F680";
    }
    const CommandResult result =
        runVarnelle({"take", "-", "--audio", recording.sound(), "--to", recording.takes().string()},
                    {.input = "# " + script + "\nHello.\n"});
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(recording.names().size(), 3U);
}

// Whatever a busy machine breaks of the claps is clapped again.
bool clapUntil(RunningCommand& session, std::string_view event, const Recording& claps) {
    const std::size_t from = session.out().size();
    for (int attempt = 0; attempt < 4; ++attempt) {
        EXPECT_EQ(runCommand({"paplay", "--device=booth", claps.sound()}).status, 0);
        if (session.readUntil(event, from, std::chrono::seconds(10))) return true;
    }
    return false;
}

TEST(TakeCommand, ATakeAtAMicrophoneHasACountdownAndTheWallClocksName) {
    SoundServer server;
    server.start();
    server.addBooth("booth");
    const Recording claps(room(1.2).clapAt(0.4).clapAt(0.7));
    const Recording reading(room(1).toneAt(0, 1, 440, 0.5));
    RunningCommand session(
        varnelle({"take", sampleScript, "--microphone", "booth.monitor", "--to",
                  claps.takes().string(), "--json", "--time-zone", "UTC", "--countdown", "1"}));
    ASSERT_TRUE(session.readUntil("\"ready\"")) << session.error();
    ASSERT_TRUE(clapUntil(session, "\"countdown\"", claps));
    ASSERT_TRUE(session.readUntil("\"recording\""));
    EXPECT_EQ(runCommand({"paplay", "--device=booth", reading.sound()}).status, 0);
    ASSERT_TRUE(clapUntil(session, "\"saved\"", claps));
    session.send(SIGINT);
    const CommandResult result = session.finish();
    EXPECT_EQ(result.status, 130);
    const double began = eventsOf(result, "recording").at(0)["time"];
    EXPECT_NEAR(began - eventsOf(result, "countdown").at(0)["time"].get<double>(), 1, 1e-6);
    const Json saved = eventsOf(result, "saved").at(0);
    EXPECT_NEAR(began + saved["seconds"].get<double>(), saved["time"], 0.001);
    const DecodedSound sound = decodedSound(std::string(saved["file"]));
    EXPECT_EQ(sound.rate, 48000);
    EXPECT_GT(loudest(sound.samples), 0.35) << "the reading";
    // In between may stand claps that a busy machine broke.
    EXPECT_LT(loudest(std::span(sound.samples).first(48000)), 0.65) << "not the claps before it";
    EXPECT_LT(loudest(std::span(sound.samples).last(9600)), 0.65) << "nor those that ended it";
    EXPECT_EQ(claps.names().size(), 3U);
    EXPECT_EQ(claps.names().at(1).find("sample 20"), 0U);
}

TEST(TakeCommand, WrongArgumentsAreSaid) {
    Recording recording(room(1));
    struct Case {
        std::vector<std::string> arguments;
        const char* error;
    };
    const Case cases[] = {
        {{"take", sampleScript, "--to", "."}, "--audio or --microphone says what to record"},
        {{"take", sampleScript, "--audio", recording.sound()}, "--to is required"},
        {{"take", "-", "--audio", "-", "--to", "."},
         "only one thing can be read from standard input"},
        {{"take", sampleScript, "--microphone", "--to", ".", "--speed", "2"}, "excludes"},
        {recording.arguments({"--countdown", "-1"}), "-1 is no whole number from 0 to 3600"},
        {{"take", sampleScript, "--audio", recording.sound(), "--to", ".", "--time-zone",
          "Nowhere"},
         "Nowhere is no time zone"},
    };
    for (const auto& [arguments, error] : cases) {
        const CommandResult result = runVarnelle(arguments);
        EXPECT_EQ(result.status, 2) << error;
        EXPECT_NE(result.error.find(error), std::string::npos) << result.error;
    }
    EXPECT_EQ(runVarnelle({"take", sampleScript, "--audio", "nowhere.wav", "--to", "."}).status,
              66);
}

}  // namespace
}  // namespace Varnelle
