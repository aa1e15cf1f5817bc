#pragma once

// The shape of the picture that is recorded.
//
//   ratio(CameraFraming::portrait);              // 0.5625, width over height
//   fromRawValue<CameraFraming>("portrait");     // CameraFraming::portrait

#include <string_view>

#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// Lying or upright.
enum class CameraFraming { landscape, portrait };

template <>
struct Enumeration<CameraFraming> {
    struct Row {
        CameraFraming value;
        std::string_view caseName, rawValue, title;
        double ratio;
        bool isPortrait;
    };
    static constexpr Row rows[] = {
        {CameraFraming::landscape, "landscape", "landscape", "Landscape", 16.0 / 9.0, false},
        {CameraFraming::portrait, "portrait", "portrait", "Portrait", 9.0 / 16.0, true},
    };
};

/// Width over height.
[[nodiscard]] constexpr double ratio(CameraFraming framing) noexcept {
    return enumerationRow(framing).ratio;
}
/// Whether it is higher than wide.
[[nodiscard]] constexpr bool isPortrait(CameraFraming framing) noexcept {
    return enumerationRow(framing).isPortrait;
}

}  // namespace PrompterCore
