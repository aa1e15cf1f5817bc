#include <algorithm>
#include <cmath>
#include <concepts>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "PrompterCore/takes/CelebrationLog.h"
#include "PrompterCore/takes/Confetti.h"
#include "tests/reference/PlainConfetti.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Confetti::Piece;
using Tests::infinity;

static_assert(std::copyable<CelebrationLog> && std::equality_comparable<CelebrationLog>);
static_assert(std::copyable<Piece> && std::equality_comparable<Piece>);
static_assert(std::copyable<Piece::State> && std::equality_comparable<Piece::State>);
static_assert(Confetti::lifetime == 3.5 && Confetti::paletteCount == 7);

const Piece piece{.colour = 2,
                  .width = 7,
                  .height = 10,
                  .isRound = false,
                  .delay = 0.125,
                  .duration = 2.5,
                  .drift = 100,
                  .rise = -200,
                  .spin = 360};

TEST(CelebrationLog, EachMilestoneIsCelebratedOnce) {
    CelebrationLog log;
    EXPECT_TRUE(log.claim(Celebration::firstTake));
    EXPECT_FALSE(log.claim(Celebration::firstTake));
    EXPECT_EQ(log.stored, std::vector<Text>{"firstTake"});
    EXPECT_TRUE(log.claim(Celebration::finishedSetup));
    EXPECT_EQ(log.stored, (std::vector<Text>{"firstTake", "finishedSetup"}));
}

TEST(CelebrationLog, RemembersAnEarlierLaunch) {
    CelebrationLog log{.stored = {"finishedSetup", "of another version", "finishedSetup"}};
    const CelebrationLog before = log;
    EXPECT_FALSE(log.claim(Celebration::finishedSetup));
    EXPECT_EQ(log, before) << "nothing is tidied up";
    EXPECT_TRUE(log.claim(Celebration::firstTake));
    EXPECT_NE(log, before);
    EXPECT_EQ(log.stored.back(), "firstTake");
}

TEST(CelebrationLog, KeysMatchExactly) {
    CelebrationLog log{.stored = {"FirstTake", "first take"}};
    EXPECT_TRUE(log.claim(Celebration::firstTake));
    EXPECT_EQ(std::unordered_set<Celebration>({Celebration::firstTake}).size(), 1U);
}

TEST(Confetti, IsTheSameForASeedToTheBit) {
    const std::vector<Piece> known = {
        {6, 7.283816, 12.778416, false, 0.01514916, 2.3029697000000002, -423.8325, -365.31648,
         -271.38816},
        {6, 8.775152, 11.510898000000001, false, 0.09939833999999999, 2.0370315, 448.65990000000005,
         -256.47104, -552.79152},
        {0, 8.0, 8.0, true, 0.01974942, 2.5526774000000003, 30.920400000000047, -418.63424,
         530.9208},
    };
    EXPECT_EQ(Confetti::pieces(3, 42), known);
}

TEST(Confetti, HasAsManyPiecesAsAsked) {
    EXPECT_EQ(Confetti::pieces(0, 42), std::vector<Piece>());
    EXPECT_EQ(Confetti::pieces(3, 0), Confetti::pieces(3, 0x9E3779B97F4A7C15));
    EXPECT_NE(Confetti::pieces(3, 1), Confetti::pieces(3, 2));
    Tests::forAll([](std::uint64_t seed, std::uint8_t count) {
        const auto pieces = Confetti::pieces(count, seed);
        const auto more = Confetti::pieces(count + 5, seed);
        RC_ASSERT(pieces.size() == count);
        RC_ASSERT(std::equal(pieces.begin(), pieces.end(), more.begin()));
    });
}

TEST(Confetti, PiecesAreAsTheirTwins) {
    Tests::forAll([](std::uint64_t seed) {
        RC_ASSERT(Confetti::pieces(50, seed) == Tests::plainPieces(50, seed));
    });
    EXPECT_EQ(Confetti::pieces(2000, 0), Tests::plainPieces(2000, 0));
}

