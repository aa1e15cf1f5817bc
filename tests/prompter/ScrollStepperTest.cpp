#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/ScrollStepper.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::infinity;

static_assert(std::copyable<ScrollStepper> && std::equality_comparable<ScrollStepper>);
static_assert(!std::convertible_to<double, ScrollStepper>);
static_assert(!std::default_initializable<ScrollStepper>);
static_assert(noexcept(std::declval<ScrollStepper&>().add(1)));

TEST(ScrollStepper, DoesWhatItsManualShows) {
    ScrollStepper stepper{.threshold = 10};
    EXPECT_EQ(stepper.add(4), 0);
    EXPECT_EQ(stepper.add(7), 1);
    EXPECT_EQ(stepper.add(-3), 0);
    EXPECT_EQ(stepper.pending, -3);
}

TEST(ScrollStepper, KeepsTheRemainderUntilTheDirectionChanges) {
    struct Case {
        const char* what;
        double delta;
        std::int64_t steps;
        double pending;
    };
    const Case cases[] = {
        {"not enough", 4, 0, 4},
        {"enough with what was pending", 7, 1, 1},
        {"turned back: the remainder is dropped", -3, 0, -3},
        {"two steps up and a rest", -25, -2, -8},
        {"exactly a step", -2, -1, 0},
        {"from nothing pending either way", 30, 3, 0},
    };
    ScrollStepper stepper{.threshold = 10};
    EXPECT_EQ(stepper.pending, 0);
    for (const auto& [what, delta, steps, pending] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(stepper.add(delta), steps);
        EXPECT_EQ(stepper.pending, pending);
    }
}

TEST(ScrollStepper, NoMoveDropsAPositiveRemainderAndKeepsANegativeOne) {
    for (const double nothing : {0.0, -0.0}) {
        ScrollStepper stepper{.threshold = 10};
        stepper.pending = 4;
        EXPECT_EQ(stepper.add(nothing), 0);
        EXPECT_EQ(stepper.pending, 0);
        stepper.pending = -4;
        EXPECT_EQ(stepper.add(nothing), 0);
        EXPECT_EQ(stepper.pending, -4);
    }
}

TEST(ScrollStepper, NegativeThresholdTurnsTheStepsAround) {
    ScrollStepper stepper{.threshold = -10};
    EXPECT_EQ(stepper.add(25), -2);
    EXPECT_EQ(stepper.pending, 5);
}

TEST(ScrollStepper, ThresholdWithoutEndNeverSteps) {
    ScrollStepper stepper{.threshold = infinity};
    EXPECT_EQ(stepper.add(25), 0);
    EXPECT_TRUE(std::isnan(stepper.pending)) << "infinity times no steps";
}

TEST(ScrollStepper, IsAValue) {
    ScrollStepper stepper{.threshold = 10};
    stepper.add(4);
    ScrollStepper other = stepper;
    EXPECT_EQ(other, stepper);
    other.add(7);
    EXPECT_NE(other, stepper);
    EXPECT_EQ(stepper.pending, 4);
}

TEST(ScrollStepper, StepsAndRemainderAddUpToWhatWasScrolled) {
    Tests::forAll(
        [](const std::vector<std::uint8_t>& quarters) {
            const double direction = *rc::gen::element(-1.0, 1.0);
            const double threshold = *rc::gen::inRange(1, 100) / 4.0;
            ScrollStepper stepper{.threshold = threshold};
            double scrolled = 0;
            std::int64_t steps = 0;
            for (const std::uint8_t quarter : quarters) {
                const double delta = direction * (quarter + 1) / 4.0;  // never 0: no change of mind
                scrolled += delta;
                steps += stepper.add(delta);
                // All quarters: exact.
                RC_ASSERT(static_cast<double>(steps) * threshold + stepper.pending == scrolled);
                RC_ASSERT(std::abs(stepper.pending) < threshold);
            }
        },
        500);
}

TEST(ScrollStepper, TurningBackStartsAnew) {
    Tests::forAll([](std::uint8_t down, std::uint8_t up) {
        ScrollStepper stepper{.threshold = 7};
        ScrollStepper fresh = stepper;
        stepper.add(down + 1.0);
        RC_ASSERT(stepper.add(-up - 1.0) == fresh.add(-up - 1.0));
        RC_ASSERT(stepper == fresh);
    });
}

TEST(ScrollStepperDeathTest, StepsThatDoNotFitStopTheProgram) {
    const char* const rule = "a whole number fits 64 bits";
    EXPECT_DEATH(ScrollStepper{.threshold = 0}.add(0), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = 0}.add(1), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = -0.0}.add(1), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = std::nan("")}.add(1), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = 10}.add(infinity), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = 10}.add(-infinity), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = 10}.add(std::nan("")), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = infinity}.add(infinity), rule);
    // Both finite, their quotient too large.
    EXPECT_DEATH(ScrollStepper{.threshold = 1}.add(0x1p63), rule);
    EXPECT_DEATH(ScrollStepper{.threshold = 1e-300}.add(1e300), rule);
    EXPECT_EQ(ScrollStepper{.threshold = 1}.add(-0x1p63), std::numeric_limits<std::int64_t>::min());
}

TEST(ScrollStepper, NeverAllocates) {
    ScrollStepper stepper{.threshold = 10};
    EXPECT_EQ(Tests::allocationsDuring([&] { stepper.add(25); }), 0);
}

}  // namespace
}  // namespace PrompterCore
