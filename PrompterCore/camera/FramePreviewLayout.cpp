#include "PrompterCore/camera/FramePreviewLayout.h"

#include <algorithm>

#include "PrompterCore/camera/FrameSize.h"

namespace PrompterCore {

namespace {

Rectangle windowIn(const Size& pane, CameraFraming framing) noexcept {
    const double shape = ratio(framing);
    const double width = std::max(0.0, std::min(pane.height * shape, pane.width));
    const double height = width / shape;
    return {.origin = {.x = (pane.width - width) / 2, .y = (pane.height - height) / 2},
            .size = {.width = width, .height = height}};
}

}  // namespace

FramePreviewLayout::FramePreviewLayout(const Size& sensor, CameraFraming framing,
                                       const FrameOffset& offset, const Size& pane,
                                       bool mirrored) noexcept
    : pane_(pane),
      window_(windowIn(pane, framing)),
      picture_(window_),
      room_{.width = 0, .height = 0},
      mirrored_(mirrored) {
    if (!(sensor.width > 0 && sensor.height > 0)) return;
    const Rectangle crop = FrameSize::rect(sensor, framing, offset);
    const double scale = crop.size.width > 0 ? window_.size.width / crop.size.width : 1;
    const double leftSeen = mirrored ? sensor.width - crop.maxX() : crop.minX();
    picture_ = {.origin = {.x = window_.minX() - leftSeen * scale,
                           .y = window_.minY() - crop.minY() * scale},
                .size = {.width = sensor.width * scale, .height = sensor.height * scale}};
    const Size room = FrameSize::room(sensor, framing);
    room_ = {.width = room.width * scale, .height = room.height * scale};
}

bool FramePreviewLayout::canPan() const noexcept { return room_.width >= 1 || room_.height >= 1; }

FrameOffset FramePreviewLayout::offset(const FrameOffset& from,
                                       const Size& translation) const noexcept {
    const double along = mirrored_ ? translation.width : -translation.width;
    return from.moved(room_.width > 0 ? 2 * along / room_.width : 0,
                      room_.height > 0 ? -2 * translation.height / room_.height : 0);
}

Rectangle FramePreviewLayout::layerPicture(double containerHeight) const noexcept {
    return {.origin = {.x = picture_.minX(), .y = containerHeight - picture_.maxY()},
            .size = picture_.size};
}

}  // namespace PrompterCore
