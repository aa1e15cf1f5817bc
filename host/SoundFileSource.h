#pragma once

// Sound files of any rate and channel count, as a source of mono sound at the file's own rate.
//
//   SoundFileSource sound("talk.flac");
//   while (!sound.hasEnded()) take(sound.read());

#include <cstddef>
#include <memory>
#include <string>

#include "host/SoundSource.h"

namespace Varnelle {

/// Reads one file from its beginning to its end.
class SoundFileSource final : public SoundSource {
public:
    static constexpr std::size_t blockSize = 4096;  ///< samples of one `read`, but for the last

    /// Opens `name`, or standard input for "-" (read to its end first). Throws NoInput when it
    /// cannot be read, BadData when it is no sound file or has a rate that no resampler takes.
    explicit SoundFileSource(const std::string& name);
    ~SoundFileSource() override;

    [[nodiscard]] double sampleRate() const override;
    /// The next block; empty at the end. A sample that is not a number is 0. Channels are averaged.
    std::vector<float> read() override;
    [[nodiscard]] bool hasEnded() const override;
    /// After the end: that the file says it holds more sound than could be read.
    [[nodiscard]] std::optional<std::string> trouble() const override;

    /// Seconds of sound that the file says it holds.
    [[nodiscard]] double duration() const;

private:
    class Reader;
    std::unique_ptr<Reader> reader_;
};

}  // namespace Varnelle
