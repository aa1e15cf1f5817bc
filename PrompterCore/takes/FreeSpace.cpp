#include "PrompterCore/takes/FreeSpace.h"

#include "PrompterCore/platform/VolumeCapacity.h"

namespace PrompterCore::FreeSpace {

std::optional<std::int64_t> bytesAt(const std::filesystem::path& path) {
    return VolumeCapacity::forImportantUsageAt(path);
}

}  // namespace PrompterCore::FreeSpace
