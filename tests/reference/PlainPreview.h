#pragma once

// The preview's picture by its formulas alone, for a landscape or portrait crop of a sensor.

#include <algorithm>
#include <cmath>

#include "PrompterCore/support/Geometry.h"

namespace PrompterCore::Plain {

/// Where the sensor's picture lies; `shape` is width over height of the framing.
inline Rectangle previewPicture(const Size& sensor, double shape, double offsetX, double offsetY,
                                const Size& pane, bool mirrored) {
    double cropWidth = sensor.width, cropHeight = sensor.height;
    if (sensor.width / sensor.height > shape) {
        cropWidth = shape * sensor.height;
    } else {
        cropHeight = sensor.width / shape;
    }
    cropWidth = std::max(2.0, std::round(cropWidth / 2) * 2);
    cropHeight = std::max(2.0, std::round(cropHeight / 2) * 2);
    const double left = (offsetX + 1) * std::max(0.0, sensor.width - cropWidth) / 2;
    const double top = (offsetY + 1) * std::max(0.0, sensor.height - cropHeight) / 2;
    const double windowWidth = std::max(0.0, std::min(pane.height * shape, pane.width));
    const double windowLeft = (pane.width - windowWidth) / 2;
    const double windowTop = (pane.height - windowWidth / shape) / 2;
    const double scale = windowWidth / cropWidth;
    const double seen = mirrored ? sensor.width - (left + cropWidth) : left;
    return {.origin = {.x = windowLeft - seen * scale, .y = windowTop - top * scale},
            .size = {.width = sensor.width * scale, .height = sensor.height * scale}};
}

}  // namespace PrompterCore::Plain
