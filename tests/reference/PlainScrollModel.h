#pragma once

// The scroll model written down step by step, with its whole state in the open.

#include <cmath>
#include <cstdint>
#include <optional>

#include "PrompterCore/voice/ScrollModel.h"

namespace PrompterCore::Plain {

struct PlainScrollModel {
    ScrollConfig config;
    double position = 0, rate = config.defaultRate, anchorIndex = 0;
    std::optional<double> anchorTime{}, lastTick{}, behindSince{};
    bool speaking = false;

    void anchor(std::int64_t n, double t) {
        const double elapsed = t - anchorTime.value_or(t);
        if (elapsed >= 0.15) {
            const double advance = static_cast<double>(n) - anchorIndex;
            if (advance > 0) {
                double measured = advance / elapsed;
                if (measured < config.minRate) measured = config.minRate;
                if (measured > config.maxRate) measured = config.maxRate;
                rate = rate + config.rateSmoothing * (measured - rate);
            }
        }
        anchorIndex = static_cast<double>(n);
        anchorTime = t;
    }

    void jump(std::int64_t n, double t) {
        anchorIndex = static_cast<double>(n > 0 ? n : 0);
        anchorTime = t;
        position = anchorIndex;
        behindSince = std::nullopt;
    }

    double tick(double t) {
        if (!lastTick.has_value()) {
            position = anchorIndex;
        } else {
            const double dt = std::fmax(t - *lastTick, 0.0);
            double target = anchorIndex;
            if (anchorTime.has_value() && speaking) {
                const double since = t - *anchorTime;
                if (since <= config.holdAfterSilence + config.maxLead / rate) {
                    double lead = rate * config.predictionGain * since;
                    if (!(lead < config.maxLead)) lead = config.maxLead;
                    target = anchorIndex + lead;
                }
            }
            const double alpha = 1.0 - std::exp(-config.convergence * dt);
            if (position < target) {
                behindSince = std::nullopt;
                position = position + alpha * (target - position);
            } else if (position - target < config.backStepThreshold) {
                behindSince = std::nullopt;
            } else {
                behindSince = behindSince.value_or(t);
                if (t - *behindSince >= config.backStepDelay)
                    position = position + alpha * (target - position);
            }
        }
        lastTick = t;
        return position;
    }
};

}  // namespace PrompterCore::Plain
