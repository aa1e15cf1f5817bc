#pragma once

// Mono sound of one rate as sound of another, as it comes.
//
//   Resampler resampler(48000, 16000);
//   std::vector<float> sound = resampler.convert(samples);   // a third as many, a few ms later
//   std::vector<float> rest = resampler.finish();
//
// Units: rates are samples per second.

#include <memory>
#include <span>
#include <vector>

namespace Varnelle {

/// Converts one sound from its beginning to its end.
class Resampler {
public:
    /// True for rates that a resampler takes: above 0, and at most 256 times apart.
    [[nodiscard]] static bool converts(double from, double to);

    /// Stops the program unless it `converts` these rates.
    Resampler(double from, double to);
    Resampler(Resampler&&) noexcept;
    Resampler& operator=(Resampler&&) noexcept;
    ~Resampler();

    /// What the next samples bring; what they end with may come with the ones after them. Samples
    /// of equal rates are handed on as they are.
    [[nodiscard]] std::vector<float> convert(std::span<const float> samples);
    /// The sound has ended: what is still to come. Nothing is converted after it.
    [[nodiscard]] std::vector<float> finish();

private:
    class Converter;

    double ratio_;                          // samples out for each one in
    std::unique_ptr<Converter> converter_;  // null where the rates are equal
};

}  // namespace Varnelle
