#pragma once

// How this host tunes the aligner and the scroll model: the numbers stand here and nowhere else,
// each with its reason. They were chosen on readings of the sample with misread, skipped, repeated
// and added words; see docs/decisions.md.

#include "PrompterCore/voice/AlignerConfig.h"
#include "PrompterCore/voice/ScrollModel.h"

namespace Varnelle::Tuning {

inline const PrompterCore::AlignerConfig aligner{
    // Long enough that a common phrase ("and the") cannot win against the place that the words
    // before it point to; short enough to find the new place within two seconds after a skip.
    .tailLength = 8,
    // Saying the last sentence again is what presenters do after a slip.
    .lookBehind = 30,
    // A paragraph left out. A window that the reader has left is the one loss that no later word
    // mends, so it is wide; a skipped page is a hand's move.
    .lookAhead = 90,
    // The two newest words alone are enough, the newest one alone is not. A wrong step is mended by
    // the next words; a place that was never accepted is not.
    .acceptScore = 0.34,
    // Three letters in ten may differ ("carry" for "carried"); below that words only look alike.
    .fuzzyFloor = 0.7,
    // The last three words weigh a little more than the five before them.
    .recencyDecay = 0.83,
    // Fifteen tokens back cost what a misheard word at the tail's far end does.
    .backwardPenalty = 0.004,
    // Reading on word by word costs nothing; at the window's end a perfect match is still accepted.
    .forwardPenalty = 0.006,
};

inline const PrompterCore::ScrollConfig scroll{
    .defaultRate = 2.5,        // tokens/s: 150 words a minute
    .minRate = 1.0,            // a slow reading still scrolls without stalling
    .maxRate = 5.0,            // nobody reads faster for long; keeps a jump from being a pace
    .rateSmoothing = 0.15,     // a steady pace over the last half dozen anchors
    .convergence = 5.0,        // 1/s: two thirds of the way in a fifth of a second
    .maxLead = 2.5,            // tokens: hides the recogniser's delay, no more
    .holdAfterSilence = 0.8,   // seconds: a breath
    .predictionGain = 1.0,     // the measured pace as it is
    .backStepThreshold = 3.0,  // tokens: below a phrase the display waits for the voice
    .backStepDelay = 0.5,      // seconds: two updates of the recogniser agree
};

}  // namespace Varnelle::Tuning
