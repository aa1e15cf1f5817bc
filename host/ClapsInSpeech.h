#pragma once

// Claps told from a voice that sounds like them: a p and a k after a short stop rise as sharply as
// a clap, are as bright and as short, but the vowels around them are louder. Claps are the loudest
// there is.
//
//   if (standOut(gesture, tail, 48000)) obey(gesture);
//
// Units: times of the gesture are seconds of the sound that `tail` is the end of.

#include "PrompterCore/audio/ClapDetector.h"
#include "host/SoundTail.h"

namespace Varnelle {

/// Whether the first and the last clap of `gesture` are claps and not consonants: the loudest
/// instant of the softer one is louder than the mean of the sound from a fifth of a second before
/// the first to three fifths behind the last, their own ring left out. (Hand claps into a reading
/// are so by 5 dB and more; the sample's consonants are 6 dB softer and less.) What `tail` no
/// longer holds does not count. `rate` is in samples per second.
[[nodiscard]] bool standOut(const PrompterCore::ClapGesture& gesture, const SoundTail& tail,
                            double rate);

}  // namespace Varnelle