TEST(Confetti, PiecesKeepTheirBounds) {
    const auto pieces = Confetti::pieces(20000, 7);
    std::int64_t round = 0;
    std::vector<bool> colours(Confetti::paletteCount);
    for (const Piece& each : pieces) {
        if (each.isRound) {
            ++round;
            EXPECT_TRUE(each.width == 8 && each.height == 8);
        } else {
            EXPECT_TRUE(6 <= each.width && each.width < 10);
            EXPECT_TRUE(9 <= each.height && each.height < 15);
        }
        ASSERT_TRUE(0 <= each.colour && each.colour < Confetti::paletteCount);
        colours[static_cast<std::size_t>(each.colour)] = true;
        EXPECT_TRUE(0 <= each.delay && each.delay < 0.18);
        EXPECT_TRUE(2 <= each.duration && each.duration < 3.1);
        EXPECT_TRUE(-450 <= each.drift && each.drift < 450);
        EXPECT_TRUE(-460 < each.rise && each.rise <= -140);
        EXPECT_TRUE(-720 <= each.spin && each.spin < 720);
        EXPECT_EQ(each.stateAt(3.28).opacity, 0);
        EXPECT_EQ(each.stateAt(Confetti::lifetime).y, 560);
    }
    EXPECT_EQ(std::count(colours.begin(), colours.end(), true), 7);
    EXPECT_NEAR(static_cast<double>(round) / 20000, 0.3, 0.02);
}

TEST(Confetti, APieceIsThrownAndFalls) {
    struct Case {
        const char* what;
        double time;
        Piece::State state;
    };
    const Case cases[] = {
        {"before the burst", -1, {0, 0, 0, 0}},
        {"not started", 0.124, {0, 0, 0, 0}},
        {"no number", std::nan(""), {0, 0, 0, 0}},
        {"starts", 0.125, {0, 0, 0, 1}},
        {"half of the throw", 0.125 + 0.15 * 2.5, {41.25, -150, 54, 1}},
        {"the top", 0.125 + 0.3 * 2.5, {55, -200, 108, 1}},
        {"half of the fall", 0.125 + 0.65 * 2.5, {77.5, -10, 234, 1}},
        {"begins to fade", 0.125 + 0.7 * 2.5, {55 + 45 * 4 / 7.0, -200 + 760 * 16 / 49.0, 252, 1}},
        {"half faded",
         0.125 + 0.85 * 2.5,
         {55 + 45 * 11 / 14.0, -200 + 760 * 121 / 196.0, 306, 0.5}},
        {"landed", 0.125 + 2.5, {100, 560, 360, 0}},
        {"long after", 1e300, {100, 560, 360, 0}},
        {"for ever", infinity, {100, 560, 360, 0}},
    };
    for (const auto& [what, time, state] : cases) {
        SCOPED_TRACE(what);
        const Piece::State found = piece.stateAt(time);
        EXPECT_NEAR(found.x, state.x, 1e-9);
        EXPECT_NEAR(found.y, state.y, 1e-9);
        EXPECT_NEAR(found.rotation, state.rotation, 1e-9);
        EXPECT_NEAR(found.opacity, state.opacity, 1e-9);
    }
    EXPECT_EQ(piece.stateAt(0.125), (Piece::State{0, 0, 0, 1}));
    EXPECT_EQ(piece.stateAt(2.625), (Piece::State{100, 560, 360, 0}));
}

TEST(Confetti, APieceWithoutDurationIsOnlyBeforeOrAfter) {
    Piece still = piece;
    still.duration = 0;
    EXPECT_EQ(still.stateAt(0), Piece::State());
    EXPECT_EQ(still.stateAt(0.125), Piece::State()) << "nought over nought is no number";
    EXPECT_EQ(still.stateAt(1), (Piece::State{100, 560, 360, 0}));
}

TEST(Confetti, StatesAreAsTheirTwins) {
    const auto pieces = Confetti::pieces(50, 3);
    for (const Piece& each : pieces)
        for (int i = -10; i < 400; ++i)
            ASSERT_EQ(each.stateAt(i * 0.01), Tests::plainState(each, i * 0.01)) << i;
}

TEST(ConfettiDeathTest, FewerThanNonePiecesStopTheProgram) {
    EXPECT_DEATH(std::ignore = Confetti::pieces(-1, 42), "a number of pieces is not negative");
}

}  // namespace
}  // namespace PrompterCore
