// `varnelle follow`, run from outside, without a terminal.

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/text/Columns.h"
#include "host/ReadThrough.h"
#include "host/TextFile.h"
#include "host/Tuning.h"
#include "host/WordsFile.h"
#include "tests/host/Sound.h"
#include "tests/host/TemporaryFile.h"
#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

using Json = nlohmann::ordered_json;
using Arguments = std::vector<std::string>;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<Json> eventsOf(const std::string& out) {
    std::vector<Json> events;
    for (const std::string& line : linesOf(out)) {
        events.push_back(Json::parse(line));
    }
    return events;
}

std::vector<Json> without(const std::string& kind, std::vector<Json> events) {
    std::erase_if(events, [&](const Json& event) { return event["event"] == kind; });
    return events;
}

std::vector<PromptLine> linesInColumns(const Script& script, double width) {
    return LineBreaker{
        .width = width,
        .measure = [](std::string_view text) { return static_cast<double>(columnsOf(text)); }}
        .linesFor(script);
}

Json frameAsJson(const char* event, const Frame& frame) {
    return {{"event", event},
            {"time", frame.time},
            {"cursor", frame.cursor},
            {"position", frame.position},
            {"line", frame.line}};
}

// The reading of a words file as the library tells it, frame by frame.
std::string expectedReading(const std::string& words, double framesPerSecond, double width = 40) {
    const Script script(readText(sampleScript));
    ReadThrough reading(script, linesInColumns(script, width), Tuning::aligner, Tuning::scroll);
    std::vector<WordsUpdate> updates;
    for (const std::string& line : linesOf(words)) {
        updates.push_back(std::get<WordsUpdate>(wordsFromLine(line)));
    }
    std::string out;
    const auto say = [&out](const Json& event) { out += event.dump() + "\n"; };
    auto next = updates.begin();
    Frame frame;
    for (std::int64_t k = 0; k == 0 || frame.time < updates.back().time; ++k) {
        const double now = static_cast<double>(k) / framesPerSecond;
        for (; next != updates.end() && next->time <= now; ++next) {
            Json heard = Json::array();
            for (const HeardWord& word : next->words) {
                heard.push_back(
                    {{"word", word.word.utf8()},
                     {"start", word.start},
                     {"end", word.end},
                     {"confidence", word.confidence ? Json(*word.confidence) : Json()}});
            }
            say({{"event", "words"},
                 {"time", next->time},
                 {"keep", next->keep},
                 {"words", heard},
                 {"final", next->final}});
            if (const auto alignment = reading.hear(*next))
                say({{"event", "aligned"},
                     {"time", next->time},
                     {"token", alignment->tokenIndex},
                     {"confidence", alignment->confidence}});
        }
        frame = reading.frameAt(now);
        say(frameAsJson("frame", frame));
    }
    Json end = frameAsJson("end", frame);
    end["tokens"] = script.tokens().size();
    end["interrupted"] = false;
    say(end);
    return out;
}

std::string wordsLine(double time, int keep, const std::string& word) {
    return lineFromWords({.time = time,
                          .keep = keep,
                          .words = {{.word = Text(word),
                                     .start = std::max(time - 0.2, 0.0),
                                     .end = time,
                                     .confidence = std::nullopt}},
                          .final = false}) +
           "\n";
}

// The first seconds of the sample as a whole sound of its own.
std::string soundOf(double seconds) {
    const std::vector<float> samples = recognisersSound(sampleSound, seconds);
    std::string bytes;
    const auto number = [&bytes](std::uint32_t value, int size) {
        for (; size > 0; --size, value >>= 8U)
            bytes.push_back(static_cast<char>(value & 0xFFU));
    };
    const auto length = static_cast<std::uint32_t>(samples.size() * 2);
    bytes += "RIFF";
    number(36 + length, 4);
    bytes += "WAVEfmt ";
    number(16, 4);
    number(1, 2);  // plain samples
    number(1, 2);  // one channel
    number(16000, 4);
    number(32000, 4);  // bytes a second
    number(2, 2);      // bytes a sample
    number(16, 2);     // bits a sample
    bytes += "data";
    number(length, 4);
    for (const float sample : samples) {
        const auto value = static_cast<std::int32_t>(std::clamp(sample, -1.0F, 1.0F) * 32767);
        number(static_cast<std::uint32_t>(value), 2);
    }
    return bytes;
}

CommandResult followWords(const std::string& file, Arguments more) {
    Arguments arguments{"follow", sampleScript, "--words", file};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runVarnelle(arguments);
}

