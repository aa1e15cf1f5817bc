#include <cmath>
#include <concepts>
#include <type_traits>
#include <utility>
#include <vector>

#include "PrompterCore/voice/ScrollModel.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ScrollModel> && std::equality_comparable<ScrollModel>);
static_assert(std::copyable<ScrollConfig> && std::equality_comparable<ScrollConfig>);
static_assert(!std::is_default_constructible_v<ScrollConfig>);
static_assert(noexcept(std::declval<ScrollModel&>().tickAt(0.0)));
static_assert(noexcept(std::declval<ScrollModel&>().anchor(0, 0.0)));
static_assert(noexcept(std::declval<ScrollModel&>().jumpTo(0, 0.0)));
static_assert(std::is_nothrow_move_assignable_v<ScrollModel>);

constexpr bool speaking = true;
constexpr bool silent = false;
using Tests::infinity;
using Tests::nan;

const ScrollConfig config{.defaultRate = 2.0,
                          .minRate = 1.0,
                          .maxRate = 8.0,
                          .rateSmoothing = 0.5,
                          .convergence = 4.0,
                          .maxLead = 6.0,
                          .holdAfterSilence = 1.5,
                          .predictionGain = 1.0,
                          .backStepThreshold = 1.0,
                          .backStepDelay = 0.5};

// A display that stands at `position`, ticked at 0 s, with an anchor `behind` tokens before it.
ScrollModel ahead(std::int64_t position, std::int64_t behind) {
    ScrollModel model(config);
    model.jumpTo(position, 0.0);
    model.tickAt(0.0);
    model.anchor(position - behind, 0.0);
    return model;
}

TEST(ScrollModel, StartsAtTheFirstTokenInSilence) {
    const ScrollModel model(config);
    EXPECT_EQ(model.position(), 0.0);
    EXPECT_EQ(model.rate(), 2.0);
    EXPECT_EQ(model.config(), config);
}

TEST(ScrollModel, TheFirstTickShowsTheAnchorWithoutEasing) {
    ScrollModel model(config);
    EXPECT_EQ(model.tickAt(5.0), 0.0);
    model.anchor(10, 5.0);
    EXPECT_EQ(model.tickAt(5.0), 0.0);  // 5 s was stored: no time has passed
    EXPECT_EQ(model.tickAt(5.25), (1.0 - std::exp(-4.0 * 0.25)) * 10.0);

    ScrollModel anchored(config);
    anchored.setSpeaking(speaking);
    anchored.anchor(12, 3.0);
    EXPECT_EQ(anchored.tickAt(3.016), 12.0);
}

TEST(ScrollModel, RateLearnsFromForwardAnchorsOnly) {
    struct Case {
        const char* what;
        std::int64_t token;
        double time, rate;
    };
    const Case cases[] = {
        {"4 tokens in 1 s, smoothed by half", 14, 2.0, 3.0},
        {"too soon to measure", 14, 1.1, 2.0},
        {"one token in a quarter of a second", 11, 1.25, 3.0},
        {"above the upper clamp", 110, 2.0, 5.0},
        {"below the lower clamp", 11, 101.0, 1.5},
        {"repeated", 10, 2.0, 2.0},
        {"backwards", 8, 2.0, 2.0},
        {"backwards in time", 14, 0.0, 2.0},
        {"never", 14, infinity, 1.5},
        {"at no time", 14, nan, 2.0},
    };
    for (const auto& [what, token, time, rate] : cases) {
        SCOPED_TRACE(what);
        ScrollModel model(config);
        model.anchor(10, 1.0);
        EXPECT_EQ(model.rate(), 2.0);
        model.anchor(token, time);
        EXPECT_EQ(model.rate(), rate);
    }
}

TEST(ScrollModel, FifteenHundredthsOfASecondAreEnoughToMeasure) {
    for (const auto& [time, rate] : {std::pair{0.15, 2.0 + 0.5 * (1.0 / 0.15 - 2.0)},
                                     std::pair{std::nextafter(0.15, 0.0), 2.0}}) {
        ScrollModel model(config);
        model.anchor(10, 0.0);
        model.anchor(11, time);
        EXPECT_EQ(model.rate(), rate);
    }
}

TEST(ScrollModel, AnAnchorTooSoonToMeasureStillMoves) {
    ScrollModel model(config);
    model.anchor(10, 1.0);
    model.anchor(14, 1.1);
    EXPECT_EQ(model.rate(), 2.0);
    EXPECT_EQ(model.tickAt(1.1), 14.0);
    model.anchor(16, 2.1);  // 2 tokens in 1 s since the anchor at 1.1 s
    EXPECT_EQ(model.rate(), 2.0 + 0.5 * (2.0 / (2.1 - 1.1) - 2.0));
}

