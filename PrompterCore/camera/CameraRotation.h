#pragma once

// How far the camera's picture is turned, in quarters.
//
//   degrees(CameraRotation::quarter);         // 90
//   reversed(CameraRotation::quarter);        // CameraRotation::threeQuarters
//   fromRawValue<CameraRotation>(360);        // absent

#include <cstdint>
#include <string_view>

#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// Stored as the number of its degrees.
enum class CameraRotation { none, quarter, half, threeQuarters };

template <>
struct Enumeration<CameraRotation> {
    struct Row {
        CameraRotation value;
        std::string_view caseName;
        std::int64_t rawValue;
        std::string_view title;
        double degrees;
        CameraRotation reversed;
        bool turnsSideways;
    };
    static constexpr Row rows[] = {
        {CameraRotation::none, "none", 0, "0\u00B0", 0, CameraRotation::none, false},
        {CameraRotation::quarter, "quarter", 90, "90\u00B0", 90, CameraRotation::threeQuarters,
         true},
        {CameraRotation::half, "half", 180, "180\u00B0", 180, CameraRotation::half, false},
        {CameraRotation::threeQuarters, "threeQuarters", 270, "270\u00B0", 270,
         CameraRotation::quarter, true},
    };
};

/// The turn in degrees: 0, 90, 180 or 270.
[[nodiscard]] constexpr double degrees(CameraRotation rotation) noexcept {
    return enumerationRow(rotation).degrees;
}
/// The rotation that undoes this one.
[[nodiscard]] constexpr CameraRotation reversed(CameraRotation rotation) noexcept {
    return enumerationRow(rotation).reversed;
}
/// Whether width and height change places.
[[nodiscard]] constexpr bool turnsSideways(CameraRotation rotation) noexcept {
    return enumerationRow(rotation).turnsSideways;
}

/// `resolution` once it is turned.
[[nodiscard]] constexpr CameraResolution applied(CameraRotation rotation,
                                                 const CameraResolution& resolution) noexcept {
    if (!turnsSideways(rotation)) return resolution;
    return {.width = resolution.height, .height = resolution.width};
}

}  // namespace PrompterCore