TEST(FollowCommand, JsonIsTheReadingAsTheLibraryTellsIt) {
    const std::string words = readFile(sampleWords);
    const CommandResult result = followWords(sampleWords, {"--fast", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.out == expectedReading(words, 30));
    EXPECT_TRUE(followWords(sampleWords, {"--fast", "--json", "--frames-per-second", "10"}).out ==
                expectedReading(words, 10));
    EXPECT_TRUE(followWords(sampleWords,
                            {"--fast", "--json", "--frames-per-second", "59.94", "--width", "17"})
                    .out == expectedReading(words, 59.94, 17));
    const Json end = eventsOf(result.out).back();
    EXPECT_EQ(end["cursor"], 164);
    EXPECT_EQ(end["tokens"], 165);
}

TEST(FollowCommand, ASpeedChangesNothingButTheTimeItTakes) {
    std::string words;
    for (int i = 0; i < 10; ++i)
        words += linesOf(readFile(sampleWords))[static_cast<std::size_t>(i)] + "\n";
    const TemporaryFile file(words);
    const CommandResult fast = followWords(file.name(), {"--fast", "--json"});
    const CommandResult quick = followWords(file.name(), {"--speed", "10", "--json"});
    EXPECT_EQ(quick.out, fast.out);
    const double length = eventsOf(fast.out).back()["time"].get<double>();
    EXPECT_GT(quick.seconds, length / 10 * 0.9);
    EXPECT_LT(fast.seconds, length / 2);
}

TEST(FollowCommand, SoundIsFollowedInOrderAtEvenFramesAndAlwaysAlike) {
    const TemporaryFile sound(soundOf(6));
    const Arguments arguments{"follow", sampleScript, "--audio", sound.name(), "--json"};
    const auto with = [&](Arguments more) {
        more.insert(more.begin(), arguments.begin(), arguments.end());
        return runVarnelle(more);
    };
    const CommandResult result = with({"--fast"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(with({"--speed", "50"}).out == result.out) << "and at another speed";

    const Script script(readText(sampleScript));
    const std::vector<PromptLine> lines = linesInColumns(script, 40);
    std::int64_t frames = 0, cursor = -1;
    double time = 0;
    std::set<std::string> kinds;
    const std::vector<Json> events = eventsOf(result.out);
    for (const Json& event : events) {
        SCOPED_TRACE(event.dump());
        kinds.insert(event["event"].get<std::string>());
        EXPECT_GE(event["time"].get<double>(), time);
        time = event["time"].get<double>();
        if (event["event"] == "aligned") {
            cursor = event["token"].get<std::int64_t>();
            EXPECT_GT(event["confidence"].get<double>(), 0);
            EXPECT_LE(event["confidence"].get<double>(), 1);
        } else if (event["event"] != "words") {
            EXPECT_EQ(event["cursor"], cursor);
            EXPECT_EQ(event["line"],
                      LineBreaker::lineIndexFor(event["position"].get<double>(), lines));
        }
        if (event["event"] == "frame") {
            EXPECT_EQ(time, static_cast<double>(frames++) / 30);
        }
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"aligned", "end", "frame", "words"}));
    EXPECT_EQ(events.back()["event"], "end");
    EXPECT_NEAR(time, 6, 0.05) << "the frame behind the end of the sound";
    EXPECT_NEAR(static_cast<double>(cursor), 15, 2) << "six seconds in";

    const std::vector<Json> slow = eventsOf(with({"--fast", "--frames-per-second", "10"}).out);
    EXPECT_EQ(without("end", without("frame", slow)), without("end", without("frame", events)))
        << "what is heard does not hang on the frames";
}

TEST(FollowCommand, WithoutATerminalEachAlignedPositionIsALine) {
    const CommandResult result = followWords(sampleWords, {"--fast"});
    EXPECT_EQ(result.status, 0);
    const std::vector<std::string> lines = linesOf(result.out);
    const std::vector<Json> events = eventsOf(followWords(sampleWords, {"--fast", "--json"}).out);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(lines.size()),
              std::ranges::count_if(events,
                                    [](const Json& event) { return event["event"] == "aligned"; }));
    EXPECT_EQ(lines.front(),
              "    1.05 s  token    0  1.00  behind          Behind me stands a small white");
    EXPECT_EQ(result.out.find('\x1B'), std::string::npos);
    EXPECT_EQ(followWords(sampleWords, {"--fast", "--plain"}).out, result.out);
}

TEST(FollowCommand, ABrokenLineIsNamedAndTheRestGoesOn) {
    const std::vector<std::string> good = linesOf(readFile(sampleWords));
    const TemporaryFile whole(good[0] + "\n" + good[1] + "\n" + good[2] + "\n");
    const TemporaryFile broken(good[0] + "\nnonsense\n\n" + good[1] + "\r\n{\"time\":1}\n" +
                               R"({"time":1700000000,"keep":0,"words":[],"final":true})" + "\n" +
                               good[2]);
    const CommandResult result = followWords(broken.name(), {"--fast", "--json"});
    EXPECT_EQ(result.status, 65);
    EXPECT_EQ(result.error,
              "varnelle: " + broken.name() + ":2: the line is no JSON\n" +      //
                  "varnelle: " + broken.name() + ":5: \"keep\" is missing\n" +  //
                  "varnelle: " + broken.name() + ":6: \"time\" is not in seconds\n" +
                  "varnelle: " + broken.name() + ": 3 broken lines were passed over\n");
    EXPECT_EQ(result.out, followWords(whole.name(), {"--fast", "--json"}).out);
}

