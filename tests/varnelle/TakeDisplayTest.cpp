#include <concepts>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "PrompterCore/text/Columns.h"
#include "apps/varnelle/TakeDisplay.h"

namespace Varnelle {
namespace {

using PrompterCore::columnsOf;
using PrompterCore::ControllerStatus;
using PrompterCore::TakeBarMode;

static_assert(std::copyable<TakeDisplay> && std::equality_comparable<TakeDisplay>);

TakeDisplay recording(double seconds) {
    return {.status = ControllerStatus::recording(static_cast<std::int64_t>(seconds)),
            .mode = TakeBarMode::recording(),
            .recordedSeconds = seconds};
}

TakeDisplay countingDown(double progress) {
    return {.status = ControllerStatus::countingDown(3),
            .mode = TakeBarMode::countingDown(3),
            .countdownProgress = progress};
}

std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

TEST(TakeDisplay, SaysTheStatusAndTheClockOnce) {
    const auto bar = takeBar(recording(65.9), 100);
    ASSERT_TRUE(bar);
    EXPECT_EQ(columnsOf(bar->text), 81);  // 648 points
    EXPECT_EQ(bar->column, 9);
    EXPECT_EQ(trimmed(bar->text), "\u25CF Recording \u00B7 01:05");
}

TEST(TakeDisplay, OfAMinimalBarOnlyTheClockIsLeft) {
    EXPECT_EQ(trimmed(takeBar(recording(65), 40)->text), "01:05");
    EXPECT_EQ(trimmed(takeBar(recording(3600), 40)->text), "1:00:00");
    EXPECT_EQ(trimmed(takeBar({}, 20)->text), "\u25CF Ready");
}

TEST(TakeDisplay, TheCountdownFillsABar) {
    struct Case {
        double progress;
        const char* bar;
    };
    for (const auto& [progress, shown] :
         {Case{0, "░░░░░░░░░░"}, Case{0.54, "█████░░░░░"}, Case{1, "██████████"},
          Case{7, "██████████"}, Case{std::numeric_limits<double>::quiet_NaN(), "░░░░░░░░░░"}}) {
        SCOPED_TRACE(progress);
        const std::string text = takeBar(countingDown(progress), 80)->text;
        EXPECT_TRUE(text.starts_with(" \u25CF Recording in 3 ")) << text;
        EXPECT_TRUE(text.ends_with(std::string(shown) + " ")) << text;
    }
}

TEST(TakeDisplay, WithoutAClockTheLabelStandsAlone) {
    const TakeDisplay practising{.status = ControllerStatus::practising(),
                                 .mode = TakeBarMode::practising()};
    EXPECT_EQ(trimmed(takeBar(practising, 100)->text), "\u25CF Practising");
}

TEST(TakeDisplay, NeverLeavesTheScreen) {
    EXPECT_FALSE(takeBar({}, 0));
    for (const TakeDisplay& take : {TakeDisplay{}, recording(1e6), countingDown(0.5)}) {
        for (std::int64_t columns = 1; columns < 120; ++columns) {
            SCOPED_TRACE(columns);
            const auto bar = takeBar(take, columns);
            ASSERT_TRUE(bar);
            EXPECT_GE(bar->column, 0);
            EXPECT_LE(bar->column + columnsOf(bar->text), columns) << bar->text;
        }
    }
}

}  // namespace
}  // namespace Varnelle