TEST(ScrollModel, TheUpperClampWinsWhereTheClampsCross) {
    ScrollConfig crossed = config;
    crossed.minRate = 8.0;
    crossed.maxRate = 3.0;
    crossed.rateSmoothing = 1.0;
    for (const std::int64_t token : {11, 15, 100}) {
        ScrollModel model(crossed);
        model.anchor(10, 1.0);
        model.anchor(token, 2.0);
        EXPECT_EQ(model.rate(), 3.0) << token;
    }
}

TEST(ScrollModel, JumpClampsANegativeIndexAndAnchorDoesNot) {
    ScrollModel model(config);
    model.anchor(7, 0.0);
    model.tickAt(0.0);
    model.jumpTo(-3, 1.0);
    EXPECT_EQ(model.position(), 0.0);
    EXPECT_EQ(model.tickAt(9.0), 0.0);

    ScrollModel anchored(config);
    anchored.anchor(-3, 1.0);
    EXPECT_EQ(anchored.tickAt(1.0), -3.0);
}

TEST(ScrollModel, JumpKeepsTheRateAndTheSpeaking) {
    ScrollModel model(config);
    model.setSpeaking(speaking);
    model.anchor(10, 1.0);
    model.anchor(14, 2.0);
    model.tickAt(2.0);
    model.jumpTo(50, 3.0);
    EXPECT_EQ(model.rate(), 3.0);
    EXPECT_EQ(model.position(), 50.0);
    EXPECT_GT(model.tickAt(3.5), 50.0);
}

TEST(ScrollModel, RunsAheadOnlyWhileSpeakingAndNotForLong) {
    ScrollConfig instant = config;
    instant.convergence = 1e6;  // within one tick the display stands on its target
    struct Case {
        const char* what;
        bool voice;
        double time, position;
    };
    const Case cases[] = {
        {"silent: exactly the anchor", silent, 1.0, 10.0},
        {"speaking: rate x time ahead", speaking, 1.0, 12.0},
        {"no further than the lead", speaking, 3.5, 16.0},
        {"held to the end", speaking, 1.5 + 6.0 / 2.0, 16.0},
        {"then back to the anchor", speaking, 4.5001, 10.0},
    };
    for (const auto& [what, voice, time, position] : cases) {
        SCOPED_TRACE(what);
        ScrollModel model(instant);
        model.tickAt(-1.0);
        model.setSpeaking(voice);
        model.anchor(10, 0.0);
        EXPECT_EQ(model.tickAt(time), position);
    }
}

TEST(ScrollModel, TheGainChangesTheLeadAndNotHowLongItIsHeld) {
    ScrollConfig doubled = config;
    doubled.convergence = 1e6;
    doubled.predictionGain = 2.0;
    ScrollModel model(doubled);
    model.tickAt(-1.0);
    model.setSpeaking(speaking);
    model.anchor(10, 0.0);
    EXPECT_EQ(ScrollModel(model).tickAt(1.0), 14.0);
    EXPECT_EQ(ScrollModel(model).tickAt(4.5), 16.0);
    EXPECT_EQ(ScrollModel(model).tickAt(4.5001), 10.0);
}

TEST(ScrollModel, ARateOfZeroNeverTimesOut) {
    ScrollConfig still = config;
    still.defaultRate = 0.0;
    ScrollModel model(still);
    model.tickAt(-1.0);
    model.setSpeaking(speaking);
    model.anchor(10, 0.0);
    EXPECT_EQ(model.tickAt(1e9), 10.0);
}

TEST(ScrollModel, BeforeTheFirstAnchorItStays) {
    ScrollModel model(config);
    model.setSpeaking(speaking);
    model.tickAt(0.0);
    EXPECT_EQ(model.tickAt(10.0), 0.0);
}

TEST(ScrollModel, ASmallDisagreementIsHeldForever) {
    // A prediction that came to nothing leaves the display half a token ahead.
    ScrollModel model(config);
    model.tickAt(0.0);
    model.setSpeaking(speaking);
    model.anchor(10, 0.0);
    double shown = 0;
    double time = 0;
    while (shown < 10.5) {
        time += 0.001;
        shown = model.tickAt(time);
    }
    model.setSpeaking(silent);
    for (int second = 1; second < 100; ++second) {
        EXPECT_EQ(model.tickAt(time + second), shown);
    }
}

