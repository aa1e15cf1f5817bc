#pragma once

// The bit rate a take's video is encoded at.
//
// Units: pixels, frames a second, bits a second.
//
//   VideoBitrate::forSize({.width = 1920, .height = 1080}, 30);   // 11197440

#include <cstdint>

#include "PrompterCore/support/Geometry.h"

namespace PrompterCore::VideoBitrate {

inline constexpr double bitsPerPixel = 0.18;         ///< and frame
inline constexpr std::int64_t lowest = 8'000'000;    ///< bits/s
inline constexpr std::int64_t highest = 40'000'000;  ///< bits/s

/// What the pixels of a second take, whole, from `lowest` to `highest`. Stops the program unless
/// the product is finite.
[[nodiscard]] std::int64_t forSize(Size size, std::int64_t frameRate) noexcept;

}  // namespace PrompterCore::VideoBitrate
