#pragma once

// An `.m4a` (AAC in MP4) from a file of AAC frames (ADTS), without encoding anew.
//
//   writeM4a(frames, target, {.samples = 480000, .made = now});
//
// Units: samples are those of the frames' own rate.

#include <chrono>
#include <cstdint>

namespace Varnelle {

struct M4aContent {
    std::int64_t samples = 0;                      ///< of the sound; silence around it is not shown
    std::chrono::system_clock::time_point made{};  ///< when the sound began
};

/// What a file of frames holds, as far as it is whole.
struct AacFrames {
    int rate = 0;             ///< samples/s; 0 when there is no frame
    std::int64_t frames = 0;  ///< in a row from the beginning, all of one rate
    std::int64_t bytes = 0;   ///< that these take

    friend bool operator==(const AacFrames&, const AacFrames&) = default;
};

/// Reads the descriptor `source` from its beginning. Throws CannotWrite when it cannot be read.
[[nodiscard]] AacFrames aacFramesIn(int source);

/// Writes the frames in `source` to the empty file `target`. A player shows `content.samples`
/// samples behind the encoder's priming, or as many as the frames hold. Throws CannotWrite with the
/// system's reason when `target` takes no more.
void writeM4a(int source, int target, const M4aContent& content);

}  // namespace Varnelle
