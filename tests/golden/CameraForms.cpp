#include "PrompterCore/camera/CameraAdjustment.h"
#include "PrompterCore/camera/CameraBackground.h"
#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "PrompterCore/camera/CutoutName.h"
#include "PrompterCore/camera/ResolutionChoice.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

const CameraResolution full{.width = 1920, .height = 1080};

std::string resolutions() {
    constexpr std::int64_t most = 9'223'372'036'854'775'807;
    return recordLines<CameraResolution>({full, {0, 0}, {-1, -most - 1}, {most, 1}});
}

std::string backgrounds() {
    using B = CameraBackground;
    return recordLines<CameraBackground>(
        {B::off(), B::blur(), B::colour(B::defaultColour), B::colour(RGBA(0, 1, 0.1, 0.5)),
         B::image("/Pictures/caf\u00E9 \"wall\".png"), B::image("")});
}

std::string adjustments() {
    using B = CameraBackground;
    return recordLines<CameraAdjustment>(
        {{CameraRotation::none, 0, B::off(), false},
         {CameraRotation::quarter, 10, B::blur(), true},
         {CameraRotation::half, 990, B::image("/p.png"), false},
         {CameraRotation::threeQuarters, 1000, B::colour(B::defaultColour), true}});
}

std::string texts() {
    std::string lines;
    const auto add = [&lines](std::string_view what, std::string_view text) {
        lines.append(what).append(": ").append(text).append("\n");
    };
    for (const CameraFraming framing : allCases<CameraFraming>)
        add("framing", rawValue(framing));
    for (const CameraRotation rotation : allCases<CameraRotation>)
        add("rotation", std::to_string(rawValue(rotation)));
    for (const auto kind : allCases<CameraBackground::Kind>)
        add("kind of background", rawValue(kind));
    add("resolution's id", full.id().utf8());
    add("resolution's title", full.title());
    add("menu entry's id", FramedResolution{full, {608, 1080}}.id().utf8());
    add("cut-out", CutoutName::fileFor("/Recordings/Take 3.mp4").native());
    return lines;
}

}  // namespace

std::vector<Form> cameraForms() {
    return {{"camera-resolutions.jsonl", resolutions(), recordsReadAndWritten<CameraResolution>},
            {"camera-backgrounds.jsonl", backgrounds(), recordsReadAndWritten<CameraBackground>},
            {"camera-adjustments.jsonl", adjustments(), recordsReadAndWritten<CameraAdjustment>},
            {"camera-texts.txt", texts()}};
}

}  // namespace PrompterCore::Tests
