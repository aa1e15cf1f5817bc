#include <algorithm>
#include <concepts>
#include <cstdint>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "host/SoundTail.h"
#include "host/TakeSession.h"
#include "tests/support/Properties.h"

namespace Varnelle {

void PrintTo(const TakeEvent& event, std::ostream* out) {
    *out << "{" << static_cast<int>(event.kind) << ", " << event.time << " s}";
}

namespace {

using Kind = TakeEvent::Kind;
using Events = std::vector<TakeEvent>;
using PrompterCore::ClapGesture;
using PrompterCore::ControllerStatus;

static_assert(std::copyable<TakeSession> && std::equality_comparable<TakeSession>);
static_assert(std::copyable<SoundTail> && std::equality_comparable<SoundTail>);

ClapGesture twoClaps(double first) {
    return {.count = 2, .firstClap = first, .lastClap = first + 0.3};
}

// Two claps whose first one began at `first`, reported when it is known that no third one comes.
Events clapTwice(TakeSession& session, double first) {
    return session.hear(twoClaps(first), first + 0.95);
}

TEST(TakeSession, TwoClapsBeginATakeAfterTheCountdownAndTwoClapsEndItBeforeThem) {
    TakeSession session(5);
    EXPECT_EQ(session.statusAt(0), ControllerStatus::ready());
    EXPECT_EQ(clapTwice(session, 1), (Events{{Kind::countdown, 1.95}}));
    EXPECT_EQ(session.countdownAt(2.0), 5);
    EXPECT_EQ(session.statusAt(4.0), ControllerStatus::countingDown(3));
    EXPECT_NEAR(session.countdownProgressAt(4.45), 0.5, 1e-9);
    EXPECT_EQ(session.advanceTo(6.9), Events{});
    EXPECT_EQ(session.advanceTo(6.96), (Events{{Kind::began, 6.95}}));
    EXPECT_TRUE(session.isRecording());
    EXPECT_NEAR(*session.recordedAt(66.96), 60.01, 1e-9);
    EXPECT_EQ(session.statusAt(66.96), ControllerStatus::recording(60));
    EXPECT_EQ(session.countdownAt(66.96), std::nullopt);
    EXPECT_EQ(clapTwice(session, 70), (Events{{Kind::ended, 69.95}}));
    EXPECT_EQ(session.statusAt(71), ControllerStatus::ready());
    EXPECT_EQ(session.recordedAt(71), std::nullopt);
}

TEST(TakeSession, WithoutACountdownATakeBeginsBehindTheClapsThatAskedForIt) {
    for (const std::int64_t none : {0, -3}) {
        TakeSession session(none);
        const Events began = clapTwice(session, 1);
        ASSERT_EQ(began.size(), 1U);
        EXPECT_EQ(began[0].kind, Kind::began);
        EXPECT_NEAR(began[0].time, 1.55, 1e-9);
    }
}

TEST(TakeSession, OtherNumbersOfClapsAreNoCommand) {
    for (const std::int64_t count : {1, 3, 4, 20}) {
        TakeSession session(0);
        EXPECT_EQ(session.hear({.count = count, .firstClap = 1, .lastClap = 2}, 3), Events{});
        session.step(4);
        EXPECT_EQ(session.hear({.count = count, .firstClap = 5, .lastClap = 6}, 7), Events{});
        EXPECT_TRUE(session.isRecording());
    }
}

TEST(TakeSession, TwoClapsInTheCountdownCallItOff) {
    TakeSession session(5);
    clapTwice(session, 1);
    EXPECT_EQ(clapTwice(session, 3), (Events{{Kind::calledOff, 3.95}}));
    EXPECT_EQ(session.statusAt(4), ControllerStatus::ready());
    EXPECT_EQ(session.advanceTo(100), Events{});
    EXPECT_EQ(clapTwice(session, 101), (Events{{Kind::countdown, 101.95}}));
}

TEST(TakeSession, ClapsAgainstTheCountdownThatAreHeardTooLateCallTheTakeOff) {
    TakeSession session(5);
    clapTwice(session, 1);
    EXPECT_EQ(session.hear(twoClaps(6.5), 7.45),
              (Events{{Kind::began, 6.95}, {Kind::calledOff, 7.45}}));
    EXPECT_FALSE(session.isRecording());
}

TEST(TakeSession, AKeyDoesTheSameAtItsOwnMoment) {
    TakeSession session(2);
    EXPECT_EQ(session.step(1), (Events{{Kind::countdown, 1}}));
    EXPECT_EQ(session.step(2), (Events{{Kind::calledOff, 2}}));
    EXPECT_EQ(session.step(3), (Events{{Kind::countdown, 3}}));
    EXPECT_EQ(session.step(9), (Events{{Kind::began, 5}, {Kind::ended, 9}}));
    TakeSession atOnce(0);
    EXPECT_EQ(atOnce.step(0), (Events{{Kind::began, 0}}));
    EXPECT_EQ(atOnce.step(0), (Events{{Kind::calledOff, 0}})) << "a take of nothing is none";
}

TEST(TakeSession, TheEndOfTheSessionEndsWhatRuns) {
    TakeSession session(2);
    EXPECT_EQ(session.finish(1), Events{});
    session.step(1);
    EXPECT_EQ(session.finish(2), (Events{{Kind::calledOff, 2}}));
    session.step(3);
    EXPECT_EQ(session.finish(8), (Events{{Kind::began, 5}, {Kind::ended, 8}}));
    EXPECT_EQ(session.finish(9), Events{});
}

TEST(TakeSession, TakesFollowEachOtherWithoutOverlapWhateverHappens) {
    PrompterCore::Tests::forAll([](const std::vector<std::pair<int, int>>& happenings) {
        for (const std::int64_t countdown : {0, 1, 5}) {
            TakeSession session(countdown);
            double time = 0;
            double end = 0;               // of the last take
            std::optional<double> began;  // of the running one
            for (const auto& [what, wait] : happenings) {
                const double some = 0.01 * (wait & 255);
                time += some;
                const ClapGesture claps{
                    .count = 2, .firstClap = time - 0.75 - some / 6, .lastClap = time - 0.65};
                const Events events = (what & 3) == 0   ? session.step(time)
                                      : (what & 3) == 1 ? session.hear(claps, time)
                                      : (what & 3) == 2 ? session.advanceTo(time)
                                                        : session.finish(time);
                for (const auto& [kind, at] : events) {
                    RC_ASSERT(at <= time);
                    if (kind == Kind::began) {
                        RC_ASSERT(!began && at >= end);
                        began = at;
                    } else if (kind == Kind::ended) {
                        RC_ASSERT(began && at > *began && at >= time - TakeSession::lookBack);
                        end = at;
                        began.reset();
                    } else {
                        began.reset();
                    }
                }
                RC_ASSERT(session.isRecording() == began.has_value());
            }
        }
    });
}

TEST(TakeSession, ATakeBeginsNotBeforeTheLastOneEnded) {
    TakeSession session(0);
    session.step(1);
    EXPECT_EQ(session.step(5), (Events{{Kind::ended, 5}}));
    EXPECT_EQ(session.hear({.count = 2, .firstClap = 4.3, .lastClap = 4.5}, 5.2),
              (Events{{Kind::began, 5}}));
}

TEST(SoundTail, RemembersTheLastSamplesAtLeast) {
    SoundTail tail(5);
    EXPECT_EQ(tail.end(), 0);
    EXPECT_TRUE(tail.between(0, 10).empty());
    std::int64_t next = 0;
    for (int size = 0; size < 40; ++size) {
        std::vector<float> samples;
        for (int i = 0; i < size % 9; ++i) {
            samples.push_back(static_cast<float>(next++));
        }
        tail.append(samples);
        ASSERT_EQ(tail.end(), next);
        ASSERT_LE(tail.begin(), std::max<std::int64_t>(next - 5, 0));
        ASSERT_GE(tail.begin(), next - 19);
        const auto remembered = tail.between(-100, 1000);
        ASSERT_EQ(static_cast<std::int64_t>(remembered.size()), next - tail.begin());
        for (std::size_t i = 0; i < remembered.size(); ++i) {
            ASSERT_EQ(remembered[i],
                      static_cast<float>(tail.begin() + static_cast<std::int64_t>(i)));
        }
        ASSERT_EQ(tail.between(next - 2, next).size(),
                  static_cast<std::size_t>(std::min<std::int64_t>(2, next)));
        ASSERT_TRUE(tail.between(next, next - 2).empty());
    }
}

TEST(SoundTailDeathTest, ALengthIsNotBelowNothing) {
    EXPECT_DEATH(SoundTail(-1), "a length is not below 0");
}

}  // namespace
}  // namespace Varnelle
