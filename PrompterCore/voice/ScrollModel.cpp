#include "PrompterCore/voice/ScrollModel.h"

#include <algorithm>
#include <cmath>

namespace PrompterCore {

namespace {

// Anchors closer together than this, in seconds, say too little about the rate.
constexpr double shortestMeasurement = 0.15;

}  // namespace

ScrollModel::ScrollModel(const ScrollConfig& config) noexcept
    : config_(config), rate_(config.defaultRate) {}

void ScrollModel::reset() noexcept { *this = ScrollModel(config_); }

void ScrollModel::anchor(std::int64_t tokenIndex, double time) noexcept {
    const auto index = static_cast<double>(tokenIndex);
    if (anchorTime_ && time - *anchorTime_ >= shortestMeasurement) {
        const double elapsed = time - *anchorTime_;
        const double advance = index - anchorIndex_;
        if (advance > 0) {
            // In this order: where the bounds cross, the upper one wins.
            const double raised = std::max<double>(advance / elapsed, config_.minRate);
            const double measured = std::min<double>(raised, config_.maxRate);
            rate_ = rate_ + config_.rateSmoothing * (measured - rate_);
        }
    }
    anchorIndex_ = index;
    anchorTime_ = time;
}

void ScrollModel::jumpTo(std::int64_t tokenIndex, double time) noexcept {
    anchorIndex_ = static_cast<double>(std::max<std::int64_t>(tokenIndex, 0));
    anchorTime_ = time;
    position_ = anchorIndex_;
    behindSince_.reset();
}

// The anchor, or while the presenter speaks a point ahead of it; the anchor again when none has
// come for so long that the voice must be elsewhere.
double ScrollModel::targetAt(double time) const noexcept {
    if (!anchorTime_ || !speaking_) return anchorIndex_;
    const double since = time - *anchorTime_;
    if (!(since <= config_.holdAfterSilence + config_.maxLead / rate_)) return anchorIndex_;
    return anchorIndex_ + std::min<double>(config_.maxLead, rate_ * config_.predictionGain * since);
}

double ScrollModel::tickAt(double time) noexcept {
    if (!lastTick_) {
        position_ = anchorIndex_;
        lastTick_ = time;
        return position_;
    }
    const double passed = time - *lastTick_;
    const double step = passed > 0 ? passed : 0.0;  // also for a time that is not a number
    const double target = targetAt(time);
    const double share = 1.0 - std::exp(-config_.convergence * step);
    if (position_ < target) {
        behindSince_.reset();
        position_ = position_ + share * (target - position_);
    } else if (position_ - target < config_.backStepThreshold) {
        behindSince_.reset();
    } else {
        if (!behindSince_) behindSince_ = time;
        if (time - *behindSince_ >= config_.backStepDelay)
            position_ = position_ + share * (target - position_);
    }
    lastTick_ = time;
    return position_;
}

}  // namespace PrompterCore
