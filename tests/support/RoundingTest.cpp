#include <cmath>
#include <limits>

#include "PrompterCore/support/Rounding.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::infinity;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Rounding, HalvesGoAwayFromZero) {
    struct Case {
        const char* what;
        double value;
        std::int64_t nearest, truncated;
    };
    const Case cases[] = {
        {"an even half", 2.5, 3, 2},
        {"an odd half", 3.5, 4, 3},
        {"a negative half", -2.5, -3, -2},
        {"half of one", 0.5, 1, 0},
        {"minus half of one", -0.5, -1, 0},
        {"the number before a half", 0.49999999999999994, 0, 0},
        {"just below a whole", 2.9, 3, 2},
        {"just above minus three", -2.9, -3, -2},
        {"minus zero", -0.0, 0, 0},
        {"odd and beyond halves", 4503599627370497.0, 4503599627370497, 4503599627370497},
        {"the lowest that fits", -0x1p63, INT64_MIN, INT64_MIN},
        {"the highest that fits", 0x1.fffffffffffffp62, 9223372036854774784, 9223372036854774784},
    };
    for (const auto& [what, value, nearest, truncated] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(roundedToNearest(value), nearest);
        EXPECT_EQ(truncatedTowardZero(value), truncated);
    }
}

TEST(Rounding, WholeNumbersStayAndNegationMirrors) {
    Tests::forAll([](std::int32_t whole, double any) {
        RC_ASSERT(roundedToNearest(whole) == whole);
        RC_ASSERT(truncatedTowardZero(whole) == whole);
        const double value = std::fmod(any, 1e15);
        RC_ASSERT(roundedToNearest(-value) == -roundedToNearest(value));
        RC_ASSERT(truncatedTowardZero(-value) == -truncatedTowardZero(value));
    });
}

TEST(RoundingDeathTest, WhatIsNotFiniteOrDoesNotFitStopsTheProgram) {
    for (const double value : {infinity, -infinity, notANumber, 0x1p63, -0x1.0000000000001p63}) {
        SCOPED_TRACE(value);
        EXPECT_DEATH(static_cast<void>(roundedToNearest(value)), "a whole number fits 64 bits");
        EXPECT_DEATH(static_cast<void>(truncatedTowardZero(value)), "a whole number fits 64 bits");
    }
}

}  // namespace
}  // namespace PrompterCore
