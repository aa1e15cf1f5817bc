#pragma once

// Where sound becomes words. Behind it stands whatever recognises speech; in front of it nothing
// knows which one that is.
//
// Units: samples are mono at 16 kHz, full scale 1.0; times are seconds of the sound.
//
//   HeardWords heard;
//   for (std::span<const float> samples : sound)
//       for (const WordsUpdate& update : recogniser.hear(samples)) heard.apply(update);
//   for (const WordsUpdate& update : recogniser.finish()) heard.apply(update);

#include <cstdint>
#include <span>
#include <vector>

#include "host/HeardWords.h"

namespace Varnelle {

inline constexpr int recogniserRate = 16000;  ///< samples/s that every recogniser is given

/// How long `samples` samples at that rate last.
constexpr double recogniserSeconds(std::int64_t samples) noexcept {
    return static_cast<double>(samples) / recogniserRate;
}

/// Hears one sound from its beginning to its end. Owns no clock and no thread: the words depend
/// on the samples alone, not on how they are cut into calls.
class Recogniser {
public:
    Recogniser() = default;
    Recogniser(const Recogniser&) = delete;
    Recogniser& operator=(const Recogniser&) = delete;
    virtual ~Recogniser() = default;

    /// Takes the next samples, as many as there are, and returns the updates they brought, in
    /// order; none while nothing changed. A sample beyond full scale is clipped, one that is not a
    /// number is silence. Samples after `finish` are not heard.
    virtual std::vector<WordsUpdate> hear(std::span<const float> samples) = 0;

    /// The sound has ended: returns what is still to say, the last update being final. Empty when
    /// it has been said before.
    virtual std::vector<WordsUpdate> finish() = 0;
};

}  // namespace Varnelle
