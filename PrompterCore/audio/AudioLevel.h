#pragma once

// The reading of a microphone's level meter.
//
// Units: samples are mono, full scale at 1.0; levels are decibels relative to full scale (dBFS) of
// the samples' root mean square.
//
//   const std::vector<float> buffer(480, 0.1F);
//   AudioLevel::meter(buffer);      // two thirds: -20 dBFS on a scale from -60 to 0

#include <span>

namespace PrompterCore::AudioLevel {

inline constexpr double floorDecibels = -60.0;  ///< dBFS, the level of an empty meter

/// From 0 at `floorDecibels` and below to 1 at full scale and above, linear in decibels. 0 for no
/// samples, for silence, and where a sample is NaN. O(n), never allocates: safe in an audio
/// callback.
[[nodiscard]] double meter(std::span<const float> samples) noexcept;

}  // namespace PrompterCore::AudioLevel
