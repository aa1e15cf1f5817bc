#include <limits>

#include "PrompterCore/support/Integers.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::least;
using Tests::most;

TEST(Integers, CheckedResultsReachBothEnds) {
    EXPECT_EQ(checkedAdd(most - 1, 1), most);
    EXPECT_EQ(checkedAdd(least + 1, -1), least);
    EXPECT_EQ(checkedSubtract(-1, most), least);
    EXPECT_EQ(checkedSubtract(-1, least), most);
    EXPECT_EQ(checkedMultiply(400, 60), 24000);
    EXPECT_EQ(checkedMultiply(least, 1), least);
    EXPECT_EQ(checkedMultiply(most, 0), 0);
}

TEST(IntegersDeathTest, WhatDoesNotFitStopsTheProgram) {
    EXPECT_DEATH(static_cast<void>(checkedAdd(most, 1)), "a sum fits 64 bits");
    EXPECT_DEATH(static_cast<void>(checkedAdd(least, -1)), "a sum fits 64 bits");
    EXPECT_DEATH(static_cast<void>(checkedSubtract(least, 1)), "a difference fits 64 bits");
    EXPECT_DEATH(static_cast<void>(checkedSubtract(0, least)), "a difference fits 64 bits");
    EXPECT_DEATH(static_cast<void>(checkedMultiply(least, -1)), "a product fits 64 bits");
    EXPECT_DEATH(static_cast<void>(checkedMultiply(most, 2)), "a product fits 64 bits");
}

TEST(Integers, SaturatingSumStaysAtTheNearestEnd) {
    EXPECT_EQ(saturatingAdd(1, 2), 3);
    EXPECT_EQ(saturatingAdd(most, 1), most);
    EXPECT_EQ(saturatingAdd(most, most), most);
    EXPECT_EQ(saturatingAdd(least, -1), least);
    EXPECT_EQ(saturatingAdd(least, least), least);
    EXPECT_EQ(saturatingAdd(least, most), -1);
}

TEST(Integers, SaturatingSumIsTheClampedTrueSum) {
    Tests::forAll([](std::int64_t a, std::int64_t b) {
        const std::int64_t far = *rc::gen::element<std::int64_t>(0, most - 50, least + 50);
        const std::int64_t x = a / 2 + far / 2;
        const long double sum = static_cast<long double>(x) + static_cast<long double>(b);
        const auto top = static_cast<long double>(most), bottom = static_cast<long double>(least);
        const long double clamped = sum > top ? top : sum < bottom ? bottom : sum;
        RC_ASSERT(static_cast<long double>(saturatingAdd(x, b)) == clamped);
    });
}

TEST(Integers, DistanceReachesFromOneEndToTheOther) {
    EXPECT_EQ(distanceBetween(-2, 3), 5U);
    EXPECT_EQ(distanceBetween(most, most), 0U);
    EXPECT_EQ(distanceBetween(least, most), std::numeric_limits<std::uint64_t>::max());
}

TEST(Integers, SignedCountIsTheSize) { EXPECT_EQ(signedCount(std::size_t{3}), 3); }

}  // namespace
}  // namespace PrompterCore