TEST(ScrollModel, AStepBackWaitsForItsDelay) {
    ScrollModel model = ahead(10, 3);
    EXPECT_EQ(model.tickAt(1.0), 10.0);  // the timer starts
    EXPECT_EQ(model.tickAt(1.25), 10.0);
    EXPECT_EQ(model.tickAt(1.4375), 10.0);
    const double eased = model.tickAt(1.5);
    EXPECT_EQ(eased, 10.0 + (1.0 - std::exp(-4.0 * 0.0625)) * (7.0 - 10.0));
    EXPECT_LT(model.tickAt(1.75), eased);
}

TEST(ScrollModel, AStepBackStopsAtTheThreshold) {
    ScrollModel model = ahead(10, 3);
    for (int tick = 0; tick < 2000; ++tick) {
        model.tickAt(tick * 0.01);
    }
    EXPECT_LT(model.position(), 8.0);
    EXPECT_GT(model.position(), 7.9);
}

TEST(ScrollModel, OneTickOfAgreementStartsTheDelayAgain) {
    struct Case {
        const char* what;
        std::int64_t anchor;
    };
    for (const auto& [what, anchor] :
         {Case{"the gap is below the threshold", 10}, {"the display is behind", 12}}) {
        SCOPED_TRACE(what);
        ScrollModel model = ahead(10, 3);
        model.tickAt(1.0);
        model.tickAt(1.4);
        model.anchor(anchor, 1.4);
        model.tickAt(1.4);  // no time passes, so nothing moves, but the timer is cleared
        model.anchor(7, 1.4);
        EXPECT_EQ(model.tickAt(1.45), 10.0);  // it starts again here
        EXPECT_EQ(model.tickAt(1.9), 10.0);
        EXPECT_LT(model.tickAt(1.96), 10.0);
    }
}

TEST(ScrollModel, AJumpClearsTheDelay) {
    ScrollModel model = ahead(10, 3);
    model.tickAt(1.0);
    model.jumpTo(20, 1.4);
    model.anchor(17, 1.4);
    EXPECT_EQ(model.tickAt(1.5), 20.0);
    EXPECT_EQ(model.tickAt(1.9), 20.0);
    EXPECT_LT(model.tickAt(2.0), 20.0);
}

TEST(ScrollModel, AGapOfExactlyTheThresholdIsEnough) {
    ScrollModel model = ahead(10, 1);
    model.tickAt(1.0);
    EXPECT_LT(model.tickAt(1.5), 10.0);
}

TEST(ScrollModel, TimeThatRunsBackwardsDoesNotMoveTheDisplay) {
    ScrollModel model(config);
    model.tickAt(10.0);
    model.anchor(5, 10.0);
    EXPECT_EQ(model.tickAt(9.0), 0.0);
    EXPECT_GT(model.tickAt(9.5), 0.0);  // half a second after the tick at 9 s
}

TEST(ScrollModel, ATimeThatIsNoNumberDoesNotMoveTheDisplay) {
    ScrollModel model(config);
    model.tickAt(1.0);
    model.anchor(5, 1.0);
    EXPECT_EQ(model.tickAt(nan), 0.0);
    EXPECT_EQ(model.tickAt(2.0), 0.0);  // nothing to count from
    EXPECT_GT(model.tickAt(2.5), 0.0);
}

TEST(ScrollModel, ResetForgetsEverythingButTheConfiguration) {
    ScrollModel model = ahead(10, 3);
    model.setSpeaking(speaking);
    model.anchor(14, 2.0);
    model.tickAt(3.0);
    EXPECT_NE(model, ScrollModel(config));
    model.reset();
    EXPECT_EQ(model, ScrollModel(config));
}

TEST(ScrollModel, StepsOfAnySizeEaseToTheSamePlace) {
    Tests::forAll([] {
        const auto cuts = *rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 50));
        ScrollModel fine(config);
        fine.tickAt(0.0);
        fine.anchor(40, 0.0);
        ScrollModel coarse = fine;
        double time = 0.0;
        double before = 0.0;
        for (const int cut : cuts) {
            time += cut * 0.01;
            const double shown = fine.tickAt(time);
            RC_ASSERT(before <= shown && shown <= 40.0);
            before = shown;
        }
        RC_ASSERT(std::abs(coarse.tickAt(time) - fine.position()) < 1e-9);
    });
}

TEST(ScrollModel, NeverAllocates) {
    ScrollModel model(config);
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  model.setSpeaking(speaking);
                  model.tickAt(0.0);
                  model.anchor(10, 1.0);
                  model.anchor(14, 2.0);
                  model.tickAt(2.5);
                  model.jumpTo(3, 3.0);
                  model.anchor(0, 3.0);
                  model.tickAt(3.5);
                  model.tickAt(9.0);
                  const ScrollModel copy = model;
                  model.reset();
                  EXPECT_NE(copy, model);
              }),
              0);
}

}  // namespace
}  // namespace PrompterCore
