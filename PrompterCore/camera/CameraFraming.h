#pragma once

// The shape of the picture that is recorded.
//
//   ratio(CameraFraming::portrait);              // 0.5625, width over height
//   fromRawValue<CameraFraming>("portrait");     // CameraFraming::portrait
//   fromStored<CameraFraming>(std::nullopt);     // CameraFraming::landscape

#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/StoredSetting.h"

namespace PrompterCore {

/// Lying or upright. A setting; the first is what counts where nothing is stored.
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
    static constexpr bool isSetting = true;
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
