#include <algorithm>
#include <array>
#include <limits>

#include "PrompterCore/appearance/EditorTextSize.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace EditorTextSize;  // NOLINT

using Tests::infinity;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(EditorTextSize, HasSixSteps) {
    EXPECT_EQ(steps, (std::array<double, 6>{15, 17, 19, 21, 24, 28}));
    EXPECT_EQ(standard, 19);
}

TEST(EditorTextSize, StepsUpAndDown) {
    struct Case {
        double size, bigger, smaller, clamped;
    };
    const Case cases[] = {
        {-infinity, 15, 15, 15},  {-1, 15, 15, 15},   {14.9, 15, 15, 15}, {15, 17, 15, 15},
        {16, 17, 15, 16},         {17, 19, 15, 17},   {19, 21, 17, 19},   {20, 21, 19, 20},
        {21, 24, 19, 21},         {22, 24, 21, 22},   {24, 28, 21, 24},   {27.5, 28, 24, 27.5},
        {28, 28, 24, 28},         {28.1, 28, 28, 28}, {40, 28, 28, 28},   {infinity, 28, 28, 28},
        {notANumber, 28, 15, 15},
    };
    for (const auto& [size, bigger, smaller, limited] : cases) {
        SCOPED_TRACE(size);
        EXPECT_EQ(biggerThan(size), bigger);
        EXPECT_EQ(smallerThan(size), smaller);
        EXPECT_EQ(clamped(size), limited);
    }
}

TEST(EditorTextSize, ReachesEveryStepInBothDirections) {
    for (std::size_t i = 1; i < steps.size(); i++) {
        EXPECT_EQ(biggerThan(steps[i - 1]), steps[i]);
        EXPECT_EQ(smallerThan(steps[i]), steps[i - 1]);
    }
}

TEST(EditorTextSize, NoStepLiesBetween) {
    Tests::forAll([] {
        const double size = *rc::gen::inRange(1000, 3500) / 100.0;
        RC_ASSERT(std::ranges::none_of(
            steps, [&](double step) { return size < step && step < biggerThan(size); }));
        RC_ASSERT(std::ranges::none_of(
            steps, [&](double step) { return smallerThan(size) < step && step < size; }));
        RC_ASSERT(clamped(clamped(size)) == clamped(size));
    });
}

}  // namespace
}  // namespace PrompterCore
