#include <array>
#include <cmath>
#include <concepts>
#include <limits>
#include <optional>

#include "PrompterCore/takes/TakeBarLayout.h"
#include "PrompterCore/takes/TakeBarMode.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Mode = TakeBarMode;
using Density = TakeBarLayout::Density;

static_assert(std::copyable<Mode> && std::equality_comparable<Mode>);
static_assert(std::copyable<TakeBarInputs> && std::equality_comparable<TakeBarInputs>);
static_assert(std::copyable<TakeBarLayout> && std::equality_comparable<TakeBarLayout>);
static_assert(Density::minimal < Density::compact && Density::compact < Density::full);
static_assert(TakeBarLayout::margin == 16.0);

const std::array modes = {Mode::countingDown(3), Mode::rest(), Mode::preparing(), Mode::recording(),
                          Mode::practising()};

// All inputs there are, a countdown standing for any.
TEST(TakeBarMode, TheFirstThatHoldsWins) {
    for (int bits = 0; bits < 32; ++bits) {
        const TakeBarInputs inputs{
            .preparingTake = (bits & 1) != 0,
            .countdown = (bits & 2) != 0 ? std::optional<std::int64_t>(bits) : std::nullopt,
            .recording = (bits & 4) != 0,
            .startingPractice = (bits & 8) != 0,
            .following = (bits & 16) != 0};
        SCOPED_TRACE(bits);
        const Mode mode = Mode::resolve(inputs);
        if ((bits & 4) != 0) {
            EXPECT_EQ(mode, Mode::recording());
        } else if ((bits & 2) != 0) {
            EXPECT_EQ(mode, Mode::countingDown(bits));
        } else if ((bits & 9) != 0) {
            EXPECT_EQ(mode, Mode::preparing());
        } else {
            EXPECT_EQ(mode, bits == 16 ? Mode::practising() : Mode::rest());
        }
        EXPECT_EQ(mode.isActive(), bits != 0);
    }
}

TEST(TakeBarMode, ACountdownOfNothingIsStillOne) {
    EXPECT_EQ(Mode::resolve({.countdown = 0}), Mode::countingDown(0));
    EXPECT_EQ(Mode::resolve({.countdown = -1, .following = true}), Mode::countingDown(-1));
    EXPECT_EQ(Mode::resolve({}), Mode::rest());
}

TEST(TakeBarMode, DiffersByItsCaseAndItsSeconds) {
    for (std::size_t i = 0; i < modes.size(); ++i)
        for (std::size_t k = 0; k < modes.size(); ++k)
            EXPECT_EQ(modes[i] == modes[k], i == k);
    EXPECT_NE(Mode::countingDown(1), Mode::countingDown(2));
}

TEST(TakeBarLayout, ChoosesTheDensestBarThatFits) {
    struct Case {
        const char* what;
        Mode mode;
        double width;
        TakeBarLayout layout;
    };
    const Case cases[] = {
        {"668 take all of it", Mode::recording(), 700, {Density::full, 648}},
        {"568 take less", Mode::recording(), 600, {Density::compact, 520}},
        {"268 take nothing", Mode::recording(), 300, {Density::minimal, 380}},
        {"counting down, just", Mode::countingDown(3), 300, {Density::full, 268}},
        {"counting down, just not", Mode::countingDown(3), 299, {Density::minimal, 268}},
        {"no room at all", Mode::rest(), -100, {Density::minimal, 262}},
        {"no number", Mode::rest(), std::nan(""), {Density::minimal, 262}},
        {"room without end",
         Mode::rest(),
         std::numeric_limits<double>::infinity(),
         {Density::full, 448}},
    };
    for (const auto& [what, mode, width, layout] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(TakeBarLayout::fitting(mode, width), layout);
    }
}

TEST(TakeBarLayout, EveryWidthHasItsThreshold) {
    struct Case {
        Mode mode;
        double full, compact, minimal;
    };
    const Case cases[] = {
        {Mode::rest(), 448, 404, 262},          {Mode::preparing(), 268, 268, 268},
        {Mode::recording(), 648, 520, 380},     {Mode::practising(), 600, 472, 332},
        {Mode::countingDown(9), 268, 268, 268},
    };
    for (const auto& [mode, full, compact, minimal] : cases) {
        SCOPED_TRACE(full);
        const auto at = [&mode = mode](double width) {
            return TakeBarLayout::fitting(mode, width);
        };
        const TakeBarLayout least{Density::minimal, minimal};
        const TakeBarLayout middle{Density::compact, compact};
        EXPECT_EQ(at(full + 32), (TakeBarLayout{Density::full, full}));
        EXPECT_EQ(at(full + 31.999), full == compact ? least : middle);
        if (full != compact) {
            EXPECT_EQ(at(compact + 32), middle);
        }
        EXPECT_EQ(at(compact + 31.999), least);
        EXPECT_EQ(at(0), least);
    }
}

TEST(TakeBarLayout, MoreRoomNeverShowsLess) {
    Tests::forAll([](std::uint16_t width, std::uint16_t more) {
        for (const Mode& mode : modes) {
            const auto narrow = TakeBarLayout::fitting(mode, width / 64.0);
            const auto wide = TakeBarLayout::fitting(mode, (width + more) / 64.0);
            RC_ASSERT(narrow.density <= wide.density);
            RC_ASSERT(narrow.width <= wide.width);
        }
    });
}

}  // namespace
}  // namespace PrompterCore
