#pragma once

// Made sounds, for whoever listens: hand claps in a room and what may be taken for them. Mono, full
// scale at 1.0; the same seed makes the same samples on every machine.
//
//   Sounds sounds(48'000, 2.0, 7);            // 2 s of silence at 48 kHz, seed 7
//   sounds.noise(0.001).clapAt(0.5).clapAt(0.8);
//   detector.feed(sounds.samples(), 0.0);

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <random>
#include <span>
#include <vector>

namespace PrompterCore::Tests {

/// A stretch of sound that things are mixed into. What reaches beyond its end is cut off. Times and
/// durations are seconds, amplitudes are of the peak.
class Sounds {
public:
    Sounds(double rate, double seconds, std::uint64_t seed)
        : rate_(rate), samples_(static_cast<std::size_t>(seconds * rate)), random_(seed) {}

    [[nodiscard]] double rate() const { return rate_; }
    [[nodiscard]] const std::vector<float>& samples() const { return samples_; }

    /// A hand clap: a burst of noise, 4 ms to a third, with the walls' early echoes behind it and a
    /// little reverberation.
    Sounds& clapAt(double time, double amplitude = 0.7) {
        burst(time, amplitude, 0.0035);
        double echo = time;
        for (int wall = 0; wall < 5; ++wall) {
            echo += 0.002 + 0.004 * uniform();
            burst(echo, amplitude * (0.12 + 0.18 * uniform()), 0.003);
        }
        burst(time + 0.005, amplitude * 0.04, 0.12);
        return *this;
    }

    /// A fist on the table: loud, sudden, all of it below 100 Hz, gone after 30 ms.
    Sounds& thumpAt(double time, double amplitude = 0.9) {
        return mix(time, 0.2, [&](double t) {
            const double rise = std::min(t / 0.004, 1.0);
            return amplitude * rise * std::exp(-t / 0.012) * sine(80.0, t);
        });
    }

    /// A tone of `frequency` Hz that begins at once and stays.
    Sounds& toneAt(double time, double seconds, double frequency, double amplitude = 0.5) {
        return mix(time, seconds, [&](double t) { return amplitude * sine(frequency, t); });
    }

    /// A tune like a piano's: chords of struck notes with their overtones, which ring on.
    Sounds& musicAt(double time, double seconds, double amplitude = 0.5) {
        for (double at = 0; at < seconds; at += 0.2 + 0.3 * uniform()) {
            const double root = 110.0 * std::pow(2.0, std::floor(25.0 * uniform()) / 12.0);
            for (const double interval : {1.0, 1.25, 1.5}) {
                mix(time + at, 1.5, [&](double t) {
                    double value = 0;
                    for (int overtone = 1; overtone <= 6; ++overtone) {
                        value += sine(root * interval * overtone, t) *
                                 std::exp(-t * overtone / 0.5) / overtone;
                    }
                    return amplitude / 6 * std::min(t / 0.005, 1.0) * value;
                });
            }
        }
        return *this;
    }

    /// Noise all over: a room, a fan, a bad microphone.
    Sounds& noise(double amplitude) {
        for (float& sample : samples_) {
            sample += static_cast<float>(amplitude * (2.0 * uniform() - 1.0));
        }
        return *this;
    }

    /// Samples of the same rate, recorded elsewhere.
    Sounds& mixAt(double time, std::span<const float> samples) {
        std::size_t at = indexOf(time);
        for (const float sample : samples) {
            if (at >= samples_.size()) break;
            samples_[at++] += sample;
        }
        return *this;
    }

private:
    static double sine(double frequency, double t) {
        return std::sin(2.0 * std::numbers::pi * frequency * t);
    }

    // 0 to 1, without the standard distributions, which differ between libraries.
    double uniform() { return static_cast<double>(random_() >> 11) * 0x1p-53; }

    std::size_t indexOf(double time) const {
        return static_cast<std::size_t>(std::max(0.0, std::ceil(time * rate_)));
    }

    template <class Wave>
    Sounds& mix(double time, double seconds, Wave wave) {
        const std::size_t end = std::min(samples_.size(), indexOf(time + seconds));
        for (std::size_t i = indexOf(time); i < end; ++i) {
            samples_[i] += static_cast<float>(wave(static_cast<double>(i) / rate_ - time));
        }
        return *this;
    }

    // Noise that begins at once and loses two thirds in each `decay` seconds.
    void burst(double time, double amplitude, double decay) {
        mix(time, 8.0 * decay,
            [&](double t) { return amplitude * std::exp(-t / decay) * (2.0 * uniform() - 1.0); });
    }

    double rate_;
    std::vector<float> samples_;
    std::mt19937_64 random_;
};

}  // namespace PrompterCore::Tests
