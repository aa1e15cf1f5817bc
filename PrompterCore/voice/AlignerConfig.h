#pragma once

// How the voice aligner listens: how many words it compares, where it searches, what it accepts.
//
// Units: lengths and distances are tokens of Script::tokens; scores, penalties and likeness share
// one scale, on which 1 is a perfect match.
//
//   AlignerConfig config{.tailLength = 8, .lookBehind = 15, .lookAhead = 45, .acceptScore = 0.6,
//                        .fuzzyFloor = 0.55, .recencyDecay = 0.8, .backwardPenalty = 0.02,
//                        .forwardPenalty = 0.01};

#include <cstdint>

#include "PrompterCore/support/Required.h"

namespace PrompterCore {

/// Every field is the host's choice; none has a default and none is checked before it is used.
struct AlignerConfig {
    Required<std::int64_t> tailLength;  ///< newest spoken forms that are compared; not negative;
                                        ///< with 0 nothing ever aligns
    Required<std::int64_t> lookBehind;  ///< tokens searched before the cursor
    Required<std::int64_t> lookAhead;   ///< tokens searched after the cursor
    Required<double> acceptScore;       ///< the lowest penalised score that moves the cursor
    Required<double> fuzzyFloor;        ///< 0 ... 1; two words less alike than this count as wholly
                                        ///< different; equal words always count as equal
    Required<double> recencyDecay;      ///< factor of a word's weight per step back from the newest
    Required<double> backwardPenalty;   ///< score subtracted per token before the cursor
    Required<double> forwardPenalty;    ///< score subtracted per token after the cursor, the first
                                        ///< excepted: the next word is the expected one

    friend bool operator==(const AlignerConfig&, const AlignerConfig&) = default;
};

}  // namespace PrompterCore
