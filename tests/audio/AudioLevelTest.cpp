#include <cmath>
#include <limits>
#include <vector>

#include "PrompterCore/audio/AudioLevel.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Samples = std::vector<float>;

using Tests::infiniteSample;
using Tests::nanSample;
constexpr float largest = std::numeric_limits<float>::max();

static_assert(AudioLevel::floorDecibels == -60.0);
static_assert(noexcept(AudioLevel::meter({})));

TEST(AudioLevel, MeterIsLinearInDecibels) {
    struct Case {
        const char* what;
        Samples samples;
        double meter;
    };
    const Case cases[] = {
        {"no samples", {}, 0.0},
        {"silence", Samples(480, 0.0F), 0.0},
        {"negative zero", {-0.0F}, 0.0},
        {"a full-scale square wave", {1.0F, -1.0F, 1.0F, -1.0F}, 1.0},
        {"constant 0.1 is -20 dBFS", Samples(480, 0.1F), 2.0 / 3.0},
        {"constant 0.01 is -40 dBFS", Samples(480, -0.01F), 1.0 / 3.0},
        {"constant 0.001 is -60 dBFS", Samples(480, 0.001F), 0.0},
        {"a full-scale sine, 3 dB below", {0.0F, 1.0F, 0.0F, -1.0F}, 1.0 - 3.0103 / 60.0},
    };
    for (const auto& [what, samples, meter] : cases) {
        SCOPED_TRACE(what);
        EXPECT_NEAR(AudioLevel::meter(samples), meter, 1e-7);
    }
}

TEST(AudioLevel, BelowTheFloorIsExactlyNothing) {
    for (const float sample :
         {0.000999F, 0.0005F, 1e-20F, std::numeric_limits<float>::denorm_min()}) {
        SCOPED_TRACE(sample);
        EXPECT_EQ(AudioLevel::meter(Samples(480, sample)), 0.0);
    }
}

TEST(AudioLevel, OverFullScaleIsExactlyFull) {
    for (const float sample : {1.0F, 1.5F, -40.0F, largest, infiniteSample, -infiniteSample}) {
        SCOPED_TRACE(sample);
        EXPECT_EQ(AudioLevel::meter(Samples(480, sample)), 1.0);
    }
}

TEST(AudioLevel, ASampleThatIsNoNumberReadsAsSilence) {
    EXPECT_EQ(AudioLevel::meter(Samples{0.5F, nanSample, 0.5F}), 0.0);
    EXPECT_EQ(AudioLevel::meter(Samples{nanSample}), 0.0);
}

TEST(AudioLevel, LouderNeverReadsLess) {
    Tests::forAll([](const std::vector<float>& samples) {
        const double meter = AudioLevel::meter(samples);
        RC_ASSERT(0.0 <= meter && meter <= 1.0);
        Samples louder = samples;
        for (float& sample : louder) {
            sample *= 2.0F;
        }
        RC_ASSERT(AudioLevel::meter(louder) >= meter);
    });
}

TEST(AudioLevel, NeverAllocates) {
    const Samples samples(4800, 0.1F);
    EXPECT_EQ(Tests::allocationsDuring([&] { std::ignore = AudioLevel::meter(samples); }), 0);
}

}  // namespace
}  // namespace PrompterCore
