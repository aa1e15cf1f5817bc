#pragma once

// Turns the continuous deltas of a scroll wheel or trackpad into whole steps.
//
// Units: deltas, threshold and pending are points of scroll; a step is whatever the host makes of
// it, such as a line.
//
//   ScrollStepper stepper{.threshold = 10};
//   stepper.add(4);     // 0, and 4 are pending
//   stepper.add(7);     // 1, and 1 is pending
//   stepper.add(-3);    // 0, and -3 are pending: turning back drops what was left

#include <cstdint>

#include "PrompterCore/support/Required.h"

namespace PrompterCore {

/// A value: one for each scroll source, kept for the session. A host may set `pending` to 0 to
/// forget an unfinished step.
struct ScrollStepper {
    Required<double> threshold;  ///< points, the delta that makes one step
    double pending = 0;          ///< points, not yet turned into steps

    /// Takes `delta` in and returns the whole steps that are full, negative upwards. A change of
    /// direction drops what was pending; a delta of 0 drops a positive remainder and keeps a
    /// negative one. Stops the program unless the steps are finite and fit 64 bits, which needs a
    /// threshold other than 0 and finite deltas. O(1); never allocates.
    std::int64_t add(double delta) noexcept;

    friend bool operator==(const ScrollStepper&, const ScrollStepper&) = default;
};

}  // namespace PrompterCore
