#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/audio/AudioLevel.h"
#include "host/Resampler.h"

namespace Varnelle {
namespace {

std::vector<float> sine(double rate, double seconds) {
    std::vector<float> samples;
    for (int i = 0; i < static_cast<int>(seconds * rate); ++i) {
        samples.push_back(
            static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * 440 * i / rate)));
    }
    return samples;
}

std::vector<float> converted(double from, double to, std::span<const float> samples,
                             std::size_t step) {
    Resampler resampler(from, to);
    std::vector<float> all;
    const auto append = [&](const std::vector<float>& more) {
        all.insert(all.end(), more.begin(), more.end());
    };
    for (; !samples.empty(); samples = samples.subspan(std::min(step, samples.size()))) {
        append(resampler.convert(samples.first(std::min(step, samples.size()))));
    }
    append(resampler.finish());
    return all;
}

TEST(Resampler, KeepsLengthAndLoudness) {
    for (const double rate : {8000.0, 11025.0, 22050.0, 44100.0, 48000.0, 96000.0}) {
        SCOPED_TRACE(rate);
        const std::vector<float> samples = converted(rate, 16000, sine(rate, 1), 960);
        EXPECT_NEAR(static_cast<double>(samples.size()), 16000, 40);
        const std::vector<float> middle(samples.begin() + 4000, samples.begin() + 12000);
        EXPECT_NEAR(PrompterCore::AudioLevel::meter(middle), 1 - 9.03 / 60, 0.005);
    }
}

TEST(Resampler, TheSoundDoesNotDependOnHowItIsCut) {
    const std::vector<float> samples = sine(44100, 0.5);
    const std::vector<float> atOnce = converted(44100, 16000, samples, samples.size());
    for (const std::size_t step : {1U, 7U, 321U, 4096U}) {
        EXPECT_EQ(converted(44100, 16000, samples, step), atOnce) << step;
    }
}

TEST(Resampler, SoundComesAFewMillisecondsLater) {
    Resampler resampler(48000, 16000);
    const std::vector<float> samples = resampler.convert(sine(48000, 0.1));
    EXPECT_GE(samples.size(), 1600U - 80U) << "5 ms";
}

TEST(Resampler, EqualRatesHandOnWhatTheyGet) {
    const std::vector<float> samples = sine(16000, 0.1);
    EXPECT_EQ(converted(16000, 16000, samples, 100), samples);
}

TEST(Resampler, NothingBecomesNothing) {
    EXPECT_TRUE(converted(48000, 16000, {}, 1).empty());
    EXPECT_TRUE(converted(16000, 16000, {}, 1).empty());
}

TEST(Resampler, KnowsWhichRatesItTakes) {
    EXPECT_TRUE(Resampler::converts(48000, 16000));
    EXPECT_TRUE(Resampler::converts(16000.0 * 256, 16000));
    EXPECT_FALSE(Resampler::converts(16000.0 * 257, 16000));
    EXPECT_FALSE(Resampler::converts(0, 16000));
    EXPECT_FALSE(Resampler::converts(-48000, 16000));
    EXPECT_DEATH(Resampler(0, 16000), "rates are ones that it converts");
}

}  // namespace
}  // namespace Varnelle
