#include "PrompterCore/prompter/ScrollStepper.h"

#include "PrompterCore/support/Rounding.h"

namespace PrompterCore {

std::int64_t ScrollStepper::add(double delta) noexcept {
    const bool turned = pending != 0 && (delta > 0) != (pending > 0);
    const double total = delta + (turned ? 0.0 : pending);
    const std::int64_t steps = truncatedTowardZero(total / threshold);
    pending = total - threshold * static_cast<double>(steps);
    return steps;
}

}  // namespace PrompterCore
