#include "PrompterCore/camera/ResolutionChoice.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <utility>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore::ResolutionChoice {

namespace {

constexpr double slowestFluent = 24;  // frames per second

std::int64_t pixelCount(const CameraResolution& resolution) noexcept {
    return checkedMultiply(resolution.width, resolution.height);
}

CameraResolution outputOf(const CameraResolution& sensor, CameraFraming framing,
                          CameraRotation rotation) noexcept {
    return applied(rotation, sensor).framed(framing);
}

}  // namespace

std::vector<CameraResolution> offered(const std::vector<CameraFormatOption>& formats) {
    const auto isFluent = [](const CameraFormatOption& format) {
        return format.maxFrameRate >= slowestFluent;
    };
    const bool keepsAll = std::ranges::none_of(formats, isFluent);
    struct Counted {
        CameraResolution resolution;
        std::int64_t pixels;
    };
    std::vector<Counted> kept;
    std::unordered_set<CameraResolution> seen;
    for (const CameraFormatOption& format : formats) {
        if ((keepsAll || isFluent(format)) && seen.insert(format.resolution).second)
            kept.push_back({format.resolution, pixelCount(format.resolution)});
    }
    std::ranges::stable_sort(kept, std::ranges::greater(), &Counted::pixels);
    std::vector<CameraResolution> resolutions;
    resolutions.reserve(kept.size());
    for (const Counted& each : kept) {
        resolutions.push_back(each.resolution);
    }
    return resolutions;
}

std::vector<FramedResolution> framed(const std::vector<CameraResolution>& resolutions,
                                     CameraFraming framing, CameraRotation rotation) {
    std::vector<FramedResolution> entries;
    std::unordered_set<CameraResolution> seen;
    for (const CameraResolution& sensor : resolutions) {
        const CameraResolution output = outputOf(sensor, framing, rotation);
        if (seen.insert(output).second) entries.push_back({.sensor = sensor, .output = output});
    }
    return entries;
}

std::optional<FramedResolution> entryFor(const CameraResolution& resolution,
                                         const std::vector<FramedResolution>& entries,
                                         CameraFraming framing, CameraRotation rotation) {
    if (entries.empty()) return std::nullopt;
    auto found = std::ranges::find(entries, resolution, &FramedResolution::sensor);
    if (found == entries.end())
        found = std::ranges::find(entries, outputOf(resolution, framing, rotation),
                                  &FramedResolution::output);
    return found == entries.end() ? std::nullopt : std::optional(*found);
}

std::optional<CameraResolution> chosen(const std::vector<CameraResolution>& resolutions,
                                       const std::optional<CameraResolution>& preferred) {
    if (resolutions.empty()) return std::nullopt;
    if (!preferred) return resolutions.front();
    if (std::ranges::find(resolutions, *preferred) != resolutions.end()) return preferred;
    const std::int64_t most = pixelCount(*preferred);
    for (const CameraResolution& resolution : resolutions) {
        if (pixelCount(resolution) <= most) return resolution;
    }
    return resolutions.back();
}

}  // namespace PrompterCore::ResolutionChoice

std::size_t std::hash<PrompterCore::FramedResolution>::operator()(
    const PrompterCore::FramedResolution& entry) const noexcept {
    const std::hash<PrompterCore::CameraResolution> resolution;
    return resolution(entry.sensor) * 31 + resolution(entry.output);
}
