#include <cmath>
#include <concepts>
#include <limits>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

#include "PrompterCore/audio/ClapCommand.h"
#include "PrompterCore/audio/ClapDetector.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"
#include "tests/support/Sounds.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ClapDetector> && std::equality_comparable<ClapDetector>);
static_assert(std::copyable<ClapGesture> && std::equality_comparable<ClapGesture>);
static_assert(std::is_nothrow_move_constructible_v<ClapDetector>);

using Tests::Sounds;

using Tests::infiniteSample;
using Tests::nanSample;

// What is heard when the sound comes in buffers of `size` samples, the first one at `start`.
std::vector<ClapGesture> heardIn(const Sounds& sounds, std::size_t size = 480, double start = 0) {
    ClapDetector detector(sounds.rate());
    std::vector<ClapGesture> all;
    const std::span<const float> samples(sounds.samples());
    for (std::size_t at = 0; at < samples.size(); at += size) {
        const auto buffer = samples.subspan(at, std::min(size, samples.size() - at));
        for (const ClapGesture& gesture :
             detector.feed(buffer, start + static_cast<double>(at) / sounds.rate()))
            all.push_back(gesture);
    }
    return all;
}

std::vector<std::int64_t> countsIn(const Sounds& sounds) {
    std::vector<std::int64_t> counts;
    for (const ClapGesture& gesture : heardIn(sounds)) {
        counts.push_back(gesture.count);
    }
    return counts;
}

using Counts = std::vector<std::int64_t>;

