#pragma once

// How well a reading was followed, against the times at which its words were really spoken.
//
// Units: seconds of the sound; distances in tokens and in prompt lines.

#include <cstdint>
#include <string>
#include <vector>

#include "PrompterCore/voice/Alignment.h"
#include "host/HeardWords.h"
#include "host/ReadThrough.h"

namespace Varnelle {

/// Collects while a reading is followed; says what it found afterwards.
class Measure {
public:
    /// `spoken` are the words of the whole script as they were really spoken, in order. A word with
    /// no counterpart in the script, and all after it, count for nothing.
    Measure(const Script& script, const std::vector<HeardWord>& spoken);

    void aligned(const Alignment& alignment, double time);
    void frame(const ReadThrough& reading, const Frame& frame);

    /// Three short lines for a user.
    [[nodiscard]] std::string summary() const;

    /// Of the frames shown while somebody read, the share in which the eye line was within one line
    /// of the word being spoken, 0 to 1; 0 before the first.
    [[nodiscard]] double shareInPlace() const;
    /// The median of the seconds from a word's end to the position that it gave; 0 when none did.
    [[nodiscard]] double medianDelay() const;
    /// The median distance in tokens between what was shown and what was being spoken.
    [[nodiscard]] double medianDistance() const;
    [[nodiscard]] std::int64_t alignedCount() const;

private:
    struct Spoken {
        double start;
        double end;
    };
    // The token being spoken at `time`; -1 before the first.
    std::int64_t tokenAt(double time) const;

    std::vector<Spoken> tokens_;  // one for each token of the script that was spoken
    std::vector<double> delays_;
    std::vector<double> distances_;
    std::int64_t framesInPlace_ = 0;
};

}  // namespace Varnelle
