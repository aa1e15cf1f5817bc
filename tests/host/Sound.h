#pragma once

// Sound as tests hear it: all of a source at once, or the start of a file as recognisers take it.

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "host/Recogniser.h"
#include "host/Resampler.h"
#include "host/SoundFileSource.h"

namespace Varnelle::Tests {

/// What is left of a source that never has to be waited for.
inline std::vector<float> restOf(SoundSource& sound) {
    std::vector<float> samples;
    while (!sound.hasEnded()) {
        const std::vector<float> next = sound.read();
        samples.insert(samples.end(), next.begin(), next.end());
    }
    return samples;
}

/// The first `seconds` of a file, or all of it, at the recognisers' rate.
inline std::vector<float> recognisersSound(const std::string& name, double seconds) {
    SoundFileSource sound(name);
    Resampler resampler(sound.sampleRate(), recogniserRate);
    std::vector<float> samples = resampler.convert(restOf(sound));
    const std::vector<float> end = resampler.finish();
    samples.insert(samples.end(), end.begin(), end.end());
    samples.resize(std::min(samples.size(), static_cast<std::size_t>(seconds * recogniserRate)));
    return samples;
}

}  // namespace Varnelle::Tests
