#pragma once

// Keeps the length of what a microphone gave equal to the time that has passed, so that the times
// of a sound stay true over gaps and over hours.
//
//   CaptureClock clock(48000);
//   clock.take(960, 0.05, CaptureClock::Device::runs);   // nothing to correct
//   clock.take(0, 2.05, CaptureClock::Device::isAway);   // silence: 1.99 s of samples
//
// Units: samples, samples per second; times are seconds since the capture began.

#include <cstdint>
#include <optional>

namespace Varnelle {

/// A value.
class CaptureClock {
public:
    static constexpr double usualLag = 0.04;  ///< seconds that samples may come late
    static constexpr double longestLag =
        0.3;  ///< seconds behind which a running device may have lost some
    /// Seconds in which a busy machine's samples still come. What was replaced too soon would be
    /// lost: a clap, or a syllable of a take.
    static constexpr double patience = 2;
    static constexpr double longestLead = 0.1;  ///< seconds that its clock may be ahead of ours

    enum class Device {
        runs,    ///< samples come, if not at this moment: late ones are waited for
        isAway,  ///< none will come
    };

    struct Correction {
        std::int64_t silence = 0;  ///< samples of silence to put before the captured ones
        std::int64_t dropped = 0;  ///< captured samples, of the first ones, to leave out

        friend bool operator==(const Correction&, const Correction&) = default;
    };

    /// Stops the program unless `rate` is above 0.
    explicit CaptureClock(double rate);

    /// By `time`, `captured` samples more have come: what makes up for those that are missing or
    /// too many.
    [[nodiscard]] Correction take(std::int64_t captured, double time, Device device);

    friend bool operator==(const CaptureClock&, const CaptureClock&) = default;

private:
    double rate_;
    std::int64_t given_ = 0;           // samples, corrections included
    std::optional<double> lateSince_;  // absent unless a running device is far behind
};

}  // namespace Varnelle
