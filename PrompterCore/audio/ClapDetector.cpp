#include "PrompterCore/audio/ClapDetector.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Rounding.h"

namespace PrompterCore {

namespace {

constexpr double stepDuration = 0.0025;  // s
constexpr double guard = 1e-12;          // keeps silence at -120 dBFS

// Steps around the one that is judged.
constexpr std::int64_t stepsBefore = 8;
constexpr std::int64_t stepsAfter = 18;
constexpr std::int64_t tailFrom = 10;        // 25 ms after the onset
constexpr std::int64_t surplusSteps = 1000;  // forgotten together, so that few calls move the rest

constexpr double quietestPeak = -50;  // dBFS, above which a clap peaks
constexpr double leastRise = 15;      // dB from the background to the peak
constexpr double leastAttack = 9;     // dB from the background to the onset's own step
constexpr double leastBright = 0.1;
constexpr double leastDecay = 10;  // dB from the peak to the tail

constexpr double deadTime = 0.1;      // s after a clap, for its ring
constexpr double longestGap = 0.6;    // s between claps of one gesture
constexpr double gestureOver = 0.65;  // s after the last clap

constexpr std::int64_t usualBuffer = 4096;  // samples, for which there is always room

double decibels(double meanSquare) noexcept { return 10.0 * std::log10(meanSquare + guard); }

// The level of all the steps together.
double powerMean(std::span<const ClapDetector::Step> steps) noexcept {
    double sum = 0.0;
    for (const ClapDetector::Step& step : steps) {
        sum += std::pow(10.0, step.level / 10.0);
    }
    return decibels(sum / static_cast<double>(steps.size()));
}

}  // namespace

ClapDetector::ClapDetector(double sampleRate)
    : stepLength_(std::max<std::int64_t>(roundedToNearest(sampleRate * stepDuration), 1)),
      stepSeconds_(static_cast<double>(stepLength_) / sampleRate) {}

std::vector<ClapGesture> ClapDetector::feed(std::span<const float> samples, double startingAt) {
    if (pending_.empty()) pendingStart_ = startingAt;
    pendingStart_ += stepSeconds_ * static_cast<double>(takeSteps(samples));
    findClaps();
    forgetOldSteps();
    return gestureOverAt(pendingStart_);
}

// Cuts what waits and what comes into steps, keeps the rest waiting, and returns the steps made.
// Whole steps are read where they are: only what two buffers share is copied.
std::int64_t ClapDetector::takeSteps(std::span<const float> samples) {
    const auto length = static_cast<std::size_t>(stepLength_);
    const std::size_t made = (pending_.size() + samples.size()) / length;
    // Room for what a usual buffer leaves and adds; no more for one that is as large as a
    // recording.
    pending_.reserve(static_cast<std::size_t>(std::min(stepLength_, usualBuffer)));
    steps_.reserve(static_cast<std::size_t>(stepsBefore + stepsAfter + surplusSteps + 1 +
                                            usualBuffer / stepLength_));
    std::size_t step = 0;
    const auto nextTime = [&] {
        return pendingStart_ + stepSeconds_ * static_cast<double>(step++);
    };
    if (made > 0 && !pending_.empty()) {
        const auto rest = samples.first(length - pending_.size());
        samples = samples.subspan(rest.size());
        pending_.insert(pending_.end(), rest.begin(), rest.end());
        takeStep(pending_, nextTime());
        pending_.clear();
    }
    while (samples.size() >= length) {
        takeStep(samples.first(length), nextTime());
        samples = samples.subspan(length);
    }
    pending_.insert(pending_.end(), samples.begin(), samples.end());
    return signedCount(made);
}

void ClapDetector::takeStep(std::span<const float> samples, double time) {
    double energy = 0.0;
    double differenceEnergy = 0.0;
    float previous = lastSample_;
    for (const float sample : samples) {
        const float square = sample * sample;
        const double difference = static_cast<double>(sample - previous);
        energy += static_cast<double>(square);
        differenceEnergy += difference * difference;
        previous = sample;
    }
    lastSample_ = previous;
    const auto count = static_cast<double>(samples.size());
    const double meanSquare = energy / count;
    steps_.push_back({.time = time,
                      .level = decibels(meanSquare),
                      .bright = (differenceEnergy / count) / (meanSquare + guard)});
}

// Each condition is asked in the form that NaN fails. The cheap ones come first, so that silence
// costs no powers.
bool ClapDetector::isOnset(std::int64_t index) const noexcept {
    const auto around = [&](std::int64_t offset, std::int64_t count) {
        return std::span(steps_).subspan(static_cast<std::size_t>(index + offset),
                                         static_cast<std::size_t>(count));
    };
    const Step& onset = around(0, 1).front();
    const Step* peak = &onset;
    for (const Step& later : around(1, 2)) {
        if (later.level > peak->level) peak = &later;
    }
    if (!(peak->level > quietestPeak && peak->bright >= leastBright)) return false;
    const double background = powerMean(around(-stepsBefore, stepsBefore));
    if (!(peak->level - background >= leastRise && onset.level - background >= leastAttack))
        return false;
    return peak->level - powerMean(around(tailFrom, stepsAfter - tailFrom + 1)) >= leastDecay;
}

// A group that is too long ago is dropped, not reported: the buffer was too long to tell its end.
void ClapDetector::addClap(double time) noexcept {
    quietUntil_ = time + deadTime;
    if (open_ && time - open_->lastClap > longestGap) open_.reset();
    if (!open_) open_ = ClapGesture{.count = 0, .firstClap = time, .lastClap = time};
    open_->count += 1;
    open_->lastClap = time;
}

void ClapDetector::findClaps() noexcept {
    while (nextToCheck_ + stepsAfter < signedCount(steps_.size())) {
        const std::int64_t index = nextToCheck_++;
        const double time = steps_[static_cast<std::size_t>(index)].time;
        if (index < stepsBefore || time < quietUntil_) continue;
        if (isOnset(index)) addClap(time);
    }
}

void ClapDetector::forgetOldSteps() {
    const std::int64_t surplus = nextToCheck_ - stepsBefore;
    if (surplus <= surplusSteps) return;
    steps_.erase(steps_.begin(), steps_.begin() + surplus);
    nextToCheck_ = stepsBefore;
}

std::vector<ClapGesture> ClapDetector::gestureOverAt(double time) {
    if (!open_ || !(time - open_->lastClap >= gestureOver)) return {};
    const ClapGesture gesture = *open_;
    open_.reset();
    return {gesture};
}

}  // namespace PrompterCore
