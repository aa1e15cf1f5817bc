#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sndfile.h>

#include "PrompterCore/audio/AudioLevel.h"
#include "host/Failures.h"
#include "host/SoundFileSource.h"
#include "tests/host/Sound.h"
#include "tests/host/TemporaryFile.h"

namespace Varnelle {
namespace {

using Tests::restOf;
using Tests::TemporaryFile;

// A sine of half the full scale, the same on every channel.
std::string sineFile(int rate, int channels, double seconds, int format) {
    const TemporaryFile file("");
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* const sound = sf_open(file.name().c_str(), SFM_WRITE, &info);
    EXPECT_NE(sound, nullptr) << sf_strerror(nullptr);
    std::vector<float> samples;
    for (int i = 0; i < static_cast<int>(seconds * rate); ++i) {
        const double phase = 2 * std::numbers::pi * 440 * i / rate;
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(0.5 * std::sin(phase)));
    }
    sf_writef_float(sound, samples.data(), static_cast<sf_count_t>(samples.size()) / channels);
    sf_close(sound);
    std::ifstream written(file.name(), std::ios::binary);
    return {std::istreambuf_iterator<char>(written), {}};
}

TEST(SoundFileSource, AnyRateAndChannelCountBecomesMonoAtItsOwnRate) {
    for (const int rate : {8000, 16000, 22050, 44100, 48000, 96000}) {
        for (const int channels : {1, 2, 6}) {
            SCOPED_TRACE(std::to_string(rate) + " Hz, " + std::to_string(channels) + " channels");
            const TemporaryFile file(sineFile(rate, channels, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
            SoundFileSource sound(file.name());
            EXPECT_EQ(sound.sampleRate(), rate);
            EXPECT_NEAR(sound.duration(), 1, 0.001);
            EXPECT_EQ(sound.waitingFor(), std::nullopt);
            const std::vector<float> samples = restOf(sound);
            EXPECT_EQ(static_cast<int>(samples.size()), rate);
            EXPECT_EQ(sound.trouble(), std::nullopt);
            EXPECT_NEAR(PrompterCore::AudioLevel::meter(samples), 1 - 9.03 / 60, 0.005)
                << "a sine of half the full scale is at -9.03 dBFS";
        }
    }
}

TEST(SoundFileSource, BehindTheEndThereIsNothing) {
    const TemporaryFile file(sineFile(16000, 1, 0.512, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    SoundFileSource sound(file.name());
    EXPECT_FALSE(sound.hasEnded());
    EXPECT_EQ(restOf(sound).size(), 2 * SoundFileSource::blockSize);
    EXPECT_TRUE(sound.read().empty());
    EXPECT_TRUE(sound.hasEnded());
}

TEST(SoundFileSource, ASoundThatBreaksOffIsReadAsFarAsItGoes) {
    for (const int format : {SF_FORMAT_WAV, SF_FORMAT_FLAC}) {
        SCOPED_TRACE(format);
        const std::string whole = sineFile(16000, 1, 4, format | SF_FORMAT_PCM_16);
        const TemporaryFile file(whole.substr(0, whole.size() / 2));
        SoundFileSource sound(file.name());
        const std::vector<float> samples = restOf(sound);
        EXPECT_GT(samples.size(), 10'000U);
        EXPECT_LT(samples.size(), 60'000U);
        const long heard = std::lround(static_cast<double>(samples.size()) / 16000);
        EXPECT_EQ(sound.trouble(), file.name() + ": the sound breaks off after " +
                                       std::to_string(heard) +
                                       " seconds, before the end that the file announces");
    }
}

TEST(SoundFileSource, SamplesThatAreNoNumbersAreSilence) {
    const TemporaryFile file("");
    SF_INFO info{};
    info.samplerate = 16000;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* const out = sf_open(file.name().c_str(), SFM_WRITE, &info);
    const float samples[] = {0.5F, std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(), -0.5F};
    sf_write_float(out, samples, 4);
    sf_close(out);
    SoundFileSource sound(file.name());
    EXPECT_EQ(sound.read(), (std::vector<float>{0.5F, 0, 0, -0.5F}));
}

TEST(SoundFileSource, WhatIsNoSoundIsRefused) {
    const TemporaryFile text("# One\nHello");
    EXPECT_THROW(SoundFileSource{text.name()}, BadData);
    const TemporaryFile empty("");
    EXPECT_THROW(SoundFileSource{empty.name()}, BadData);
    EXPECT_THROW(SoundFileSource{"/no/such/file"}, NoInput);
    EXPECT_THROW(SoundFileSource{"/"}, NoInput);
}

}  // namespace
}  // namespace Varnelle
