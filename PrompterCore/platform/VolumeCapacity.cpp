// From the file system. It knows nothing that it could clear away, so that free is free.

#include "PrompterCore/platform/VolumeCapacity.h"

#include <limits>
#include <system_error>

namespace PrompterCore::VolumeCapacity {

std::optional<std::int64_t> forImportantUsageAt(const std::filesystem::path& path) {
    std::error_code error;
    const std::uintmax_t available = std::filesystem::space(path, error).available;
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    if (error || available > static_cast<std::uintmax_t>(largest)) return std::nullopt;
    return static_cast<std::int64_t>(available);
}

}  // namespace PrompterCore::VolumeCapacity
