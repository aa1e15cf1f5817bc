#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>

#include "PrompterCore/support/ClosedRange.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ClosedRange<double>> && std::equality_comparable<ClosedRange<double>>);

TEST(ClosedRange, HoldsBothItsEnds) {
    const ClosedRange<double> rates(23.976, 30);
    EXPECT_TRUE(rates.contains(23.976));
    EXPECT_TRUE(rates.contains(30));
    EXPECT_FALSE(rates.contains(std::nextafter(23.976, 0)));
    EXPECT_FALSE(rates.contains(std::nextafter(30.0, 31)));
    EXPECT_FALSE(rates.contains(std::nan("")));
}

TEST(ClosedRange, MayHoldOneValue) {
    const ClosedRange<std::int64_t> one(7, 7);
    EXPECT_TRUE(one.contains(7));
    EXPECT_FALSE(one.contains(6) || one.contains(8));
    EXPECT_EQ(one, ClosedRange<std::int64_t>(7, 7));
    EXPECT_NE(one, ClosedRange<std::int64_t>(7, 8));
}

TEST(ClosedRangeDeathTest, RefusesEndsThatAreOutOfOrder) {
    const char* const rule = "lower bound is not above";
    EXPECT_DEATH(ClosedRange<double>(2, 1), rule);
    EXPECT_DEATH(ClosedRange<double>(std::nan(""), 1), rule);
    EXPECT_DEATH(ClosedRange<double>(1, std::nan("")), rule);
}

}  // namespace
}  // namespace PrompterCore
