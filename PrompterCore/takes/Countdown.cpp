#include "PrompterCore/takes/Countdown.h"

#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

namespace {

using Ticks = Countdown::Moment::period;
static_assert(Ticks::num == 1, "a second is a whole number of ticks");

// Ticks from the start, 0 before it. Unsigned: the two may lie further apart than 64 bits with a
// sign hold.
std::uint64_t elapsed(Countdown::Moment start, Countdown::Moment now) noexcept {
    if (now < start) return 0;
    return distanceBetween(start.time_since_epoch().count(), now.time_since_epoch().count());
}

}  // namespace

std::int64_t Countdown::remainingAt(Moment moment) const noexcept {
    const auto whole = static_cast<std::int64_t>(elapsed(startedAt_, moment) / Ticks::den);
    return std::max<std::int64_t>(seconds_ - whole, 0);
}

double Countdown::progressAt(Moment moment) const noexcept {
    if (seconds_ < 1) return 1.0;
    const double passed =
        static_cast<double>(elapsed(startedAt_, moment)) / static_cast<double>(Ticks::den);
    return std::min(passed / duration(), 1.0);
}

}  // namespace PrompterCore
