// The clap detector against the plain one, over random sounds cut at random.

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "tests/reference/PlainClapDetector.h"
#include "tests/support/Properties.h"
#include "tests/support/Sounds.h"

namespace PrompterCore {
namespace {

bool sameNumber(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameSteps(const ClapDetector& detector, const Plain::PlainClapDetector& plain) {
    return std::ranges::equal(detector.steps(), plain.steps, [](const auto& a, const auto& b) {
        return sameNumber(a.time, b.time) && sameNumber(a.level, b.level) &&
               sameNumber(a.bright, b.bright);
    });
}

bool sameGestures(const std::vector<ClapGesture>& a, const std::vector<ClapGesture>& b) {
    return std::ranges::equal(a, b, [](const ClapGesture& one, const ClapGesture& other) {
        return one.count == other.count && sameNumber(one.firstClap, other.firstClap) &&
               sameNumber(one.lastClap, other.lastClap);
    });
}

// Feeds both the same buffers and counts the gestures on which they agreed.
struct Pair {
    explicit Pair(double rate) : product(rate), plain{rate} {}

    std::int64_t feed(const std::vector<float>& buffer, double time) {
        const auto got = product.feed(buffer, time);
        RC_ASSERT(sameGestures(got, plain.feed(buffer, time)));
        RC_ASSERT(sameSteps(product, plain));
        return static_cast<std::int64_t>(got.size());
    }

    ClapDetector product;
    Plain::PlainClapDetector plain;
};

const double someRates[] = {100, 599, 600, 8000, 11'025, 16'000, 22'050, 44'100, 48'000};

TEST(ClapDetectorTwin, AgreesOnClapsInARoomHoweverTheyAreCut) {
    std::int64_t gestures = 0;
    Tests::forAll(
        [&](std::uint64_t seed) {
            const double rate =
                *rc::gen::elementOf(std::vector(std::begin(someRates), std::end(someRates)));
            Tests::Sounds sounds(rate, 4.0, seed);
            sounds.noise(*rc::gen::element(0.0, 0.001, 0.02, 0.2));
            double time = 0.1;
            const auto events = *rc::gen::container<std::vector<int>>(8, rc::gen::inRange(0, 6));
            for (const int event : events) {
                if (event <= 2) sounds.clapAt(time, 0.2 + 0.2 * event);
                if (event == 3) sounds.thumpAt(time);
                if (event == 4) sounds.toneAt(time, 0.1, 3000);
                time += 0.01 * *rc::gen::inRange(3, 90);
            }
            Pair pair(rate);
            const auto& samples = sounds.samples();
            const int largest = *rc::gen::element(30, 500, 5000, 100'000);
            for (std::size_t at = 0; at < samples.size();) {
                const std::size_t size = std::min<std::size_t>(
                    samples.size() - at, static_cast<std::size_t>(*rc::gen::inRange(1, largest)));
                const auto from = samples.begin() + static_cast<std::ptrdiff_t>(at);
                gestures += pair.feed({from, from + static_cast<std::ptrdiff_t>(size)},
                                      static_cast<double>(at) / rate);
                at += size;
            }
        },
        60);
    EXPECT_GT(gestures, 40) << "the sounds hold something to hear";
}

TEST(ClapDetectorTwin, AgreesOnAnySamplesAtAnyTimes) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Tests::forAll(
        [=] {
            // One sample is a step, so that few samples make a gesture.
            Pair pair(*rc::gen::element(400.0, 100.0, 600.0, 1000.0, 0.0, -400.0));
            const auto sample =
                rc::gen::element(0.0F, 0.0F, 0.0F, 0.5F, -0.5F, 1e-3F, 1e-30F, 3e19F, 1e38F, -1e38F,
                                 nan, infinity, -infinity, -0.0F);
            double time = 0;
            const auto calls = *rc::gen::inRange(0, 60);
            for (int call = 0; call < calls; ++call) {
                auto buffer = *rc::gen::container<std::vector<float>>(sample);
                buffer.resize(buffer.size() + static_cast<std::size_t>(*rc::gen::inRange(0, 40)));
                pair.feed(buffer, time);
                time = *rc::gen::weightedElement<double>(
                    {{20, time + static_cast<double>(buffer.size()) / 400},
                     {2, time + 0.7},
                     {1, time - 1.0},
                     {1, std::nan("")},
                     {1, -1e300},
                     {1, std::numeric_limits<double>::infinity()},
                     {2, 0.0}});
            }
        },
        400);
}

TEST(ClapDetectorTwin, AgreesSampleBySample) {
    for (const double rate : {100.0, 16'000.0, 44'100.0}) {
        Tests::Sounds sounds(rate, 3.0, 5);
        sounds.noise(0.001).clapAt(0.5).clapAt(0.8);
        ClapDetector product(rate);
        Plain::PlainClapDetector plain{rate};
        std::size_t at = 0;
        for (const float sample : sounds.samples()) {
            const double time = static_cast<double>(at++) / rate;
            const auto got = product.feed(std::span(&sample, 1), time);
            ASSERT_TRUE(sameGestures(got, plain.feed({sample}, time))) << at;
        }
        EXPECT_TRUE(sameSteps(product, plain));
    }
}

}  // namespace
}  // namespace PrompterCore
