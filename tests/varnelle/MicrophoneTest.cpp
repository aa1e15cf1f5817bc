// Microphones of a real sound server, which come and go.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "PrompterCore/audio/AudioLevel.h"
#include "host/Failures.h"
#include "host/Microphone.h"
#include "tests/varnelle/SoundServer.h"

namespace Varnelle::Tests {
namespace {

using Clock = std::chrono::steady_clock;

// Everything that a microphone gives and says.
struct Hearing {
    std::vector<std::string> told;
    std::vector<float> sound;
    Microphone microphone;
    Clock::time_point start = Clock::now();

    explicit Hearing(const std::optional<Text>& asked)
        : microphone(asked, [this](const std::string& why) { told.push_back(why); }) {
        read();
    }

    void read() {
        const std::vector<float> more = microphone.read();
        sound.insert(sound.end(), more.begin(), more.end());
    }
    // Reads as often as there is something, until `isDone`; false when that takes ten seconds.
    bool readUntil(const std::function<bool()>& isDone) {
        const Clock::time_point deadline = Clock::now() + std::chrono::seconds(10);
        while (!isDone() && Clock::now() < deadline) {
            pollfd readable{.fd = *microphone.waitingFor(), .events = POLLIN, .revents = 0};
            if (poll(&readable, 1, 1000) <= 0) return false;
            read();
        }
        return isDone();
    }
    bool readMore(double seconds) {
        const std::size_t enough = sound.size() + static_cast<std::size_t>(seconds * 48000);
        return readUntil([&] { return sound.size() >= enough; });
    }
    bool isTold(const std::string& sentence) {
        return readUntil([&] { return !told.empty() && told.back() == sentence; });
    }
    // Of the last tenth of a second.
    double level() const {
        return PrompterCore::AudioLevel::meter(
            std::span(sound).last(std::min<std::size_t>(sound.size(), 4800)));
    }
    // A server without hardware takes up to two seconds before its first sound.
    bool hearsTheHum() {
        return readUntil([this] { return level() > 0.8; });
    }
    // How much longer the sound is than the time that has passed.
    double lead() const {
        const std::chrono::duration<double> passed = Clock::now() - start;
        return static_cast<double>(sound.size()) / 48000 - passed.count();
    }
};

std::string refusalOf(const std::optional<Text>& asked) {
    try {
        const Hearing hearing(asked);
    } catch (const Unavailable& failure) {
        return failure.what();
    }
    return "none";
}

TEST(Microphone, WithoutAServerOrAnInputThereIsASentence) {
    SoundServer server;
    EXPECT_EQ(refusalOf({}),
              "there is no sound server to reach a microphone through (Connection refused)");
    server.start();
    EXPECT_EQ(refusalOf({}), "no microphone is connected");
    EXPECT_EQ(refusalOf(Text("Booth")), "Booth is not connected; there is no other microphone");
}

TEST(Microphone, HearsTheInputThatWasAskedFor) {
    SoundServer server;
    server.start();
    server.addBooth("silence");
    server.addHum("hum");
    Hearing hearing(Text("hum.monitor"));
    EXPECT_EQ(hearing.microphone.sampleRate(), 48000);
    ASSERT_TRUE(hearing.hearsTheHum());
    EXPECT_NEAR(hearing.lead(), 0, 0.5);
    EXPECT_TRUE(hearing.told.empty());
    EXPECT_EQ(hearing.microphone.trouble(), std::nullopt);
    EXPECT_FALSE(hearing.microphone.hasEnded());
}

TEST(Microphone, OneThatVanishesAndReturnsIsHeardAgain) {
    SoundServer server;
    server.start();
    const std::string hum = server.addHum("hum");
    Hearing hearing(Text("hum.monitor"));
    ASSERT_TRUE(hearing.readMore(0.2));
    server.remove(hum);
    ASSERT_TRUE(hearing.isTold("hum.monitor is not connected; there is no other microphone"));
    EXPECT_EQ(hearing.microphone.trouble(), hearing.told.back());
    ASSERT_TRUE(hearing.readMore(0.3)) << "time goes on";
    EXPECT_EQ(hearing.level(), 0);
    EXPECT_NEAR(hearing.lead(), 0, 0.5);

    server.addBooth("booth");
    server.control({"set-default-source", "booth.monitor"});
    ASSERT_TRUE(hearing.isTold("hum.monitor is not connected; listening to Monitor of booth"));
    hearing.told.clear();
    server.addHum("hum");
    ASSERT_TRUE(hearing.readUntil([&] { return !hearing.told.empty(); }));
    EXPECT_EQ(hearing.told.back(), "listening to Monitor of hum again");
    EXPECT_EQ(hearing.microphone.trouble(), std::nullopt);
    ASSERT_TRUE(hearing.hearsTheHum());
    EXPECT_NEAR(hearing.lead(), 0, 0.5);
}

TEST(Microphone, WithoutAWishTheDefaultIsFollowed) {
    SoundServer server;
    server.start();
    server.addBooth("booth");
    server.addHum("hum");
    server.control({"set-default-source", "booth.monitor"});
    Hearing hearing({});
    ASSERT_TRUE(hearing.readMore(0.3));
    EXPECT_EQ(hearing.level(), 0);
    server.control({"set-default-source", "hum.monitor"});
    ASSERT_TRUE(hearing.readUntil([&] { return !hearing.told.empty(); }));
    EXPECT_EQ(hearing.told.back(), "listening to Monitor of hum now");
    ASSERT_TRUE(hearing.hearsTheHum());
}

TEST(Microphone, AServerThatIsStartedAgainIsFound) {
    SoundServer server;
    server.start();
    server.addHum("hum");
    Hearing hearing(Text("hum.monitor"));
    ASSERT_TRUE(hearing.readMore(0.2));
    server.stop();
    ASSERT_TRUE(hearing.isTold("the sound server has gone; waiting for it"));
    ASSERT_TRUE(hearing.readMore(0.2)) << "time goes on";
    server.start();
    server.addHum("hum");
    ASSERT_TRUE(hearing.readUntil([&] { return !hearing.microphone.trouble(); }));
    EXPECT_EQ(hearing.told.back(), "listening to Monitor of hum again");
    ASSERT_TRUE(hearing.hearsTheHum());
    EXPECT_NEAR(hearing.lead(), 0, 0.5);
}

}  // namespace
}  // namespace Varnelle::Tests
