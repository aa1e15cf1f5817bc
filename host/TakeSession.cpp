#include "host/TakeSession.h"

#include <algorithm>
#include <chrono>

#include "PrompterCore/audio/ClapCommand.h"
#include "PrompterCore/support/Rounding.h"

namespace Varnelle {

using PrompterCore::ClapCommand;
using PrompterCore::ClapGesture;
using PrompterCore::ControllerStatus;
using PrompterCore::Countdown;

namespace {

// The session's time as the moments that a countdown is asked with.
Countdown::Moment momentAt(double time) {
    return Countdown::Moment(std::chrono::nanoseconds(PrompterCore::roundedToNearest(time * 1e9)));
}

double secondsAt(Countdown::Moment moment) {
    return std::chrono::duration<double>(moment.time_since_epoch()).count();
}

}  // namespace

TakeSession::TakeSession(std::int64_t countdown) noexcept
    : length_(std::max<std::int64_t>(countdown, 0)) {}

std::vector<TakeEvent> TakeSession::hear(const ClapGesture& gesture, double time) {
    std::vector<TakeEvent> events = advanceTo(time);
    const auto command = PrompterCore::clapCommandFor(gesture.count, isRecording());
    if (!command) return events;
    const std::vector<TakeEvent> answer =
        countdown_                      ? callOff(time)
        : *command == ClapCommand::stop ? end(gesture.firstClap - clapMargin, time)
                                        : ask(time, std::min(gesture.lastClap + clapRing, time));
    events.insert(events.end(), answer.begin(), answer.end());
    return events;
}

std::vector<TakeEvent> TakeSession::step(double time) {
    std::vector<TakeEvent> events = advanceTo(time);
    const std::vector<TakeEvent> answer = countdown_      ? callOff(time)
                                          : isRecording() ? end(time, time)
                                                          : ask(time, time);
    events.insert(events.end(), answer.begin(), answer.end());
    return events;
}

std::vector<TakeEvent> TakeSession::advanceTo(double time) {
    if (!countdown_ || !countdown_->isFinishedAt(momentAt(time))) return {};
    began_ = std::min(secondsAt(countdown_->startedAt()) + countdown_->duration(), time);
    countdown_.reset();
    return {{.kind = TakeEvent::Kind::began, .time = *began_}};
}

std::vector<TakeEvent> TakeSession::finish(double time) {
    std::vector<TakeEvent> events = advanceTo(time);
    if (!countdown_ && !isRecording()) return events;
    const std::vector<TakeEvent> answer = countdown_ ? callOff(time) : end(time, time);
    events.insert(events.end(), answer.begin(), answer.end());
    return events;
}

std::optional<std::int64_t> TakeSession::countdownAt(double time) const noexcept {
    if (!countdown_) return std::nullopt;
    return countdown_->remainingAt(momentAt(time));
}

double TakeSession::countdownProgressAt(double time) const noexcept {
    return countdown_ ? countdown_->progressAt(momentAt(time)) : 0;
}

std::optional<double> TakeSession::recordedAt(double time) const noexcept {
    if (!began_) return std::nullopt;
    return std::max(time - *began_, 0.0);
}

ControllerStatus TakeSession::statusAt(double time) const {
    using Step = ControllerStatus::TakeStep;
    const auto left = countdownAt(time);
    const auto recorded = recordedAt(time);
    const Step step = left ? Step::countingDown(*left) : recorded ? Step::running() : Step::idle();
    std::optional<std::int64_t> seconds;
    if (recorded) seconds = PrompterCore::truncatedTowardZero(*recorded);
    return ControllerStatus::take(step, false, seconds);
}

std::vector<TakeEvent> TakeSession::ask(double time, double beginWithoutCountdown) {
    if (length_ == 0) {
        began_ = std::max(beginWithoutCountdown, ended_);
        return {{.kind = TakeEvent::Kind::began, .time = *began_}};
    }
    countdown_.emplace(length_, momentAt(time));
    return {{.kind = TakeEvent::Kind::countdown, .time = time}};
}

// Claps that began before the take did were meant for the countdown.
std::vector<TakeEvent> TakeSession::end(double at, double time) {
    const double began = *began_;
    if (at <= began) return callOff(time);
    began_.reset();
    ended_ = at;
    return {{.kind = TakeEvent::Kind::ended, .time = at}};
}

std::vector<TakeEvent> TakeSession::callOff(double time) {
    countdown_.reset();
    began_.reset();
    return {{.kind = TakeEvent::Kind::calledOff, .time = time}};
}

}  // namespace Varnelle
