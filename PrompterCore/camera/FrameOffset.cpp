#include "PrompterCore/camera/FrameOffset.h"

namespace PrompterCore {

FrameOffset FrameOffset::moved(double dx, double dy) const noexcept {
    return FrameOffset(x_ + dx, y_ + dy);
}

}  // namespace PrompterCore
