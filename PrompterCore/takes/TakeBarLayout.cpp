#include "PrompterCore/takes/TakeBarLayout.h"

namespace PrompterCore {

namespace {

// Points.
struct Widths {
    double full, compact, minimal;
};

Widths widths(const TakeBarMode& mode) noexcept {
    return mode.visit(
        [](TakeBarMode::CountingDown) {
            return Widths{268, 268, 268};
        },
        [](TakeBarMode::Rest) {
            return Widths{448, 404, 262};
        },
        [](TakeBarMode::Preparing) {
            return Widths{268, 268, 268};
        },
        [](TakeBarMode::Recording) {
            return Widths{648, 520, 380};
        },
        [](TakeBarMode::Practising) {
            return Widths{600, 472, 332};
        });
}

}  // namespace

TakeBarLayout TakeBarLayout::fitting(const TakeBarMode& mode, double width) noexcept {
    const double available = width - 2 * margin;
    const auto [full, compact, minimal] = widths(mode);
    if (full <= available) return {Density::full, full};
    if (compact <= available) return {Density::compact, compact};
    return {Density::minimal, minimal};
}

}  // namespace PrompterCore