TEST(ClapDetector, CutsTheSoundIntoStepsOfTwoAndAHalfMilliseconds) {
    struct Case {
        double rate;
        std::int64_t stepLength;
        double stepSeconds;
    };
    const Case cases[] = {
        {48'000, 120, 0.0025},
        {44'100, 110, 110 / 44'100.0},
        {16'000, 40, 0.0025},
        {192'000, 480, 0.0025},
        {22'050, 55, 55 / 22'050.0},
        {100, 1, 0.01},
        {599, 1, 1 / 599.0},
        {600, 2, 2 / 600.0},
        {1, 1, 1.0},
        {0, 1, std::numeric_limits<double>::infinity()},
        {-48'000, 1, -1 / 48'000.0},
    };
    for (const auto& [rate, stepLength, stepSeconds] : cases) {
        SCOPED_TRACE(rate);
        const ClapDetector detector(rate);
        EXPECT_EQ(detector.stepLength(), stepLength);
        EXPECT_EQ(detector.stepSeconds(), stepSeconds);
        EXPECT_TRUE(detector.steps().empty());
    }
}

TEST(ClapDetectorDeathTest, RefusesARateWhoseStepsHaveNoLength) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double rate : {std::nan(""), infinite, -infinite, 1e300, -1e300}) {
        SCOPED_TRACE(rate);
        EXPECT_DEATH(ClapDetector{rate}, "precondition broken");
    }
}

TEST(ClapDetector, AStepIsMadeOfWholeSteps) {
    ClapDetector detector(48'000);
    EXPECT_TRUE(detector.feed(std::vector<float>(119, 0.5F), 7.0).empty());
    EXPECT_TRUE(detector.steps().empty());
    detector.feed(std::vector<float>(1, 0.5F), 99.0);
    ASSERT_EQ(detector.steps().size(), 1U);
    EXPECT_EQ(detector.steps()[0].time, 7.0) << "the stream is continuous";
    detector.feed(std::vector<float>(241, 0.5F), 30.0);
    ASSERT_EQ(detector.steps().size(), 3U);
    EXPECT_EQ(detector.steps()[1].time, 30.0) << "nothing was waiting";
    EXPECT_EQ(detector.steps()[2].time, 30.0 + 0.0025);
}

TEST(ClapDetector, MeasuresAStepsLevelAndBrightness) {
    struct Case {
        const char* what;
        std::vector<float> samples;  // 4 a step
        double level, bright;
    };
    const Case cases[] = {
        {"silence", {0, 0, 0, 0}, -120.0, 0.0},
        {"full scale, up and down", {1, -1, 1, -1}, 0.0, 13.0 / 4},
        {"constant, from silence", {0.5F, 0.5F, 0.5F, 0.5F}, -6.0206, 0.25},
        {"one click", {0, 0, 1, 0}, -6.0206, 2.0},
    };
    for (const auto& [what, samples, level, bright] : cases) {
        SCOPED_TRACE(what);
        ClapDetector detector(1600);
        detector.feed(samples, 0.0);
        ASSERT_EQ(detector.steps().size(), 1U);
        EXPECT_NEAR(detector.steps()[0].level, level, 1e-4);
        EXPECT_NEAR(detector.steps()[0].bright, bright, 1e-9);
    }
}

TEST(ClapDetector, BrightnessLooksBackAcrossSteps) {
    ClapDetector detector(1600);
    detector.feed(std::vector<float>(8, 0.5F), 0.0);
    EXPECT_NEAR(detector.steps()[0].bright, 0.25, 1e-9);
    EXPECT_EQ(detector.steps()[1].bright, 0.0) << "the previous step ended where this one begins";
}

TEST(ClapDetector, BrightnessOfSilenceBehindASoundHasNoBound) {
    ClapDetector detector(1600);
    detector.feed(std::vector<float>{0.5F, 0.5F, 0.5F, 0.5F, 0, 0, 0, 0}, 0.0);
    EXPECT_EQ(detector.steps()[1].bright, 0.25 / 4 / 1e-12);
}

TEST(ClapDetector, SquaresInSinglePrecision) {
    // In double precision neither would overflow.
    ClapDetector detector(400);
    detector.feed(std::vector<float>{3e19F}, 0.0);
    EXPECT_EQ(detector.steps()[0].level, std::numeric_limits<double>::infinity());
    EXPECT_EQ(detector.steps()[0].bright, 0.0) << "the difference is squared in double precision";
}

TEST(ClapDetector, HearsTwoClapsInARoom) {
    for (const double rate :
         {8000.0, 16'000.0, 22'050.0, 44'100.0, 48'000.0, 96'000.0, 192'000.0}) {
        for (std::uint64_t seed = 1; seed <= 5; ++seed) {
            SCOPED_TRACE(rate);
            SCOPED_TRACE(seed);
            Sounds sounds(rate, 2.0, seed);
            sounds.noise(0.002).clapAt(0.5).clapAt(0.8);
            const auto heard = heardIn(sounds);
            ASSERT_EQ(heard.size(), 1U);
            EXPECT_EQ(heard[0].count, 2);
            EXPECT_NEAR(heard[0].firstClap, 0.5, 0.003);
            EXPECT_NEAR(heard[0].lastClap - heard[0].firstClap, 0.3, 0.003);
        }
    }
}

TEST(ClapDetector, ReportsOnTheFeedThatPassesTheGestureEnd) {
    Sounds sounds(48'000, 3.0, 1);
    sounds.clapAt(0.5).clapAt(0.8);
    ClapDetector detector(48'000);
    const std::span<const float> samples(sounds.samples());
    for (std::size_t step = 0;; ++step) {
        ASSERT_LT(step, 1200U);
        const double end = static_cast<double>(step + 1) * 0.0025;
        const auto over =
            detector.feed(samples.subspan(step * 120, 120), static_cast<double>(step) * 0.0025);
        if (over.empty()) continue;
        EXPECT_EQ(over[0].count, 2);
        EXPECT_EQ(over[0].firstClap, 0.5);
        EXPECT_EQ(over[0].lastClap, 320 * 0.0025);
        EXPECT_GE(end - over[0].lastClap, 0.65 - 1e-9);
        EXPECT_LT(end - over[0].lastClap, 0.65 + 0.0026);
        break;
    }
}

TEST(ClapDetector, GroupsClapsByTheirGaps) {
    struct Case {
        const char* what;
        std::vector<double> claps;  // s
        Counts counts;
    };
    const Case cases[] = {
        {"none", {}, {}},
        {"one", {0.5}, {1}},
        {"two", {0.5, 0.8}, {2}},
        {"the ring of the first, 50 ms after it", {0.5, 0.55}, {1}},
        {"the last step of the dead time", {0.5, 0.5975}, {1}},
        {"just behind the dead time", {0.5, 0.6025}, {2}},
        {"the longest gap", {0.5, 1.0975}, {2}},
        {"a step more: the first is dropped", {0.5, 1.1025}, {1}},
        {"a buffer more: the first is told before", {0.5, 1.12}, {1, 1}},
        {"too far for one group", {0.5, 1.2}, {1, 1}},
        {"three", {0.5, 0.8, 1.1}, {3}},
        {"two and two", {0.5, 0.8, 1.6, 1.9}, {2, 2}},
        {"applause", {0.3, 0.45, 0.6, 0.75, 0.9, 1.05, 1.2, 1.35, 1.5, 1.65}, {10}},
    };
    for (const auto& [what, claps, counts] : cases) {
        SCOPED_TRACE(what);
        Sounds sounds(48'000, 3.0, 3);
        for (const double time : claps) {
            sounds.clapAt(time);
        }
        EXPECT_EQ(countsIn(sounds), counts);
    }
}

TEST(ClapDetector, AGroupThatANewClapFollowsTooLateIsDropped) {
    // In one buffer nothing is reported before the second clap is found.
    Sounds sounds(48'000, 2.0, 3);
    sounds.clapAt(0.3).clapAt(0.5).clapAt(1.11);
    ClapDetector detector(48'000);
    const auto over = detector.feed(sounds.samples(), 0.0);
    ASSERT_EQ(over.size(), 1U);
    EXPECT_EQ(over[0].count, 1);
    EXPECT_NEAR(over[0].firstClap, 1.11, 0.003);
    // In buffers of 10 ms so too: the new clap is understood 47.5 ms after it began, in the buffer
    // in which the group would have been over.
    EXPECT_EQ(countsIn(sounds), Counts{1});
    // A step at a time, the group is over before.
    Counts counts;
    for (const ClapGesture& gesture : heardIn(sounds, 120)) {
        counts.push_back(gesture.count);
    }
    EXPECT_EQ(counts, (Counts{2, 1}));
}

TEST(ClapDetector, IsDeafToWhatIsNoClap) {
    const auto none = [](const char* what, const Sounds& sounds) {
        EXPECT_EQ(countsIn(sounds), Counts{}) << what;
    };
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        const auto room = [&](double amplitude = 0.002) {
            return Sounds(48'000, 3.0, seed).noise(amplitude);
        };
        none("silence", Sounds(48'000, 3.0, seed));
        none("noise", room(0.5));
        none("thumps, loud and dull", room().thumpAt(0.5).thumpAt(0.8));
        none("a tone that stays", room().toneAt(0.5, 1.0, 5000.0));
        none("a low tone", room().toneAt(0.5, 1.0, 200.0));
        none("music", room().musicAt(0.3, 2.0));
        none("claps as quiet as -50 dB", Sounds(48'000, 3.0, seed).clapAt(0.5, 0.004));
        none("claps in noise as loud", room(0.5).clapAt(0.5).clapAt(0.8));
    }
}

// One sample a step; only the ninth is judged, with all that it needs around it.
TEST(ClapDetector, AClapMeetsAllItsThresholds) {
    constexpr double silent = -200;  // dBFS
    struct Sound {
        double background, onset;  // dBFS, of eight steps and of the judged one
        std::vector<std::pair<std::size_t, double>> others = {};  // steps from the onset, dBFS
    };
    struct Case {
        const char* what;
        Sound sound;
        std::size_t claps;
    };
    const auto tailAt = [](double level) {
        Sound sound{.background = -200, .onset = -6};
        for (std::size_t step = 10; step <= 18; ++step)
            sound.others.emplace_back(step, level);
        return sound;
    };
    const Case cases[] = {
        {"just above -50 dB", {silent, -49.99}, 1},
        {"just below", {silent, -50.01}, 0},
        {"a rise of more than 15 dB", {-21.01, -6}, 1},
        {"of less", {-20.99, -6}, 0},
        {"an attack of more than 9 dB", {-40, -30.99, {{1, -20}}}, 1},
        {"of less", {-40, -31.01, {{1, -20}}}, 0},
        {"a peak two steps behind the onset", {-40, -30, {{2, -20}}}, 1},
        {"three are too many", {-40, -30, {{3, -20}}}, 0},
        // (1 - 0.684)^2 and (1 - 0.683)^2 on either side of 0.1.
        {"a peak of brightness 0.0999", {silent, 20 * std::log10(0.684), {{1, 0}}}, 0},
        {"a peak of brightness 0.1005", {silent, 20 * std::log10(0.683), {{1, 0}}}, 1},
        {"of two equal peaks the first, which is bright", {silent, -6, {{1, -6}}}, 1},
        {"a decay of more than 10 dB", tailAt(-16.01), 1},
        {"of less", tailAt(-15.99), 0},
        {"loud just before the tail", {silent, -6, {{9, -6}}}, 1},
        {"loud as the tail begins", {silent, -6, {{10, -6}}}, 0},
        {"loud as it ends", {silent, -6, {{18, -6}}}, 0},
    };
    for (const auto& [what, sound, claps] : cases) {
        SCOPED_TRACE(what);
        const auto amplitude = [](double level) {
            return static_cast<float>(std::pow(10.0, level / 20));
        };
        std::vector<float> samples(8, amplitude(sound.background));
        samples.resize(8 + 1 + 18);
        samples[8] = amplitude(sound.onset);
        for (const auto& [step, level] : sound.others)
            samples[8 + step] = amplitude(level);
        ClapDetector detector(400);
        EXPECT_TRUE(detector.feed(samples, 0.0).empty());
        EXPECT_EQ(detector.feed({}, 10.0).size(), claps);
    }
}

TEST(ClapDetector, NeedsTheSoundAroundAClap) {
    const auto heard = [](double seconds, double clap) {
        Sounds sounds(48'000, seconds, 1);
        sounds.clapAt(clap);
        ClapDetector detector(48'000);
        auto over = detector.feed(sounds.samples(), 0.0);
        if (over.empty()) over = detector.feed({}, 10.0);
        return over.size();
    };
    EXPECT_EQ(heard(1.0, 0.0175), 0U) << "seven steps before it";
    EXPECT_EQ(heard(1.0, 0.02), 1U) << "eight";
    EXPECT_EQ(heard(0.5 + 18 * 0.0025, 0.5), 0U) << "seventeen steps behind it";
    EXPECT_EQ(heard(0.5 + 19 * 0.0025, 0.5), 1U) << "eighteen";
}

TEST(ClapDetector, NoSamplesAtALaterTimeEndAGesture) {
    Sounds sounds(48'000, 1.0, 1);
    sounds.clapAt(0.5);
    ClapDetector detector(48'000);
    EXPECT_TRUE(detector.feed(sounds.samples(), 0.0).empty());
    EXPECT_TRUE(detector.feed({}, 1.149).empty());
    EXPECT_EQ(detector.feed({}, 1.1501).size(), 1U);
    EXPECT_TRUE(detector.feed({}, 9.0).empty()) << "reported once";
}

TEST(ClapDetector, TimesAreTheHostsOwn) {
    Sounds sounds(48'000, 2.0, 1);
    sounds.clapAt(0.5).clapAt(0.8);
    const auto heard = heardIn(sounds, 480, 1'000'000.0);
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_NEAR(heard[0].firstClap, 1'000'000.5, 1e-6);
}

TEST(ClapDetector, SamplesThatAreNoNumbersMakeNoClap) {
    for (const float odd :
         {nanSample, infiniteSample, -infiniteSample, std::numeric_limits<float>::max()}) {
        SCOPED_TRACE(odd);
        Sounds sounds(48'000, 2.0, 1);
        sounds.noise(0.001)
            .mixAt(0.5, std::vector<float>(1, odd))
            .mixAt(0.8, std::vector<float>(300, odd));
        EXPECT_EQ(countsIn(sounds), Counts{});
        sounds.clapAt(1.2);
        EXPECT_EQ(countsIn(sounds), Counts{1}) << "it hears again behind them";
    }
}

TEST(ClapDetector, TimesThatAreNoNumbersEndNoGesture) {
    Sounds sounds(48'000, 2.0, 1);
    sounds.clapAt(0.5);
    ClapDetector detector(48'000);
    EXPECT_TRUE(detector.feed(sounds.samples(), std::nan("")).empty());
    EXPECT_TRUE(detector.feed({}, std::numeric_limits<double>::infinity()).empty());
}

TEST(ClapDetector, BuffersOfAnySizeMakeNoDifference) {
    Sounds sounds(44'100, 4.0, 2);
    sounds.noise(0.003).clapAt(0.5).clapAt(0.8).thumpAt(1.3).clapAt(2.0).clapAt(2.3).clapAt(2.6);
    const auto expected = heardIn(sounds, 441);
    ASSERT_EQ(expected.size(), 2U);
    for (const std::size_t size : {1U, 7U, 109U, 110U, 111U, 512U, 4096U}) {
        SCOPED_TRACE(size);
        const auto heard = heardIn(sounds, size);
        ASSERT_EQ(heard.size(), expected.size());
        for (std::size_t i = 0; i < heard.size(); ++i) {
            EXPECT_EQ(heard[i].count, expected[i].count);
            EXPECT_NEAR(heard[i].firstClap, expected[i].firstClap, 1e-9);
            EXPECT_NEAR(heard[i].lastClap, expected[i].lastClap, 1e-9);
        }
    }
}

TEST(ClapDetector, ForgetsOldStepsAThousandAtATime) {
    ClapDetector detector(48'000);
    const std::vector<float> step(120, 0.0F);
    for (int made = 1; made <= 1026; ++made) {
        detector.feed(step, 0.0);
        ASSERT_EQ(detector.steps().size(), static_cast<std::size_t>(made));
    }
    detector.feed(step, 0.0);
    EXPECT_EQ(detector.steps().size(), 26U) << "eight before the next to check, and from it on";
}

TEST(ClapDetector, ACopyGoesItsOwnWay) {
    Sounds sounds(48'000, 1.0, 1);
    sounds.clapAt(0.5);
    ClapDetector detector(48'000);
    EXPECT_EQ(detector, ClapDetector(48'000));
    detector.feed(sounds.samples(), 0.0);
    ClapDetector copy = detector;
    EXPECT_EQ(copy, detector);
    EXPECT_EQ(copy.feed({}, 5.0).size(), 1U);
    EXPECT_NE(copy, detector);
    EXPECT_EQ(detector.feed({}, 5.0).size(), 1U);
    EXPECT_EQ(copy, detector);
    EXPECT_NE(ClapDetector(48'000), ClapDetector(44'100));
}

TEST(ClapDetector, NeverAllocatesOnceItRuns) {
    for (const double rate : {100.0, 8000.0, 48'000.0, 192'000.0, 1'600'000.0}) {
        for (const std::size_t size : {1U, 100U, 4095U, 4096U}) {
            SCOPED_TRACE(rate);
            SCOPED_TRACE(size);
            const std::vector<float> buffer(size, 0.25F);
            ClapDetector first(rate);
            first.feed(buffer, 0.0);
            ClapDetector detector = first;
            detector.feed(buffer, 0.0);
            // Far enough for the old steps to be forgotten, more than once where that is quick.
            const auto length = static_cast<std::size_t>(detector.stepLength());
            const std::size_t enough = std::min<std::size_t>(2500 * length / size + 2, 200'000);
            EXPECT_EQ(Tests::allocationsDuring([&] {
                          for (std::size_t i = 0; i < enough; ++i)
                              detector.feed(buffer, 0.0);
                      }),
                      0);
        }
    }
}

TEST(ClapDetector, NeverAllocatesForApplause) {
    Sounds sounds(48'000, 20.0, 1);
    for (int clap = 0; clap < 120; ++clap) {
        sounds.clapAt(0.2 + 0.15 * clap);
    }
    ClapDetector detector(48'000);
    const std::span<const float> samples(sounds.samples());
    detector.feed(samples.first(480), 0.0);
    std::size_t fed = 480;
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  for (; fed < 18 * 48'000; fed += 480)
                      detector.feed(samples.subspan(fed, 480), static_cast<double>(fed) / 48'000);
              }),
              0);
    const auto over = detector.feed(samples.subspan(fed), static_cast<double>(fed) / 48'000);
    ASSERT_EQ(over.size(), 1U);
    EXPECT_EQ(over[0].count, 120);
}

TEST(ClapCommand, TwoClapsStartAndStop) {
    const bool idle = false;
    const bool recording = true;
    EXPECT_EQ(clapCommandFor(2, idle), ClapCommand::start);
    EXPECT_EQ(clapCommandFor(2, recording), ClapCommand::stop);
    for (const std::int64_t claps :
         {std::numeric_limits<std::int64_t>::min(), std::int64_t{-2}, std::int64_t{0},
          std::int64_t{1}, std::int64_t{3}, std::numeric_limits<std::int64_t>::max()}) {
        SCOPED_TRACE(claps);
        EXPECT_EQ(clapCommandFor(claps, idle), std::nullopt);
        EXPECT_EQ(clapCommandFor(claps, recording), std::nullopt);
    }
    EXPECT_EQ(allCases<ClapCommand>, (std::array{ClapCommand::start, ClapCommand::stop}));
    EXPECT_EQ(caseName(ClapCommand::start), "start");
    EXPECT_EQ(caseName(ClapCommand::stop), "stop");
}

}  // namespace
}  // namespace PrompterCore
