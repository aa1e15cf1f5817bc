#pragma once

// The claps that a sound's end leaves open: they count as if silence followed.
//
//   for (const ClapGesture& gesture : lastClaps(detector, 48000, end)) obey(gesture);
//
// Units: seconds of the sound; samples per second.

#include <vector>

#include "PrompterCore/audio/ClapDetector.h"

namespace Varnelle {

/// What `detector` has not told yet when its sound is over at `end`. `rate` is the detector's.
/// After it nothing more is to be heard.
[[nodiscard]] std::vector<PrompterCore::ClapGesture> lastClaps(PrompterCore::ClapDetector& detector,
                                                               double rate, double end);

}  // namespace Varnelle
