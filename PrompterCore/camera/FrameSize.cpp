#include "PrompterCore/camera/FrameSize.h"

#include <algorithm>
#include <cmath>

namespace PrompterCore::FrameSize {

namespace {

double evenSide(double side) noexcept { return std::max(2 * std::round(side / 2), 2.0); }

Size roomAround(const Size& crop, const Size& sensor) noexcept {
    return {.width = std::max(0.0, sensor.width - crop.width),
            .height = std::max(0.0, sensor.height - crop.height)};
}

}  // namespace

Size cropping(const Size& sensor, CameraFraming framing) noexcept {
    if (!(sensor.width > 0 && sensor.height > 0)) return sensor;
    const double shape = ratio(framing);
    const Size exact = sensor.width / sensor.height > shape
                           ? Size{.width = shape * sensor.height, .height = sensor.height}
                           : Size{.width = sensor.width, .height = sensor.width / shape};
    return {.width = evenSide(exact.width), .height = evenSide(exact.height)};
}

Size room(const Size& sensor, CameraFraming framing) noexcept {
    return roomAround(cropping(sensor, framing), sensor);
}

Rectangle rect(const Size& sensor, CameraFraming framing, const FrameOffset& offset) noexcept {
    const Size crop = cropping(sensor, framing);
    const Size slack = roomAround(crop, sensor);
    return {.origin = {.x = (offset.x() + 1) * slack.width / 2,
                       .y = (offset.y() + 1) * slack.height / 2},
            .size = crop};
}

}  // namespace PrompterCore::FrameSize
