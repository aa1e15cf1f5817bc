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
#include "host/Recogniser.h"
#include "host/SoundFile.h"
#include "tests/host/TemporaryFile.h"

namespace Varnelle {
namespace {

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

std::vector<float> allOf(SoundFile& sound, std::size_t step) {
    std::vector<float> samples;
    while (true) {
        const std::vector<float> next = sound.next(step);
        samples.insert(samples.end(), next.begin(), next.end());
        if (next.size() < step) return samples;
    }
}

TEST(SoundFile, AnyRateAndChannelCountBecomesMonoAtTheRecognisersRate) {
    for (const int rate : {8000, 16000, 22050, 44100, 48000, 96000}) {
        for (const int channels : {1, 2, 6}) {
            SCOPED_TRACE(std::to_string(rate) + " Hz, " + std::to_string(channels) + " channels");
            const TemporaryFile file(sineFile(rate, channels, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
            SoundFile sound(file.name());
            EXPECT_NEAR(sound.duration(), 1, 0.001);
            const std::vector<float> samples = allOf(sound, 800);
            EXPECT_NEAR(static_cast<double>(samples.size()), sampleRate, 40);
            EXPECT_FALSE(sound.endedEarly());
            const std::vector<float> middle(samples.begin() + 4000, samples.begin() + 12000);
            EXPECT_NEAR(PrompterCore::AudioLevel::meter(middle), 1 - 9.03 / 60, 0.005)
                << "a sine of half the full scale is at -9.03 dBFS";
        }
    }
}

TEST(SoundFile, TheSamplesDoNotDependOnTheStep) {
    const TemporaryFile file(sineFile(44100, 2, 0.5, SF_FORMAT_FLAC | SF_FORMAT_PCM_16));
    SoundFile once(file.name());
    SoundFile inSteps(file.name());
    EXPECT_EQ(allOf(once, 1 << 20), allOf(inSteps, 321));
}

TEST(SoundFile, BehindTheEndThereIsNothing) {
    const TemporaryFile file(sineFile(16000, 1, 0.1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    SoundFile sound(file.name());
    EXPECT_EQ(sound.next(2000).size(), 1600U);
    EXPECT_TRUE(sound.next(2000).empty());
    EXPECT_TRUE(sound.next(2000).empty());
}

TEST(SoundFile, ASoundThatBreaksOffIsReadAsFarAsItGoes) {
    for (const int format : {SF_FORMAT_WAV, SF_FORMAT_FLAC}) {
        SCOPED_TRACE(format);
        const std::string whole = sineFile(16000, 1, 4, format | SF_FORMAT_PCM_16);
        const TemporaryFile file(whole.substr(0, whole.size() / 2));
        SoundFile sound(file.name());
        const std::vector<float> samples = allOf(sound, 1600);
        EXPECT_GT(samples.size(), 10'000U);
        EXPECT_LT(samples.size(), 60'000U);
        EXPECT_TRUE(sound.endedEarly());
    }
}

TEST(SoundFile, SamplesThatAreNoNumbersAreSilence) {
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
    SoundFile sound(file.name());
    EXPECT_EQ(sound.next(4), (std::vector<float>{0.5F, 0, 0, -0.5F}));
}

TEST(SoundFile, WhatIsNoSoundIsRefused) {
    const TemporaryFile text("# One\nHello");
    EXPECT_THROW(SoundFile{text.name()}, BadData);
    const TemporaryFile empty("");
    EXPECT_THROW(SoundFile{empty.name()}, BadData);
    EXPECT_THROW(SoundFile{"/no/such/file"}, NoInput);
    EXPECT_THROW(SoundFile{"/"}, NoInput);
}

}  // namespace
}  // namespace Varnelle
