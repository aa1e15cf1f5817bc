#include "apps/varnelle/CameraMenu.h"

#include <algorithm>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "PrompterCore/camera/FrameRateChoice.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "PrompterCore/text/Columns.h"
#include "apps/varnelle/Json.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT

// Everything that is decided, as the library decides it.
struct Menu {
    std::vector<FramedResolution> entries;
    std::optional<CameraResolution> sensor;   // to capture with; absent without formats
    std::optional<FramedResolution> current;  // the entry that stands for it
    std::vector<std::int64_t> frameRates;
    std::optional<std::int64_t> frameRate;
};

Menu menuFor(const std::vector<CameraFormat>& formats, const CameraWishes& wishes) {
    const auto resolutions = ResolutionChoice::offered(formatOptions(formats));
    Menu menu{.entries = ResolutionChoice::framed(resolutions, wishes.framing, wishes.rotation),
              .sensor = ResolutionChoice::chosen(resolutions, wishes.resolution),
              .current = std::nullopt,
              .frameRates = {},
              .frameRate = std::nullopt};
    if (!menu.sensor) return menu;
    menu.current =
        ResolutionChoice::entryFor(*menu.sensor, menu.entries, wishes.framing, wishes.rotation);
    const auto rates = frameRatesOf(*menu.sensor, formats);
    menu.frameRates = FrameRateChoice::offered(rates);
    menu.frameRate = FrameRateChoice::chosen(rates, wishes.frameRate);
    return menu;
}

constexpr const char* mark(bool isCurrent) { return isCurrent ? "* " : "  "; }

std::string padded(std::string text, std::int64_t columns) {
    const std::int64_t missing = columns - columnsOf(text);
    if (missing > 0) text.append(static_cast<std::size_t>(missing), ' ');
    return text;
}

Json asJson(const CameraResolution& resolution) {
    return {{"width", resolution.width}, {"height", resolution.height}};
}

Json asJson(const FramedResolution& entry) {
    return {{"id", entry.id().utf8()},
            {"title", entry.output.title()},
            {"sensor", asJson(entry.sensor)},
            {"output", asJson(entry.output)}};
}

}  // namespace

void showCameraMenu(const std::vector<CameraFormat>& formats, const CameraWishes& wishes,
                    Output& output) {
    const Menu menu = menuFor(formats, wishes);
    if (menu.entries.empty()) {
        output.line("The camera has no formats.");
        return;
    }
    std::int64_t columns = columnsOf("Resolution");
    for (const FramedResolution& entry : menu.entries) {
        columns = std::max(columns, columnsOf(entry.output.title()));
    }
    output.line("  " + padded("Resolution", columns) + "   Camera");
    for (const FramedResolution& entry : menu.entries) {
        output.line(mark(entry == menu.current) + padded(entry.output.title(), columns) + "   " +
                    entry.sensor.title());
    }
    output.line("  Frame rate");
    bool isOffered = false;
    for (const std::int64_t rate : menu.frameRates) {
        isOffered = isOffered || rate == menu.frameRate;
        output.line(fmt::format("{}{}", mark(rate == menu.frameRate), rate));
    }
    if (menu.frameRate && !isOffered)
        output.line(fmt::format("* {} (not in the menu)", *menu.frameRate));
}

void writeCameraMenuJson(const std::vector<CameraFormat>& formats, const CameraWishes& wishes,
                         Output& output) {
    const Menu menu = menuFor(formats, wishes);
    Json entries = Json::array();
    for (const FramedResolution& entry : menu.entries) {
        entries.push_back(asJson(entry));
    }
    const Json all{{"framing", rawValue(wishes.framing)},
                   {"rotation", rawValue(wishes.rotation)},
                   {"resolutions", entries},
                   {"sensor", menu.sensor ? asJson(*menu.sensor) : Json()},
                   {"resolution", menu.current ? Json(menu.current->id().utf8()) : Json()},
                   {"frameRates", menu.frameRates},
                   {"frameRate", menu.frameRate ? Json(*menu.frameRate) : Json()}};
    output.line(all.dump());
}

}  // namespace Varnelle
