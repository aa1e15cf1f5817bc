#include <concepts>
#include <limits>

#include <gtest/gtest.h>

#include "host/VoiceActivity.h"

namespace Varnelle {
namespace {

static_assert(std::copyable<VoiceActivity> && std::equality_comparable<VoiceActivity>);

constexpr double loud = 0.6;
constexpr double between = 0.3;
constexpr double quiet = 0.1;

TEST(VoiceActivity, StartsAtOnceAndStopsAfterTheHangover) {
    VoiceActivity voice;
    EXPECT_FALSE(voice.level(quiet, 0.0));
    EXPECT_TRUE(voice.level(loud, 1.0));
    EXPECT_TRUE(voice.level(quiet, 1.2));
    EXPECT_TRUE(voice.level(quiet, 1.5));
    EXPECT_FALSE(voice.level(quiet, 1.7));
}

TEST(VoiceActivity, AGapShorterThanTheHangoverIsNoSilence) {
    VoiceActivity voice;
    voice.level(loud, 1.0);
    voice.level(quiet, 1.1);
    EXPECT_TRUE(voice.level(loud, 1.4));
    EXPECT_TRUE(voice.level(quiet, 1.5));
    EXPECT_TRUE(voice.level(quiet, 1.8)) << "the quiet time began anew at 1.5";
}

TEST(VoiceActivity, BetweenTheTwoLevelsItStaysAsItWas) {
    VoiceActivity voice;
    EXPECT_FALSE(voice.level(between, 1.0)) << "not loud enough to begin";
    voice.level(loud, 2.0);
    EXPECT_TRUE(voice.level(between, 3.0)) << "not quiet enough to end";
    EXPECT_TRUE(voice.level(between, 9.0));
}

TEST(VoiceActivity, TheLevelsThemselvesCountAsAtOrAbove) {
    VoiceActivity voice;
    EXPECT_TRUE(voice.level(VoiceActivity::startLevel, 1.0));
    EXPECT_TRUE(voice.level(VoiceActivity::stopLevel, 2.0));
    EXPECT_TRUE(voice.level(VoiceActivity::stopLevel, 9.0));
}

TEST(VoiceActivity, ALevelThatIsNoNumberIsSilence) {
    VoiceActivity voice;
    EXPECT_FALSE(voice.level(std::numeric_limits<double>::quiet_NaN(), 1.0));
    voice.level(loud, 2.0);
    voice.level(std::numeric_limits<double>::quiet_NaN(), 3.0);
    EXPECT_FALSE(voice.level(std::numeric_limits<double>::quiet_NaN(), 4.0));
}

TEST(VoiceActivity, WithoutALevelWordsSpeakForASecond) {
    VoiceActivity voice;
    EXPECT_FALSE(voice.at(0.0));
    EXPECT_TRUE(voice.words(1.0));
    EXPECT_TRUE(voice.at(1.9));
    EXPECT_TRUE(voice.words(1.9));
    EXPECT_TRUE(voice.at(2.8));
    EXPECT_FALSE(voice.at(2.9));
}

TEST(VoiceActivity, AKnownLevelKnowsBetterThanWords) {
    VoiceActivity voice;
    voice.words(0.5);
    voice.level(quiet, 0.6);
    EXPECT_FALSE(voice.at(1.0));
    EXPECT_FALSE(voice.words(1.1)) << "words come late; the level says that it is silent";
}

}  // namespace
}  // namespace Varnelle
