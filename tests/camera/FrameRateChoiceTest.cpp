#include <cmath>
#include <limits>

#include "PrompterCore/camera/FrameRateChoice.h"
#include "tests/reference/PlainCamera.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Rates = std::vector<std::int64_t>;
using Ranges = std::vector<ClosedRange<double>>;
using FrameRateChoice::chosen;
using FrameRateChoice::offered;

using Tests::infinity;

TEST(FrameRateChoice, DoesWhatItsManualShows) {
    EXPECT_EQ(FrameRateChoice::target, 30);
    EXPECT_EQ(FrameRateChoice::offered({{3, 60}}), (Rates{60, 50, 30, 25, 24}));
    EXPECT_EQ(FrameRateChoice::chosen({{1, 30}}, 29), 29);
    EXPECT_EQ(FrameRateChoice::chosen({{1, 30}}, std::nullopt), 30);
}

TEST(FrameRateChoice, OffersStandardRatesAndEachTop) {
    const struct {
        const char* what;
        Ranges ranges;
        Rates rates;
    } cases[] = {
        {"no range", {}, {}},
        {"a fixed rate, rounded", {{29.97, 29.97}}, {30}},
        {"another", {{59.94, 59.94}}, {60}},
        {"to 30", {{1, 30}}, {30, 25, 24}},
        {"to 60", {{3, 60}}, {60, 50, 30, 25, 24}},
        {"from nearly 24", {{23.976, 30}}, {30, 25, 24}},
        {"a top beyond the standard rates", {{1, 240}}, {240, 120, 60, 50, 30, 25, 24}},
        {"two ranges", {{15, 15}, {15, 30}}, {30, 25, 24, 15}},
        {"fixed, although two standard rates are near", {{24.1, 24.5}}, {25}},
        {"a half of a frame makes it wide", {{24.5, 25}}, {25, 24}},
        {"a half rounds away from zero", {{10, 12.5}}, {13}},
        {"half a frame beyond the top counts", {{20, 24.5}}, {25, 24}},
        {"below zero too", {{-2.5, -2.5}}, {-3}},
        {"the same top twice", {{30, 30}, {29.97, 29.97}}, {30}},
        {"30.4 is 30", {{30.4, 30.4}}, {30}},
    };
    for (const auto& [what, ranges, rates] : cases) {
        EXPECT_EQ(offered(ranges), rates) << what;
    }
}

TEST(FrameRateChoice, ChoosesThePreferredThenThirtyThenTheNearest) {
    const struct {
        const char* what;
        Ranges ranges;
        std::optional<std::int64_t> preferred, rate;
    } cases[] = {
        {"what is supported, offered or not", {{1, 30}}, 29, 29},
        {"what is not supported", {{1, 30}}, 60, 30},
        {"nothing preferred", {{1, 30}}, {}, 30},
        {"nearest of two fixed rates", {{25, 25}, {50, 50}}, {}, 25},
        {"the faster of two as near", {{20, 20}, {40, 40}}, {}, 40},
        {"the only one", {{15, 15}}, {}, 15},
        {"no range", {}, {}, {}},
        {"no range, one preferred", {}, 30, {}},
        {"half a frame beyond the top", {{30.4, 30.4}}, {}, 30},
        {"exactly half a frame", {{30.5, 31}}, {}, 30},
        {"preferred within half a frame", {{59.94, 59.94}}, 60, 60},
        {"the offered one is not supported itself", {{40, 40.5}}, {}, 41},
    };
    for (const auto& [what, ranges, preferred, rate] : cases) {
        EXPECT_EQ(chosen(ranges, preferred), rate) << what;
    }
}

TEST(FrameRateChoice, AgreesWithTryingEachRate) {
    constexpr std::int64_t most = 130;
    Tests::forAll(
        [] {
            const auto quarters = rc::gen::inRange<std::int64_t>(0, 4 * most - 2);
            Ranges ranges;
            const auto count = *rc::gen::inRange(0, 4);
            for (int i = 0; i < count; ++i) {
                const double a = static_cast<double>(*quarters) / 4,
                             b = static_cast<double>(*quarters) / 4;
                const bool isFixed = *rc::gen::arbitrary<bool>();
                ranges.emplace_back(std::min(a, b), isFixed ? std::min(a, b) : std::max(a, b));
            }
            RC_ASSERT(offered(ranges) == Plain::offered(ranges, most));
            const auto preferred = *rc::gen::maybe(rc::gen::inRange<std::int64_t>(0, most));
            const auto wanted = preferred ? std::optional<std::int64_t>(*preferred) : std::nullopt;
            RC_ASSERT(chosen(ranges, wanted) == Plain::chosen(ranges, wanted, most));
        },
        500);
}

TEST(FrameRateChoiceDeathTest, StopsWhereARangeIsNoRange) {
    const char* const rule = "finite ends";
    EXPECT_DEATH(static_cast<void>(offered({{24, infinity}})), rule);
    EXPECT_DEATH(static_cast<void>(offered({{-infinity, 30}})), rule);
    EXPECT_DEATH(static_cast<void>(chosen({{1, 30}, {24, infinity}}, 30)), rule);
    EXPECT_DEATH(static_cast<void>(chosen({{24, infinity}}, std::nullopt)), rule);
    EXPECT_DEATH(static_cast<void>(offered({{1, std::nan("")}})), "lower bound is not above");
    EXPECT_DEATH(static_cast<void>(offered({{60, 30}})), "lower bound is not above");
}

TEST(FrameRateChoiceDeathTest, StopsWhereATopRateDoesNotFit) {
    EXPECT_DEATH(static_cast<void>(offered({{1, 0x1p63}})), "a whole number fits 64 bits");
    EXPECT_DEATH(static_cast<void>(chosen({{40, 0x1p63}}, std::nullopt)),
                 "a whole number fits 64 bits");
    EXPECT_EQ(chosen({{-0x1p63, -0x1p63}}, std::nullopt), std::numeric_limits<std::int64_t>::min());
}

}  // namespace
}  // namespace PrompterCore
