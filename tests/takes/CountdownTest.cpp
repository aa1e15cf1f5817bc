#include <chrono>
#include <cmath>
#include <concepts>
#include <limits>

#include "PrompterCore/takes/Countdown.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace std::chrono_literals;
using Moment = Countdown::Moment;
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

static_assert(std::copyable<Countdown> && std::equality_comparable<Countdown>);
static_assert(Countdown::standard == 5);

// 5 March 2025, 14:07:09 UTC; the arithmetic must not depend on where the clock's nought is.
constexpr Moment start = Moment(std::chrono::seconds(1741183629));

TEST(Countdown, CountsBegunSecondsWhole) {
    struct Case {
        const char* what;
        std::chrono::milliseconds after;
        std::int64_t remaining;
        double progress;
    };
    const Case cases[] = {
        {"1 s before the start", -1000ms, 5, 0}, {"at the start", 0ms, 5, 0},
        {"at once behind it", 1ms, 5, 0.0002},   {"before the first second", 999ms, 5, 0.1998},
        {"one second", 1000ms, 4, 0.2},          {"2.7 s", 2700ms, 3, 0.54},
        {"the last moment", 4999ms, 1, 0.9998},  {"the end", 5000ms, 0, 1},
        {"long after", 500000ms, 0, 1},
    };
    const Countdown countdown(5, start);
    for (const auto& [what, after, remaining, progress] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(countdown.remainingAt(start + after), remaining);
        EXPECT_EQ(countdown.isFinishedAt(start + after), remaining == 0);
        EXPECT_DOUBLE_EQ(countdown.progressAt(start + after), progress);
    }
}

TEST(Countdown, OfNothingIsFinishedAtOnce) {
    for (const std::int64_t seconds : {std::int64_t{0}, std::int64_t{-3}, -largest - 1}) {
        const Countdown countdown(seconds, start);
        EXPECT_EQ(countdown.seconds(), 0);
        EXPECT_EQ(countdown.duration(), 0.0);
        EXPECT_EQ(countdown, Countdown(0, start));
        for (const Moment moment : {start - 1h, start, start + 1h}) {
            EXPECT_EQ(countdown.remainingAt(moment), 0);
            EXPECT_TRUE(countdown.isFinishedAt(moment));
            EXPECT_EQ(countdown.progressAt(moment), 1.0);
        }
    }
}

TEST(Countdown, RemembersItsLengthAndStart) {
    const Countdown countdown(10, start);
    EXPECT_EQ(countdown.seconds(), 10);
    EXPECT_EQ(countdown.duration(), 10.0);
    EXPECT_EQ(countdown.startedAt(), start);
    EXPECT_NE(countdown, Countdown(10, start + 1ms));
    EXPECT_NE(countdown, Countdown(9, start));
}

TEST(Countdown, KnowsTheLastTickBeforeASecond) {
    const Moment::duration tick(1);
    const Countdown countdown(60, start);
    EXPECT_EQ(countdown.remainingAt(start + tick), 60);
    EXPECT_EQ(countdown.remainingAt(start + 59s - tick), 2);
    EXPECT_EQ(countdown.remainingAt(start + 59s), 1);
    EXPECT_EQ(countdown.remainingAt(start + 60s - tick), 1);
}

TEST(Countdown, AnswersTheEndsOfTheClockToo) {
    const Countdown early(5, Moment::min());
    EXPECT_EQ(early.remainingAt(Moment::max()), 0);
    EXPECT_EQ(early.progressAt(Moment::max()), 1.0);
    EXPECT_EQ(early.remainingAt(Moment::min() + 2s), 3);
    const Countdown late(5, Moment::max());
    EXPECT_EQ(late.remainingAt(Moment::min()), 5);
    EXPECT_EQ(late.progressAt(Moment::min()), 0.0);
    const Countdown endless(largest, Moment::min());
    EXPECT_GT(endless.remainingAt(Moment::max()), 0);
    EXPECT_EQ(endless.remainingAt(Moment::min()), largest);
}

TEST(Countdown, OnlyEverGoesDown) {
    Tests::forAll([](std::int16_t seconds, std::int32_t first, std::uint16_t later) {
        const Countdown countdown(seconds, start);
        const Moment a = start + std::chrono::milliseconds(first);
        const Moment b = a + std::chrono::milliseconds(later);
        RC_ASSERT(countdown.remainingAt(b) <= countdown.remainingAt(a));
        RC_ASSERT(countdown.progressAt(b) >= countdown.progressAt(a));
        RC_ASSERT(countdown.progressAt(a) >= 0 && countdown.progressAt(b) <= 1);
        RC_ASSERT(countdown.remainingAt(a) >= 0);
        RC_ASSERT(countdown.remainingAt(a) <= countdown.seconds());
        RC_ASSERT(countdown.isFinishedAt(a) == (countdown.progressAt(a) == 1.0));
    });
}

}  // namespace
}  // namespace PrompterCore
