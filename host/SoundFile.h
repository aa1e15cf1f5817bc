#pragma once

// Sound files of any rate and channel count, read as what recognisers take: mono at 16 kHz.
//
//   SoundFile sound("talk.flac");
//   while (true) {
//       std::vector<float> samples = sound.next(800);   // 50 ms
//       if (samples.empty()) break;
//   }

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Varnelle {

/// Reads one file from its beginning to its end.
class SoundFile {
public:
    /// Opens `name`, or standard input for "-" (read to its end first). Throws NoInput when it
    /// cannot be read, BadData when it is no sound file.
    explicit SoundFile(const std::string& name);
    SoundFile(SoundFile&&) noexcept;
    SoundFile& operator=(SoundFile&&) noexcept;
    ~SoundFile();

    /// The next `count` samples; fewer only at the end, and none behind it. A sample that is not a
    /// number is 0. Channels are averaged.
    [[nodiscard]] std::vector<float> next(std::size_t count);

    /// Seconds of sound that the file says it holds.
    [[nodiscard]] double duration() const;
    /// After the end: true when the file says that it holds more sound than could be read.
    [[nodiscard]] bool endedEarly() const;

private:
    class Reader;
    std::unique_ptr<Reader> reader_;
};

}  // namespace Varnelle
