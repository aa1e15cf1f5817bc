#include "host/VoiceActivity.h"

namespace Varnelle {

bool VoiceActivity::level(double meter, double time) noexcept {
    if (!knowsLevel_) quietSince_.reset();
    knowsLevel_ = true;
    if (meter >= startLevel) {
        speaking_ = true;
        quietSince_.reset();
    } else if (meter >= stopLevel) {
        quietSince_.reset();
    } else if (speaking_ && !quietSince_) {
        quietSince_ = time;
    }
    return at(time);
}

bool VoiceActivity::words(double time) noexcept {
    if (!knowsLevel_) {
        speaking_ = true;
        quietSince_ = time;
    }
    return speaking_;
}

bool VoiceActivity::at(double time) noexcept {
    const double hangover = knowsLevel_ ? levelHangover : wordHangover;
    if (speaking_ && quietSince_ && time - *quietSince_ >= hangover) {
        speaking_ = false;
        quietSince_.reset();
    }
    return speaking_;
}

}  // namespace Varnelle