TEST(FollowCommand, NoWordsAtAllAreAReadingThatHasEnded) {
    const CommandResult result = runVarnelle({"follow", sampleScript, "--words", "-", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(linesOf(result.out).size(), 2U) << "a frame and the end";
}

TEST(FollowCommand, AScriptWithoutWordsIsFollowedAllTheSame) {
    for (const char* text : {"", "# Only\n# Headings\n", " \n- -\n"}) {
        const CommandResult result = runVarnelle(
            {"follow", "-", "--words", sampleWords, "--fast", "--json"}, {.input = text});
        EXPECT_EQ(result.status, 0) << result.error;
        const Json end = eventsOf(result.out).back();
        EXPECT_EQ(end["tokens"], 0);
        EXPECT_EQ(end["cursor"], -1);
    }
}

TEST(FollowCommand, ASilentPipeIsWatchedWhileTheClockGoesOn) {
    RunningCommand command(varnelle({"follow", sampleScript, "--words", "-", "--json"}));
    command.write(wordsLine(0, 0, "behind"));
    EXPECT_TRUE(command.readUntil("aligned")) << "before the pipe ends";
    EXPECT_TRUE(command.readUntil("frame", command.out().size())) << "time goes on";
    const std::string late = wordsLine(0.001, 1, "me");
    command.write(late.substr(0, 20));
    EXPECT_TRUE(command.readUntil("frame", command.out().size())) << "half a line waits";
    command.write(late.substr(20));
    EXPECT_TRUE(command.readUntil("\"me\"")) << "what comes late counts now";
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    double time = 0;
    for (const Json& event : eventsOf(result.out)) {
        EXPECT_GE(event["time"].get<double>(), time) << event.dump();
        time = event["time"].get<double>();
    }
    EXPECT_EQ(eventsOf(result.out).back()["cursor"], 1);
}

TEST(FollowCommand, FastWaitsForAPipeAndGoesNoFurtherThanIsKnown) {
    RunningCommand command(varnelle({"follow", sampleScript, "--words", "-", "--json", "--fast"}));
    EXPECT_TRUE(command.isSilent());
    command.write(wordsLine(0.5, 0, "behind"));
    EXPECT_TRUE(command.readUntil("aligned"));
    EXPECT_TRUE(command.isSilent()) << command.out();
    command.write(wordsLine(1, 1, "me"));
    EXPECT_TRUE(command.readUntil("\"me\""));
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 0);
    const TemporaryFile file(wordsLine(0.5, 0, "behind") + wordsLine(1, 1, "me"));
    EXPECT_EQ(result.out, followWords(file.name(), {"--json", "--fast"}).out);
}

TEST(FollowCommand, ANamedPipeIsOpenedOnce) {
    const std::string pipe = TemporaryFile("").name();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    RunningCommand command(varnelle({"follow", sampleScript, "--words", pipe, "--json", "--fast"}));
    {
        std::ofstream writer(pipe);
        writer << readFile(sampleWords);
    }
    EXPECT_TRUE(command.finish().out == followWords(sampleWords, {"--json", "--fast"}).out);
    unlink(pipe.c_str());
}

TEST(FollowCommand, AnInterruptEndsItWith130) {
    const auto interrupted = [](RunningCommand& command) {
        command.send(SIGINT);
        const CommandResult result = command.finish();
        EXPECT_EQ(result.status, 130);
        EXPECT_EQ(result.error, "");
        return result.out;
    };
    RunningCommand inRealTime(varnelle({"follow", sampleScript, "--words", sampleWords, "--json"}));
    EXPECT_TRUE(inRealTime.readUntil("\n"));
    EXPECT_EQ(eventsOf(interrupted(inRealTime)).back()["interrupted"], true);

    RunningCommand onSilentPipe(
        varnelle({"follow", sampleScript, "--words", "-", "--json", "--fast"}));
    onSilentPipe.write(wordsLine(0, 0, "behind"));
    EXPECT_TRUE(onSilentPipe.readUntil("aligned"));
    EXPECT_TRUE(onSilentPipe.isSilent());
    EXPECT_EQ(eventsOf(interrupted(onSilentPipe)).back()["interrupted"], true);

    RunningCommand inLines(varnelle({"follow", sampleScript, "--words", "-"}));
    inLines.write(wordsLine(0, 0, "behind"));
    EXPECT_TRUE(inLines.readUntil("behind"));
    interrupted(inLines);

    RunningCommand whileHearing(
        varnelle({"follow", sampleScript, "--audio", sampleSound, "--json"}));
    EXPECT_TRUE(whileHearing.readUntil("\n"));
    interrupted(whileHearing);

    RunningCommand whileLoading(varnelle({"script", "-"}));
    EXPECT_TRUE(whileLoading.isSilent());
    interrupted(whileLoading);
}

}  // namespace
}  // namespace Varnelle::Tests
