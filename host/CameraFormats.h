#pragma once

// What a camera can deliver, as a file of JSON that any program can write: a list of formats.
//
//   [{"width": 1920, "height": 1080, "frameRates": [[1, 30], [60, 60]]},
//    {"width": 1280, "height": 720, "frameRates": [[1, 60]]}]
//
// Units: pixels, frames per second. A range of frame rates is its lowest and its highest rate, both
// included. Other keys are ignored.

#include <string_view>
#include <vector>

#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "PrompterCore/support/ClosedRange.h"

namespace Varnelle {

struct CameraFormat {
    PrompterCore::CameraResolution resolution;  ///< each side from 1 to 100000
    /// At least one, each rate above 0 and at most 100000.
    std::vector<PrompterCore::ClosedRange<double>> frameRates;

    friend bool operator==(const CameraFormat&, const CameraFormat&) = default;
};

/// The formats in `json`, in their order. Throws BadData with the number of the format, from 1 on,
/// and what is wrong with it: "format 2: \"height\": missing".
[[nodiscard]] std::vector<CameraFormat> cameraFormats(std::string_view json);

/// The formats as the choice of resolutions takes them.
[[nodiscard]] std::vector<PrompterCore::CameraFormatOption> formatOptions(
    const std::vector<CameraFormat>& formats);

/// All frame rates at which `resolution` can be had, in the formats' order.
[[nodiscard]] std::vector<PrompterCore::ClosedRange<double>> frameRatesOf(
    const PrompterCore::CameraResolution& resolution, const std::vector<CameraFormat>& formats);

}  // namespace Varnelle
