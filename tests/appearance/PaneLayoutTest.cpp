#include <algorithm>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

#include "PrompterCore/appearance/PaneLayout.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using PaneLayout::fit;
using PaneLayout::Pane;
using Panes = std::vector<Pane>;
using Widths = std::vector<double>;

static_assert(std::copyable<Pane> && std::equality_comparable<Pane>);
static_assert(!std::default_initializable<Pane>);

const Panes two = {{.preferred = 300, .minimum = 200}, {.preferred = 500, .minimum = 300}};

double sum(const Widths& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }

TEST(PaneLayout, SharesWhatIsMissingByWhatEachCanGiveUp) {
    const Widths widths = fit(two, 700, 0);
    ASSERT_EQ(widths.size(), 2U);
    EXPECT_DOUBLE_EQ(widths[0], 300 - 100.0 / 3);
    EXPECT_DOUBLE_EQ(widths[1], 500 - 200.0 / 3);
}

TEST(PaneLayout, FitsItsPanes) {
    struct Case {
        const char* what;
        Panes panes;
        double total, reserved;
        Widths widths;
    };
    const Panes rigid = {{.preferred = 300, .minimum = 300}, {.preferred = 500, .minimum = 500}};
    const Panes growing = {{.preferred = 100, .minimum = 150}, {.preferred = 300, .minimum = 100}};
    const Panes nothing = {{.preferred = 0, .minimum = 10}};
    const Case cases[] = {
        {"plenty", two, 1000, 0, {300, 500}},
        {"just enough", two, 800, 0, {300, 500}},
        {"just enough beside what stays free", two, 900, 100, {300, 500}},
        {"what stays free counts", two, 800, 150, {250, 400}},
        {"a reserve below 0 is room", two, 500, -150, {250, 400}},
        {"the minimum", two, 500, 0, {200, 300}},
        {"below the minimum", two, 400, 0, {200, 300}},
        {"nothing at all", two, 0, 0, {200, 300}},
        {"less than nothing", two, 100, 900, {200, 300}},
        {"rigid panes that fit", rigid, 800, 0, {300, 500}},
        {"rigid panes that do not", rigid, 700, 0, {300, 500}},
        {"more minimum than preferred in all", {{.preferred = 300, .minimum = 400}}, 200, 0, {400}},
        {"one of them grows", growing, 325, 0, {125, 200}},
        {"one of them grows to its minimum", growing, 100, 0, {150, 100}},
        {"panes that want nothing, in nothing", nothing, 0, 0, {0}},
        {"panes that want nothing, in less", nothing, 0, 50, {0}},
        {"panes that want less than nothing", {{.preferred = -5, .minimum = -10}}, 0, 0, {-5}},
        {"no panes", {}, 700, 0, {}},
        {"no panes, no room", {}, 0, 700, {}},
    };
    for (const auto& [what, panes, total, reserved, widths] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(fit(panes, total, reserved), widths);
    }
}

TEST(PaneLayout, WidthsThatAreNoNumbersHaveAnAnswerToo) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(fit(two, notANumber, 0), (Widths{200, 300}));
    EXPECT_EQ(fit(two, std::numeric_limits<double>::infinity(), 0), (Widths{300, 500}));
    EXPECT_EQ(fit(Panes{{.preferred = notANumber, .minimum = 10}}, 100, 0), Widths{10});
}

TEST(PaneLayout, StaysBetweenMinimumAndPreferredAndFillsTheWidth) {
    Tests::forAll([](const std::vector<std::pair<std::uint16_t, std::uint16_t>>& drawn) {
        Panes panes;
        double preferred = 0;
        double minimum = 0;
        for (const auto& [least, more] : drawn) {
            panes.push_back({.preferred = double(least) + more, .minimum = double(least)});
            preferred += double(least) + more;
            minimum += least;
        }
        const double total = *rc::gen::inRange(-1000, 100'000);
        const double reserved = *rc::gen::inRange(-100, 1000);
        const Widths widths = fit(panes, total, reserved);
        RC_ASSERT(widths.size() == panes.size());
        const double slip = 1e-9 * (1 + preferred);
        for (std::size_t i = 0; i < panes.size(); i++) {
            RC_ASSERT(widths[i] >= panes[i].minimum - slip);
            RC_ASSERT(widths[i] <= panes[i].preferred + slip);
        }
        const double fitting = std::clamp(total - reserved, minimum, preferred);
        RC_ASSERT(std::abs(sum(widths) - fitting) <= slip);
    });
}

TEST(PaneLayout, MoreRoomNarrowsNoPane) {
    Tests::forAll([] {
        const double total = *rc::gen::inRange(0, 2000);
        const double more = *rc::gen::inRange(0, 2000);
        const Widths narrow = fit(two, total, 0);
        const Widths wide = fit(two, total + more, 0);
        for (std::size_t i = 0; i < narrow.size(); i++)
            RC_ASSERT(narrow[i] <= wide[i]);
    });
}

}  // namespace
}  // namespace PrompterCore
