#pragma once

// A smooth scroll position that follows sparse, jumpy anchors from the voice aligner.
//
// Units: positions and indices are tokens of Script::tokens, positions may be fractional;
// times are seconds on any one clock of the host's; rates are tokens per second.
//
//   ScrollModel model(config);
//   const bool heard = true;
//   model.setSpeaking(heard);
//   model.anchor(12, 3.0);                // token 12 was heard at 3.0 s
//   double shown = model.tickAt(3.016);   // once per display frame; 12.0 on the first

#include <cstdint>
#include <optional>

#include "PrompterCore/support/Required.h"

namespace PrompterCore {

/// How the model moves. Every field is the host's choice; none has a default.
struct ScrollConfig {
    Required<double> defaultRate;        ///< tokens/s, until a rate has been measured
    Required<double> minRate;            ///< tokens/s, lower clamp of a measured rate; above 0
    Required<double> maxRate;            ///< tokens/s, upper clamp of a measured rate; wins over
                                         ///< `minRate` where the two cross
    Required<double> rateSmoothing;      ///< 0 ... 1, share of a new measurement taken per anchor
    Required<double> convergence;        ///< 1/s, speed of the exponential approach to the target
    Required<double> maxLead;            ///< tokens, furthest the target may run ahead of an anchor
    Required<double> holdAfterSilence;   ///< s, how long past `maxLead / rate` after an anchor the
                                         ///< target may stay ahead of it
    Required<double> predictionGain;     ///< factor of rate x time when running ahead
    Required<double> backStepThreshold;  ///< tokens that the target must lie behind the position
                                         ///< before moving back is considered
    Required<double> backStepDelay;      ///< s that this must last before the position moves back

    friend bool operator==(const ScrollConfig&, const ScrollConfig&) = default;
};

/// A value: copy it to remember a state, compare two with ==. Owns no clock and no thread. Every
/// operation is O(1) and never allocates, so all are safe in a display callback.
class ScrollModel {
public:
    /// At token 0, silent, at `config.defaultRate`.
    explicit ScrollModel(const ScrollConfig& config) noexcept;

    [[nodiscard]] double position() const noexcept { return position_; }  ///< tokens, as displayed
    [[nodiscard]] double rate() const noexcept { return rate_; }          ///< tokens/s, estimated
    [[nodiscard]] const ScrollConfig& config() const noexcept { return config_; }

    /// Back to the state after construction.
    void reset() noexcept;

    /// The presenter started or stopped speaking. Only while speaking does the target run ahead of
    /// the last anchor.
    void setSpeaking(bool speaking) noexcept { speaking_ = speaking; }

    /// Token `tokenIndex` was heard at `time`. The anchor always moves; the rate learns only from a
    /// forward move at least 0.15 s after the previous anchor. A negative index is not clamped
    /// here, unlike in jumpTo.
    void anchor(std::int64_t tokenIndex, double time) noexcept;

    /// Puts the display and the anchor at `tokenIndex` at once; a negative index is taken as 0. The
    /// rate stays.
    void jumpTo(std::int64_t tokenIndex, double time) noexcept;

    /// Advances to `time` and returns the new position. The first tick shows the anchor itself;
    /// every further one eases towards the target, forwards at once, backwards only after the
    /// target has lain `backStepThreshold` behind for `backStepDelay` without a break. A time not
    /// after the previous tick's counts as no time passed.
    double tickAt(double time) noexcept;

    friend bool operator==(const ScrollModel&, const ScrollModel&) = default;

private:
    double targetAt(double time) const noexcept;

    ScrollConfig config_;
    double position_ = 0;
    double rate_;
    double anchorIndex_ = 0;             // of the last anchor or jump
    std::optional<double> anchorTime_;   // absent until the first anchor or jump
    std::optional<double> lastTick_;     // absent until the first tick
    std::optional<double> behindSince_;  // absent unless the target lies far enough behind
    bool speaking_ = false;
};

}  // namespace PrompterCore
