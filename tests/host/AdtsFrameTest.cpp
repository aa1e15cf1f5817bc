#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/AacEncoder.h"
#include "host/AdtsFrame.h"

namespace Varnelle {
namespace {

TEST(AdtsFrame, TheHeaderSaysRateAndLength) {
    for (const int rate : adtsRates) {
        for (const std::size_t length : {0U, 1U, 300U, 8184U}) {
            const std::string frame = adtsFrame(std::vector<std::uint8_t>(length, 0xAB), rate);
            EXPECT_EQ(frame.size(), length + AdtsHeader::size);
            EXPECT_EQ(AdtsHeader::fromBytes(frame), (AdtsHeader{.rate = rate, .payload = length}));
        }
    }
}

TEST(AdtsFrame, WhatBeginsOtherwiseIsNoFrameOfOurs) {
    const std::string frame = adtsFrame(std::vector<std::uint8_t>(20), 48000);
    EXPECT_EQ(AdtsHeader::fromBytes(""), std::nullopt);
    EXPECT_EQ(AdtsHeader::fromBytes(frame.substr(0, 6)), std::nullopt);
    struct Case {
        const char* what;
        std::size_t byte;
        int value;
    };
    for (const auto& [what, byte, value] :
         {Case{"no sync word", 0, 0xFE}, Case{"MPEG-2", 1, 0xF9}, Case{"a check sum", 1, 0xF0},
          Case{"another profile", 2, 0x0C}, Case{"an unknown rate", 2, 0x7C},
          Case{"two channels", 3, 0x80}, Case{"two frames in one", 6, 0xFD}}) {
        std::string broken = frame;
        broken[byte] = static_cast<char>(value);
        EXPECT_EQ(AdtsHeader::fromBytes(broken), std::nullopt) << what;
    }
    std::string short_ = frame;
    short_[4] = 0;
    short_[5] = static_cast<char>(6U << 5U);  // shorter than its own header
    EXPECT_EQ(AdtsHeader::fromBytes(short_), std::nullopt);
}

TEST(AdtsFrameDeathTest, WhatDoesNotFitIsRefused) {
    EXPECT_DEATH(static_cast<void>(adtsFrame(std::vector<std::uint8_t>(8185), 48000)),
                 "a frame's length fits its header");
    EXPECT_DEATH(static_cast<void>(adtsFrame({}, 47999)), "the format knows the rate");
    EXPECT_DEATH(AacEncoder(7350), "the format knows the rate");
}

TEST(AacEncoder, TheRateIsTheSoundsOwnOrTheNextAbove) {
    struct Case {
        double rate;
        int chosen;
    };
    for (const auto& [rate, chosen] :
         {Case{1, 8000}, Case{8000, 8000}, Case{8001, 11025}, Case{16000, 16000},
          Case{44099.5, 44100}, Case{48000, 48000}, Case{96000, 96000}, Case{96001, 96000},
          Case{128000, 64000}, Case{176400, 88200}, Case{192000, 96000}, Case{384000, 96000}}) {
        EXPECT_EQ(AacEncoder::rateFor(rate), chosen) << rate;
    }
}

}  // namespace
}  // namespace Varnelle
