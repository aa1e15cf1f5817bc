#pragma once

// Mono sound as AAC, in the stream format (ADTS) in which each frame says by itself how it is read:
// a file of it can be played up to wherever it ends, and ends nowhere wrongly.
//
// Units: samples are mono, full scale 1.0; rates are samples per second.
//
//   AacEncoder encoder(48000);
//   std::string bytes = encoder.encode(samples);   // the frames that are complete
//   bytes += encoder.finish();                     // the rest, filled up with silence

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace Varnelle {

/// Encodes one sound from its beginning to its end.
class AacEncoder {
public:
    static constexpr std::int64_t frameLength = 1024;  ///< samples of one frame
    /// Samples of silence that a decoder brings before the first one of the sound.
    static constexpr std::int64_t priming = 1024;

    /// The rate in which a sound of `rate` is to be encoded: its own where the format knows it,
    /// else the next one above, and half of it or 96 000 above that.
    [[nodiscard]] static int rateFor(double rate);

    /// Stops the program unless `rate` is one that `rateFor` gives. Throws Unavailable when the
    /// system's library has no encoder.
    explicit AacEncoder(int rate);
    AacEncoder(AacEncoder&&) noexcept;
    AacEncoder& operator=(AacEncoder&&) noexcept;
    ~AacEncoder();

    /// The frames that `samples` complete. What is beyond full scale is clipped; what is no number
    /// is silence.
    [[nodiscard]] std::string encode(std::span<const float> samples);
    /// The sound has ended: the frames that are still to come. All frames together, `priming`
    /// subtracted, hold the sound and less than a frame of silence. Nothing is encoded after it.
    [[nodiscard]] std::string finish();

private:
    class Encoder;
    std::unique_ptr<Encoder> encoder_;  // never null
};

}  // namespace Varnelle
