#include "apps/varnelle/TakeDisplay.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/takes/RecordingClock.h"
#include "PrompterCore/takes/TakeBarLayout.h"
#include "PrompterCore/text/Columns.h"
#include "apps/varnelle/TerminalText.h"

namespace Varnelle {

namespace {

using PrompterCore::columnsOf;
using PrompterCore::TakeBarLayout;
using PrompterCore::TakeBarMode;
using Density = TakeBarLayout::Density;

constexpr double pointsPerColumn = 8;

std::string repeated(std::string_view text, std::int64_t times) {
    std::string all;
    for (std::int64_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string progressBar(double progress) {
    constexpr double columns = 10;
    const double clamped = progress > 0 ? std::min(progress, 1.0) : 0;  // no number counts as 0
    const std::int64_t full = PrompterCore::roundedToNearest(clamped * columns);
    return repeated("\u2588", full) + repeated("\u2591", static_cast<std::int64_t>(columns) - full);
}

// What stands on the right: the countdown's progress, the clock where no label says it, or nothing.
std::string detailOf(const TakeDisplay& take, Density density) {
    const auto clock = [&] {
        return density == Density::minimal && take.recordedSeconds
                   ? PrompterCore::RecordingClock::format(*take.recordedSeconds)
                   : std::string();
    };
    return take.mode.visit(
        [&](const TakeBarMode::CountingDown&) { return progressBar(take.countdownProgress); },
        [&](const TakeBarMode::Recording&) { return clock(); },
        [](const auto&) { return std::string(); });
}

}  // namespace

std::optional<TakeBar> takeBar(const TakeDisplay& take, std::int64_t columns) {
    if (columns < 1) return std::nullopt;
    const TakeBarLayout layout =
        TakeBarLayout::fitting(take.mode, static_cast<double>(columns) * pointsPerColumn);
    const std::int64_t width =
        std::min(static_cast<std::int64_t>(layout.width / pointsPerColumn), columns);
    const std::string detail = detailOf(take, layout.density);
    std::string label = "\u25CF " + take.status.label();
    if (layout.density == Density::minimal && !detail.empty()) label.clear();
    label = shortened(label, std::max<std::int64_t>(width - 2 - columnsOf(detail), 0));
    const std::string inside =
        label + repeated(" ", width - 2 - columnsOf(label) - columnsOf(detail)) + detail;
    std::string text = shortened(" " + inside + " ", width);
    text += repeated(" ", width - columnsOf(text));
    return TakeBar{.column = (columns - width) / 2, .text = std::move(text)};
}

}  // namespace Varnelle
