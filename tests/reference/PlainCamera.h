#pragma once

// The camera's choices worked out slowly: crops in whole numbers alone, menus by repeated search,
// frame rates by trying each number.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <vector>

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "PrompterCore/support/ClosedRange.h"

namespace PrompterCore::Plain {

/// Twice the nearest whole number to half of over / under, halves up; 2 at least. For sizes whose
/// products fit.
inline std::int64_t evenSide(std::int64_t over, std::int64_t under) {
    return std::max<std::int64_t>(2 * ((over + under) / (2 * under)), 2);
}

/// Of sides of at least 1.
inline CameraResolution framed(std::int64_t width, std::int64_t height, CameraFraming framing) {
    const std::int64_t across = framing == CameraFraming::landscape ? 16 : 9;
    const std::int64_t down = framing == CameraFraming::landscape ? 9 : 16;
    if (width * down > height * across)
        return {.width = evenSide(height * across, down), .height = evenSide(height, 1)};
    return {.width = evenSide(width, 1), .height = evenSide(width * down, across)};
}

inline std::vector<CameraResolution> offered(std::vector<CameraFormatOption> formats) {
    std::vector<CameraFormatOption> kept;
    for (const auto& format : formats) {
        if (format.maxFrameRate >= 24) kept.push_back(format);
    }
    if (kept.empty()) kept = formats;
    std::vector<CameraResolution> result;
    while (!kept.empty()) {
        // The first of those with the most pixels.
        std::size_t best = 0;
        for (std::size_t i = 1; i < kept.size(); ++i) {
            const CameraResolution a = kept[i].resolution, b = kept[best].resolution;
            if (a.width * a.height > b.width * b.height) best = i;
        }
        const CameraResolution next = kept[best].resolution;
        if (std::find(result.begin(), result.end(), next) == result.end()) result.push_back(next);
        kept.erase(kept.begin() + static_cast<std::ptrdiff_t>(best));
    }
    return result;
}

using Ranges = std::vector<ClosedRange<double>>;

inline bool supports(const Ranges& ranges, std::int64_t rate) {
    for (const auto& range : ranges) {
        const auto number = static_cast<double>(rate);
        if (range.lower() - 0.5 <= number && number <= range.upper() + 0.5) return true;
    }
    return false;
}

/// Of ranges between 0 and `most`, highest first.
inline std::vector<std::int64_t> offered(const Ranges& ranges, std::int64_t most) {
    std::vector<std::int64_t> result;
    for (std::int64_t rate = most; rate >= 0; --rate) {
        for (const auto& range : ranges) {
            const double fromTop = static_cast<double>(rate) - range.upper();
            const bool isTop = -0.5 < fromTop && fromTop <= 0.5;
            const bool isStandard =
                rate == 24 || rate == 25 || rate == 30 || rate == 50 || rate == 60 || rate == 120;
            const bool isWide = range.upper() - range.lower() >= 0.5;
            if (isTop || (isStandard && isWide && supports({range}, rate))) {
                result.push_back(rate);
                break;
            }
        }
    }
    return result;
}

inline std::optional<std::int64_t> chosen(const Ranges& ranges,
                                          std::optional<std::int64_t> preferred,
                                          std::int64_t most) {
    if (preferred && supports(ranges, *preferred)) return preferred;
    if (supports(ranges, 30)) return 30;
    // Away from 30 on both sides at once, the faster first.
    for (std::int64_t distance = 0; distance <= most; ++distance) {
        for (const std::int64_t rate : {30 + distance, 30 - distance}) {
            for (const std::int64_t each : offered(ranges, most)) {
                if (each == rate) return rate;
            }
        }
    }
    return std::nullopt;
}

}  // namespace PrompterCore::Plain
