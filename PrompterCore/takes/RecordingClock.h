#pragma once

// The time on the recording clock.
//
//   RecordingClock::format(59.9);   // "00:59"
//   RecordingClock::format(3600);   // "1:00:00"

#include <string>

namespace PrompterCore::RecordingClock {

/// mm:ss, or h:mm:ss from an hour on. A part of a second is dropped; less than 0 s is 0. Stops the
/// program unless `seconds` is finite and, where it is above 0, fits 64 bits.
[[nodiscard]] std::string format(double seconds);

}  // namespace PrompterCore::RecordingClock
