// `varnelle devices`, and a reading that is followed from a microphone which vanishes and returns.

#include <csignal>
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/varnelle/Json.h"
#include "tests/varnelle/SoundServer.h"

namespace Varnelle::Tests {
namespace {

TEST(DevicesCommand, SaysWhatIsThereAndWhatWouldBeChosen) {
    SoundServer server;
    const CommandResult without = runVarnelle({"devices"});
    EXPECT_EQ(without.status, 69);
    EXPECT_EQ(without.out, "");
    EXPECT_EQ(without.error,
              "varnelle: there is no sound server to reach a microphone through (Connection "
              "refused)\n");
    server.start();
    EXPECT_EQ(runVarnelle({"devices"}).out, "Nothing would be listened to: there is no input\n");
    server.addBooth("booth");
    server.addHum("hum");
    server.control({"set-default-source", "hum.monitor"});
    EXPECT_EQ(runVarnelle({"devices"}).out,
              "* hum.monitor  Monitor of hum  (default)\n"
              "Monitor of hum would be listened to: it is the default\n");
    EXPECT_EQ(runVarnelle({"devices", "--remembered", "booth.monitor"}).out,
              "* booth.monitor  Monitor of booth\n"
              "  hum.monitor  Monitor of hum  (default)\n"
              "Monitor of booth would be listened to: it was asked for\n");
    const Json missing =
        Json::parse(runVarnelle({"devices", "--json", "--remembered", "Lavalier"}).out);
    EXPECT_EQ(missing["chosen"], "hum.monitor");
    EXPECT_EQ(missing["isMissing"], true);
    EXPECT_EQ(missing["reason"], "Lavalier is not connected; it is the default");
    EXPECT_EQ(missing["inputs"],
              Json::parse(R"([{"id":"hum.monitor","name":"Monitor of hum","isDefault":true}])"));
}

TEST(MicrophoneCommand, AReadingIsFollowedThroughAGap) {
    SoundServer server;
    server.start();
    const std::string booth = server.addBooth("booth");
    RunningCommand command(
        varnelle({"follow", sampleScript, "--microphone", "booth.monitor", "--json"}));
    ASSERT_TRUE(command.readUntil("frame"));
    {
        const RunningCommand reader({"paplay", "--device=booth", sampleSound});
        ASSERT_TRUE(command.readUntil("\"token\":5,"));
        server.remove(booth);
        ASSERT_TRUE(command.readErrorUntil("booth.monitor is not connected; there is no other"));
    }
    const std::size_t gap = command.out().size();
    server.addBooth("booth");
    ASSERT_TRUE(command.readErrorUntil("varnelle: listening to Monitor of booth again\n"));
    const RunningCommand reader({"paplay", "--device=booth", sampleSound});
    ASSERT_TRUE(command.readUntil("aligned", gap));
    command.send(SIGINT);
    const CommandResult result = command.finish();
    EXPECT_EQ(result.status, 130);

    double time = 0;
    std::size_t from = 0;
    for (std::size_t to; (to = result.out.find('\n', from)) != std::string::npos; from = to + 1) {
        const Json event = Json::parse(result.out.substr(from, to - from));
        EXPECT_GE(event["time"].get<double>(), time);
        time = event["time"].get<double>();
        if (event["event"] == "frame" && from > gap && event.contains("cursor")) {
            EXPECT_GE(event["cursor"].get<int>(), 0) << "the place is kept";
        }
    }
    EXPECT_NEAR(time, result.seconds, 1.5) << "the gap's time counts";
}

TEST(MicrophoneCommand, WhatIsMissingIsSaidAndTheDefaultHeard) {
    SoundServer server;
    server.start();
    server.addHum("hum");
    RunningCommand command(
        varnelle({"follow", sampleScript, "--microphone", "Lavalier", "--plain"}));
    ASSERT_TRUE(command.readErrorUntil(
        "varnelle: Lavalier is not connected; listening to Monitor of hum\n"));
    command.send(SIGINT);
    EXPECT_EQ(command.finish().status, 130);
}

TEST(MicrophoneCommand, WithoutAServerOneSentence) {
    const SoundServer server;
    const CommandResult result = runVarnelle({"follow", sampleScript, "--microphone"});
    EXPECT_EQ(result.status, 69);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error,
              "varnelle: there is no sound server to reach a microphone through (Connection "
              "refused)\n");
}

TEST(MicrophoneCommand, ALiveSoundHasItsOwnPace) {
    for (const std::vector<std::string>& pace :
         {std::vector<std::string>{"--fast"}, {"--speed", "2"}}) {
        std::vector<std::string> arguments{"follow", sampleScript, "--microphone", "x"};
        arguments.insert(arguments.end(), pace.begin(), pace.end());
        EXPECT_EQ(runVarnelle(arguments).status, 2);
    }
}

}  // namespace
}  // namespace Varnelle::Tests
