#include "PrompterCore/takes/RecordingClock.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/takes/ClockText.h"

namespace PrompterCore::RecordingClock {

std::string format(double seconds) {
    require(std::isfinite(seconds), "a recording clock's time is finite");
    const std::int64_t shown = truncatedTowardZero(std::max(seconds, 0.0));
    const std::string rest =
        atLeastTwoDigits(shown % 3600 / 60) + ":" + atLeastTwoDigits(shown % 60);
    return shown < 3600 ? rest : std::to_string(shown / 3600) + ":" + rest;
}

}  // namespace PrompterCore::RecordingClock
