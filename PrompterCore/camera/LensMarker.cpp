#include "PrompterCore/camera/LensMarker.h"

namespace PrompterCore {

LensMarker LensMarker::offset(double dx, double dy, double width, double height) const noexcept {
    return LensMarker(width > 0 ? x_ + dx / width : x_, height > 0 ? y_ + dy / height : y_);
}

}  // namespace PrompterCore
