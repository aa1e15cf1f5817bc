#pragma once

// Hears hand claps in a microphone's samples, and which of them belong together.
//
// Units: samples are mono, full scale at 1.0; times are seconds on the clock that the samples'
// times are given in; levels are decibels relative to full scale (dBFS).
//
//   ClapDetector detector(48'000);
//   for (const ClapGesture& gesture : detector.feed(buffer, time))   // buffer by buffer
//       if (const auto command = clapCommandFor(gesture.count, recording)) apply(*command);
//
// Sound is cut into steps of 2.5 ms. A clap rises by 15 dB at once, is bright, and has lost 10 dB
// after 25 ms; speech, music and thumps fail one of these. Claps not more than 0.6 s apart are one
// gesture, which is reported when 0.65 s have passed since its last clap.

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

namespace PrompterCore {

/// Claps that follow each other closely.
struct ClapGesture {
    std::int64_t count = 0;  ///< claps, at least 1
    double firstClap = 0;    ///< s, when the first one began
    double lastClap = 0;     ///< s, when the last one began

    friend bool operator==(const ClapGesture&, const ClapGesture&) = default;
};

/// A value: copy it to remember a state, compare two with ==. It lives as long as one stream of one
/// sample rate; for another one make another. Samples may be cut into buffers of any size.
class ClapDetector {
public:
    /// What is known about one step of the sound.
    struct Step {
        double time = 0;    ///< s, of its first sample
        double level = 0;   ///< dBFS, at least -120; NaN where a sample is
        double bright = 0;  ///< energy of the differences between neighbouring samples over the
                            ///< energy of the samples: small for low and smooth sounds, up to 4
                            ///< for sharp ones, any number where silence follows a sound

        friend bool operator==(const Step&, const Step&) = default;
    };

    /// Nothing heard. `sampleRate` is in Hz. Below 600 Hz a step is one sample, also for a rate of
    /// 0 or less, which gives its steps no sensible time. Stops the program unless the rate is
    /// finite and a step's samples can be counted in 64 bits.
    explicit ClapDetector(double sampleRate);

    [[nodiscard]] std::int64_t stepLength() const noexcept { return stepLength_; }  ///< samples
    [[nodiscard]] double stepSeconds() const noexcept { return stepSeconds_; }      ///< s, exactly

    /// The steps that are remembered, oldest first: the last 26, and up to a thousand before them.
    [[nodiscard]] std::span<const Step> steps() const noexcept { return steps_; }

    /// Hears `samples`, the first of them at `startingAt`, and returns the gesture that was found
    /// to be over, if one was. At most one, and a clap that comes too late for a gesture drops it
    /// unless an earlier buffer has told it: long buffers lose some, usual ones hardly any.
    /// `startingAt` does not count while an unfinished step waits for its rest: the stream is taken
    /// as continuous. No samples at a later time can still end a gesture. A sample that is NaN or
    /// infinite makes no clap.
    ///
    /// O(n). A buffer of up to 4096 samples that ends no gesture never allocates, at rates up to
    /// 1.6 MHz and after the first buffer that this detector, or this copy of one, was fed: safe in
    /// an audio callback.
    std::vector<ClapGesture> feed(std::span<const float> samples, double startingAt);

    friend bool operator==(const ClapDetector&, const ClapDetector&) = default;

private:
    void takeStep(std::span<const float> samples, double time);
    std::int64_t takeSteps(std::span<const float> samples);
    bool isOnset(std::int64_t index) const noexcept;
    void addClap(double time) noexcept;
    void findClaps() noexcept;
    void forgetOldSteps();
    std::vector<ClapGesture> gestureOverAt(double time);

    std::int64_t stepLength_;
    double stepSeconds_;
    std::vector<float> pending_;  // less than a step
    double pendingStart_ = 0;     // of the first sample in `pending_`, or of the next to come
    float lastSample_ = 0;        // of the previous step
    std::vector<Step> steps_;
    std::int64_t nextToCheck_ = 0;     // index into `steps_`
    std::optional<ClapGesture> open_;  // claps that may still be followed; absent for none
    double quietUntil_ = -std::numeric_limits<double>::infinity();  // no clap begins before
};

}  // namespace PrompterCore
