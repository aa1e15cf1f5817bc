#pragma once

// What is recorded of the camera's picture: the largest crop in the shape of the framing.
//
// Units: pixels of the camera's picture, origin at its top left, y downwards.
//
//   const Size sensor{.width = 1920, .height = 1080};
//   FrameSize::cropping(sensor, CameraFraming::portrait);                   // 608 by 1080
//   FrameSize::room(sensor, CameraFraming::portrait);                       // 1312 by 0
//   FrameSize::rect(sensor, CameraFraming::portrait, FrameOffset(1, 0));    // at (1312, 0)
//
// Nothing here allocates: safe in a display callback.

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/FrameOffset.h"
#include "PrompterCore/support/Geometry.h"

namespace PrompterCore::FrameSize {

/// Each side is an even number of at least 2, as video encoders need it, so that it may exceed the
/// sensor's: by 1 where that is a whole number. `sensor` itself unless both its sides are above 0.
/// Agrees with CameraResolution::framed.
[[nodiscard]] Size cropping(const Size& sensor, CameraFraming framing) noexcept;

/// How far the crop can slide, 0 at least.
[[nodiscard]] Size room(const Size& sensor, CameraFraming framing) noexcept;

/// The crop within the sensor's picture.
[[nodiscard]] Rectangle rect(const Size& sensor, CameraFraming framing,
                             const FrameOffset& offset) noexcept;

}  // namespace PrompterCore::FrameSize
