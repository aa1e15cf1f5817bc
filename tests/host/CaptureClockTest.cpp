#include <cmath>
#include <concepts>
#include <cstdint>
#include <ostream>

#include <gtest/gtest.h>

#include "host/CaptureClock.h"

namespace Varnelle {

static void PrintTo(const CaptureClock::Correction& correction, std::ostream* out) {
    *out << correction.silence << " of silence, " << correction.dropped << " dropped";
}

namespace {

using Device = CaptureClock::Device;
using Correction = CaptureClock::Correction;

static_assert(std::copyable<CaptureClock> && std::equality_comparable<CaptureClock>);

TEST(CaptureClock, CorrectsOnlyWhatIsFarOff) {
    struct Case {
        const char* what;
        std::int64_t captured;
        double time;
        Device device;
        Correction correction;
    };
    const Case cases[] = {
        {"in time", 1000, 1.0, Device::runs, {}},
        {"a little late", 800, 1.0, Device::runs, {}},
        {"a little early", 1080, 1.0, Device::runs, {}},
        {"nothing yet", 0, 0.25, Device::runs, {}},
        {"late", 500, 1.0, Device::runs, {}},
        {"gone", 500, 1.0, Device::isAway, {.silence = 460, .dropped = 0}},
        {"away", 0, 0.25, Device::isAway, {.silence = 210, .dropped = 0}},
        {"away for a moment", 0, 0.03, Device::isAway, {}},
        {"far ahead", 1250, 1.0, Device::runs, {.silence = 0, .dropped = 250}},
    };
    for (const auto& [what, captured, time, device, correction] : cases) {
        SCOPED_TRACE(what);
        CaptureClock clock(1000);
        EXPECT_EQ(clock.take(captured, time, device), correction);
    }
}

TEST(CaptureClock, WhatABusyMachineGivesLateIsKept) {
    CaptureClock clock(1000);
    EXPECT_EQ(clock.take(1000, 1.0, Device::runs), Correction());
    EXPECT_EQ(clock.take(0, 1.5, Device::runs), Correction());
    EXPECT_EQ(clock.take(0, 2.9, Device::runs), Correction());
    EXPECT_EQ(clock.take(2000, 3.0, Device::runs), Correction()) << "all of it, in its place";
    EXPECT_EQ(clock.take(0, 4.9, Device::runs), Correction()) << "the wait begins anew";
    EXPECT_EQ(clock.take(1900, 4.91, Device::runs), Correction());
}

TEST(CaptureClock, WhatDoesNotComeInTwoSecondsIsLost) {
    CaptureClock clock(1000);
    EXPECT_EQ(clock.take(500, 1.0, Device::runs), Correction());
    EXPECT_EQ(clock.take(1990, 2.99, Device::runs), Correction());
    EXPECT_EQ(clock.take(10, 3.0, Device::runs), (Correction{.silence = 460, .dropped = 0}));
    EXPECT_EQ(clock.take(1000, 4.0, Device::runs), Correction()) << "and made up for";
}

TEST(CaptureClock, TheLengthIsTheTimeOverGapsAndDrift) {
    for (const double rate : {48000.0, 48000 * 1.001, 48000 * 0.999}) {
        SCOPED_TRACE(rate);
        CaptureClock clock(48000);
        double given = 0, captured = 0;
        for (int frame = 1; frame <= 60 * 60 * 30; ++frame) {
            const double time = frame / 30.0;
            const bool isAway = frame % 3000 > 2900;
            const auto more = isAway ? 0 : static_cast<std::int64_t>(rate / 30);
            captured += static_cast<double>(more);
            const Correction correction =
                clock.take(more, time, isAway ? Device::isAway : Device::runs);
            given += static_cast<double>(more + correction.silence - correction.dropped);
            ASSERT_LE(std::abs(given / 48000 - time), CaptureClock::longestLag + 0.01) << time;
        }
        EXPECT_NE(given, captured);
    }
}

TEST(CaptureClock, RefusesACaptureWithoutSamples) {
    EXPECT_DEATH(CaptureClock(0), "a capture has samples");
}

}  // namespace
}  // namespace Varnelle
