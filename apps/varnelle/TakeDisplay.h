#pragma once

// What the screen shows of a take: the bar above the status line.
//
// Units: seconds of the recording; columns of the terminal.
//
//   TakeDisplay take{.status = ControllerStatus::recording(65),
//                    .mode = TakeBarMode::recording(),
//                    .recordedSeconds = 65.2};
//   takeBar(take, 80)->text;    // the label, with the clock in it

#include <cstdint>
#include <optional>
#include <string>

#include "PrompterCore/takes/ControllerStatus.h"
#include "PrompterCore/takes/TakeBarMode.h"

namespace Varnelle {

/// A take as it stands. By default none is under way.
struct TakeDisplay {
    PrompterCore::ControllerStatus status = PrompterCore::ControllerStatus::ready();
    PrompterCore::TakeBarMode mode = PrompterCore::TakeBarMode::rest();
    double countdownProgress = 0;  ///< 0 to 1, shown while counting down
    std::optional<double> recordedSeconds =
        std::nullopt;  ///< absent where there is no clock to show; finite

    friend bool operator==(const TakeDisplay&, const TakeDisplay&) = default;
};

/// A bar on one row.
struct TakeBar {
    std::int64_t column = 0;  ///< where it begins, in the middle of the screen
    std::string text;         ///< blanks included
};

/// The bar for a terminal of this many columns, as wide and as full as TakeBarLayout says for it:
/// the status label, which says the clock, and the countdown's progress; a minimal one says the
/// clock or the progress alone. Absent without columns.
[[nodiscard]] std::optional<TakeBar> takeBar(const TakeDisplay& take, std::int64_t columns);

}  // namespace Varnelle
