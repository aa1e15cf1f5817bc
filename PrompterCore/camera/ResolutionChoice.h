#pragma once

// Which resolutions a camera is offered with, and which one is used.
//
// Units: pixels, frames per second.
//
//   const auto offered = ResolutionChoice::offered(formats);            // of the capture device
//   const auto menu = ResolutionChoice::framed(offered, CameraFraming::portrait,
//                                              CameraRotation::none);
//   const auto chosen = ResolutionChoice::chosen(offered, CameraResolution::fromId(remembered));
//   const auto current = ResolutionChoice::entryFor(*chosen, menu, CameraFraming::portrait,
//                                                   CameraRotation::none);

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One format of the capture device.
struct CameraFormatOption {
    CameraResolution resolution;
    double maxFrameRate = 0;  ///< frames per second, the highest that the format supports

    friend bool operator==(const CameraFormatOption&, const CameraFormatOption&) = default;
};

/// One entry of the menu of resolutions.
struct FramedResolution {
    CameraResolution sensor;  ///< as the capture device delivers it, never turned
    CameraResolution output;  ///< the picture once it is turned and cropped

    /// The sensor's: the entry stands for the device's format.
    [[nodiscard]] Text id() const { return sensor.id(); }

    friend bool operator==(const FramedResolution&, const FramedResolution&) = default;
};

namespace ResolutionChoice {

/// The resolutions of the formats that reach 24 frames per second, or of all formats where none
/// does: each once, those with the most pixels first, equal ones in the order given. Stops the
/// program unless every pixel count fits 64 bits.
[[nodiscard]] std::vector<CameraResolution> offered(const std::vector<CameraFormatOption>& formats);

/// What each of `resolutions` becomes once it is turned and cropped, in their order. Of those with
/// the same output the first stands for all.
[[nodiscard]] std::vector<FramedResolution> framed(const std::vector<CameraResolution>& resolutions,
                                                   CameraFraming framing, CameraRotation rotation);

/// The entry of `entries` that stands for `resolution`: the first with this sensor, else the first
/// with the output that it would have. Absent when there is neither.
[[nodiscard]] std::optional<FramedResolution> entryFor(const CameraResolution& resolution,
                                                       const std::vector<FramedResolution>& entries,
                                                       CameraFraming framing,
                                                       CameraRotation rotation);

/// The resolution to capture with, out of `resolutions` as offered() orders them: `preferred` where
/// it is among them, else the largest with no more pixels, else the smallest; without `preferred`
/// the largest. Absent when there are none. Stops the program unless the pixel counts that it
/// compares fit 64 bits.
[[nodiscard]] std::optional<CameraResolution> chosen(
    const std::vector<CameraResolution>& resolutions,
    const std::optional<CameraResolution>& preferred);

}  // namespace ResolutionChoice

}  // namespace PrompterCore

template <>
struct std::hash<PrompterCore::FramedResolution> {
    std::size_t operator()(const PrompterCore::FramedResolution& entry) const noexcept;
};
