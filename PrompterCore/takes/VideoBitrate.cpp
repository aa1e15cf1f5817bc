#include "PrompterCore/takes/VideoBitrate.h"

#include <algorithm>
#include <cmath>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"

namespace PrompterCore::VideoBitrate {

std::int64_t forSize(Size size, std::int64_t frameRate) noexcept {
    const double bits = size.width * size.height * static_cast<double>(frameRate) * bitsPerPixel;
    require(std::isfinite(bits), "a video's bit rate is finite");
    // Both ends are whole, so that it does not matter which comes first.
    return truncatedTowardZero(
        std::clamp(bits, static_cast<double>(lowest), static_cast<double>(highest)));
}

}  // namespace PrompterCore::VideoBitrate
