#include "PrompterCore/camera/CameraAdjustment.h"

#include <string_view>

namespace PrompterCore {

namespace {

constexpr std::string_view rotationKey = "rotation";
constexpr std::string_view delayKey = "pictureDelay";
constexpr std::string_view backgroundKey = "background";
constexpr std::string_view cutoutKey = "savesCutout";

}  // namespace

bool CameraAdjustment::findsPerson() const noexcept {
    return background.needsCutout() || savesCutout;
}

CameraAdjustment CameraAdjustment::fromRecord(const Record& record) {
    return {.rotation = record.required<CameraRotation>(rotationKey),
            .pictureDelay = record.required<std::int64_t>(delayKey),
            .background =
                record.optional<CameraBackground>(backgroundKey).value_or(CameraBackground::off()),
            .savesCutout = record.optional<bool>(cutoutKey).value_or(false)};
}

Record CameraAdjustment::toRecord() const {
    return Record()
        .with(rotationKey, rotation)
        .with(delayKey, std::int64_t{pictureDelay})
        .with(backgroundKey, background)
        .with(cutoutKey, savesCutout);
}

}  // namespace PrompterCore
