#include <array>
#include <concepts>
#include <limits>
#include <optional>
#include <string>

#include "PrompterCore/takes/ControllerStatus.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Status = ControllerStatus;
using Step = ControllerStatus::TakeStep;
using Tone = ControllerStatus::Tone;

static_assert(std::copyable<Status> && std::equality_comparable<Status>);
static_assert(std::copyable<Step> && std::equality_comparable<Step>);
static_assert(!std::convertible_to<std::int64_t, Status> && !std::convertible_to<Step, Status>);

TEST(ControllerStatus, SaysWhatIsGoingOn) {
    struct Case {
        Status status;
        const char* label;
        Tone tone;
        bool stepsBack;
    };
    const Case cases[] = {
        {Status::countingDown(3), "Recording in 3", Tone::recording, true},
        {Status::countingDown(0), "Recording in 0", Tone::recording, true},
        {Status::countingDown(-2), "Recording in -2", Tone::recording, true},
        {Status::recording(65), "Recording \u00B7 01:05", Tone::recording, true},
        {Status::recording(-1), "Recording \u00B7 00:00", Tone::recording, true},
        {Status::ready(), "Ready", Tone::neutral, false},
        {Status::preparing(), "Getting speech ready", Tone::waiting, true},
        {Status::practising(), "Practising", Tone::practising, true},
    };
    for (const auto& [status, label, tone, stepsBack] : cases) {
        SCOPED_TRACE(label);
        EXPECT_EQ(status.label(), label);
        EXPECT_EQ(status.tone(), tone);
        EXPECT_EQ(status.stepsBack(), stepsBack);
    }
}

TEST(ControllerStatus, LabelOfARecordingHasAPrefixOf13Bytes) {
    EXPECT_EQ(Status::recording(65).label().find("01:05"), 13U);
}

TEST(ControllerStatus, FollowsTheTake) {
    using Seconds = std::optional<std::int64_t>;
    struct Case {
        const char* what;
        Step step;
        bool reading;
        Seconds recorded;
        Status status;
    };
    const bool reading = true;
    const Case cases[] = {
        {"counting down", Step::countingDown(4), !reading, {}, Status::countingDown(4)},
        {"counting down while reading", Step::countingDown(4), reading, 9, Status::countingDown(4)},
        {"idle", Step::idle(), !reading, {}, Status::ready()},
        {"idle, seconds left over", Step::idle(), !reading, 12, Status::ready()},
        {"idle while reading", Step::idle(), reading, {}, Status::practising()},
        {"preparing", Step::preparing(), !reading, {}, Status::preparing()},
        {"preparing while reading", Step::preparing(), reading, 3, Status::preparing()},
        {"running", Step::running(), !reading, 12, Status::recording(12)},
        {"running while reading", Step::running(), reading, 12, Status::recording(12)},
        {"running, seconds unknown", Step::running(), reading, {}, Status::recording(0)},
        {"running, below 0 as it is", Step::running(), reading, -5, Status::recording(-5)},
    };
    for (const auto& [what, step, isReading, recorded, status] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Status::take(step, isReading, recorded), status);
    }
}

TEST(ControllerStatus, ClockHasNoHours) {
    struct Case {
        std::int64_t seconds;
        const char* clock;
    };
    const Case cases[] = {
        {0, "00:00"},
        {-4, "00:00"},
        {9, "00:09"},
        {59, "00:59"},
        {60, "01:00"},
        {65, "01:05"},
        {599, "09:59"},
        {600, "10:00"},
        {3599, "59:59"},
        {3600, "60:00"},
        {3725, "62:05"},
        {5999, "99:59"},
        {6000, "100:00"},
        {std::numeric_limits<std::int64_t>::min(), "00:00"},
        {std::numeric_limits<std::int64_t>::max(), "153722867280912930:07"},
    };
    for (const auto& [seconds, clock] : cases) {
        SCOPED_TRACE(seconds);
        EXPECT_EQ(Status::clock(seconds), clock);
    }
}

TEST(ControllerStatus, DiffersByItsCaseAndItsSeconds) {
    const std::array statuses = {Status::countingDown(1), Status::countingDown(2),
                                 Status::recording(1),    Status::recording(2),
                                 Status::ready(),         Status::preparing(),
                                 Status::practising()};
    const std::array steps = {Step::countingDown(1), Step::countingDown(2), Step::idle(),
                              Step::preparing(), Step::running()};
    for (std::size_t i = 0; i < statuses.size(); ++i)
        for (std::size_t k = 0; k < statuses.size(); ++k)
            EXPECT_EQ(statuses[i] == statuses[k], i == k);
    for (std::size_t i = 0; i < steps.size(); ++i)
        for (std::size_t k = 0; k < steps.size(); ++k)
            EXPECT_EQ(steps[i] == steps[k], i == k);
}

TEST(ControllerStatus, IsLookedIntoByItsCases) {
    const auto name = [](const Status& status) {
        return status.visit(
            [](Status::CountingDown left) { return "counting " + std::to_string(left.seconds); },
            [](const auto&) { return std::string("other"); });
    };
    EXPECT_EQ(name(Status::countingDown(2)), "counting 2");
    EXPECT_EQ(name(Status::ready()), "other");
}

}  // namespace
}  // namespace PrompterCore
