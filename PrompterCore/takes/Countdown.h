#pragma once

// The countdown before a take.
//
// Units: lengths are whole seconds; moments are those of the host's wall clock.
//
//   Countdown countdown(Countdown::standard, now);   // 5 s
//   countdown.remainingAt(now + 2700ms);             // 3
//   countdown.progressAt(now + 2700ms);              // 0.54

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace PrompterCore {

/// A value: it knows when it began, and is asked with the moment it is.
class Countdown {
public:
    /// Of the host's wall clock.
    using Moment = std::chrono::system_clock::time_point;

    static constexpr std::int64_t standard = 5;  ///< seconds, where nobody chose another length

    /// `seconds` below 0 count as 0.
    Countdown(std::int64_t seconds, Moment startedAt) noexcept
        : seconds_(std::max<std::int64_t>(seconds, 0)), startedAt_(startedAt) {}

    [[nodiscard]] std::int64_t seconds() const noexcept { return seconds_; }  ///< its length
    [[nodiscard]] Moment startedAt() const noexcept { return startedAt_; }    ///< when it began
    /// Its length in seconds.
    [[nodiscard]] double duration() const noexcept { return static_cast<double>(seconds_); }

    /// Seconds left, a begun one whole; all of them before the start. Never below 0.
    [[nodiscard]] std::int64_t remainingAt(Moment moment) const noexcept;
    /// True when nothing is left; a countdown of 0 s is finished even before its start.
    [[nodiscard]] bool isFinishedAt(Moment moment) const noexcept {
        return remainingAt(moment) == 0;
    }
    /// From 0 at the start and before to 1 at the end and after; 1 for a countdown of 0 s.
    [[nodiscard]] double progressAt(Moment moment) const noexcept;

    friend bool operator==(const Countdown&, const Countdown&) = default;

private:
    std::int64_t seconds_;  // not below 0
    Moment startedAt_;
};

}  // namespace PrompterCore
