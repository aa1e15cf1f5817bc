#include "host/CaptureClock.h"

#include <algorithm>
#include <cmath>

#include "PrompterCore/support/Require.h"

namespace Varnelle {

CaptureClock::CaptureClock(double rate) : rate_(rate) {
    PrompterCore::require(rate > 0, "a capture has samples");
}

CaptureClock::Correction CaptureClock::take(std::int64_t captured, double time, Device device) {
    const double lag = time - static_cast<double>(given_ + captured) / rate_;
    Correction correction;
    if (lag > (device == Device::runs ? longestLag : usualLag))
        correction.silence = static_cast<std::int64_t>(std::floor((lag - usualLag) * rate_));
    if (-lag > longestLead)
        correction.dropped =
            std::min(captured, static_cast<std::int64_t>(std::floor(-lag * rate_)));
    given_ += captured + correction.silence - correction.dropped;
    return correction;
}

}  // namespace Varnelle
