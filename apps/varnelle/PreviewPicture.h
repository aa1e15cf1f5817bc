#pragma once

// A drawing of the camera's preview: the pane, the window in it that shows what is recorded, the
// sensor's whole picture around that, and the room that a drag has.
//
//   writeFile("preview.svg", previewPicture({.sensor = {.width = 1920, .height = 1080},
//                                            .framing = CameraFraming::portrait,
//                                            .pane = {.width = 800, .height = 600}}));
//
// Units: the sensor in pixels, the pane and all numbers in the drawing in points of the pane.

#include <string>

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/FrameOffset.h"
#include "PrompterCore/camera/LensMarker.h"
#include "PrompterCore/support/Geometry.h"

namespace Varnelle {

struct PreviewScene {
    PrompterCore::Size sensor;  ///< pixels
    PrompterCore::CameraFraming framing = PrompterCore::CameraFraming::landscape;
    PrompterCore::FrameOffset offset = PrompterCore::FrameOffset::centred;
    PrompterCore::Size pane;  ///< points
    bool mirrored = false;
    PrompterCore::LensMarker marker = PrompterCore::LensMarker::default_;  ///< in the window
};

/// An SVG document, 800 units wide, with each part's numbers below the drawing.
[[nodiscard]] std::string previewPicture(const PreviewScene& scene);

}  // namespace Varnelle
