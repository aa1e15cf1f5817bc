#pragma once

// What a host would offer for a camera: resolutions as they would be recorded, frame rates, and the
// ones it would use.
//
//   showCameraMenu(formats, {.framing = CameraFraming::portrait}, output);
//   //   Resolution   Camera
//   // * 608 × 1080   1920 × 1080
//   //   406 × 720    1280 × 720
//   //   Frame rate
//   //   60
//   // * 30

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "apps/varnelle/Output.h"
#include "host/CameraFormats.h"

namespace Varnelle {

/// How the camera is used, and what was chosen before.
struct CameraWishes {
    PrompterCore::CameraFraming framing = PrompterCore::CameraFraming::landscape;
    PrompterCore::CameraRotation rotation = PrompterCore::CameraRotation::none;
    std::optional<PrompterCore::CameraResolution> resolution = std::nullopt;
    std::optional<std::int64_t> frameRate = std::nullopt;  ///< frames per second
};

/// A line for each entry, those that would be used marked by an asterisk.
void showCameraMenu(const std::vector<CameraFormat>& formats, const CameraWishes& wishes,
                    Output& output);
/// The same as one JSON object.
void writeCameraMenuJson(const std::vector<CameraFormat>& formats, const CameraWishes& wishes,
                         Output& output);

}  // namespace Varnelle
