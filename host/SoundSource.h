#pragma once

// Where sound comes from: a file, a microphone. Mono, full scale 1.0, at the source's own rate.
//
//   std::unique_ptr<SoundSource> source = ...;
//   while (!source->hasEnded()) {
//       if (const auto descriptor = source->waitingFor()) waitUntilReadable(*descriptor);
//       take(source->read());
//   }
//   if (const auto trouble = source->trouble()) complain(*trouble);
//
// Units: samples per second; a source's times are seconds, counted from its first sample.

#include <optional>
#include <string>
#include <vector>

namespace Varnelle {

/// One sound from its beginning on, each sample read once.
class SoundSource {
public:
    SoundSource() = default;
    SoundSource(const SoundSource&) = delete;
    SoundSource& operator=(const SoundSource&) = delete;
    virtual ~SoundSource() = default;

    /// Samples/s. The same for the source's whole life.
    [[nodiscard]] virtual double sampleRate() const = 0;
    /// The next samples that are there, finite numbers; a file gives its next block. Never waits:
    /// empty when there are none yet, and behind the end.
    virtual std::vector<float> read() = 0;
    /// A descriptor that is readable when more can be read. Absent when `read` has something to say
    /// at once.
    [[nodiscard]] virtual std::optional<int> waitingFor() const { return std::nullopt; }
    /// True when nothing more will come. A microphone has no end.
    [[nodiscard]] virtual bool hasEnded() const = 0;
    /// What is or was wrong with the sound, in a sentence. Absent when nothing is.
    [[nodiscard]] virtual std::optional<std::string> trouble() const { return std::nullopt; }
};

}  // namespace Varnelle
