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
    if (device == Device::isAway || lag <= longestLag) {
        lateSince_.reset();
    } else if (!lateSince_) {
        lateSince_ = time;
    }
    const bool isLost = device == Device::isAway || (lateSince_ && time - *lateSince_ >= patience);
    if (isLost && lag > usualLag) {
        correction.silence = static_cast<std::int64_t>(std::floor((lag - usualLag) * rate_));
        lateSince_.reset();
    }
    if (-lag > longestLead)
        correction.dropped =
            std::min(captured, static_cast<std::int64_t>(std::floor(-lag * rate_)));
    given_ += captured + correction.silence - correction.dropped;
    return correction;
}

}  // namespace Varnelle
