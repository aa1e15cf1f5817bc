// From the volume's resource values, through CoreFoundation.

#include <string>

#include "PrompterCore/platform/CoreFoundationOwner.h"
#include "PrompterCore/platform/VolumeCapacity.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore::VolumeCapacity {

std::optional<std::int64_t> forImportantUsageAt(const std::filesystem::path& path) {
    const std::string& bytes = path.native();
    const CoreFoundationOwner<CFURLRef> url(CFURLCreateFromFileSystemRepresentation(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()),
        signedCount(bytes.size()), 0));
    if (url == nullptr) return std::nullopt;
    CFTypeRef value = nullptr;
    if (CFURLCopyResourcePropertyForKey(
            url.get(), kCFURLVolumeAvailableCapacityForImportantUsageKey, &value, nullptr) == 0 ||
        value == nullptr)
        return std::nullopt;
    const CoreFoundationOwner<CFTypeRef> owner(value);
    if (CFGetTypeID(value) != CFNumberGetTypeID()) return std::nullopt;
    std::int64_t capacity = 0;
    if (CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt64Type, &capacity) == 0)
        return std::nullopt;
    return capacity;
}

}  // namespace PrompterCore::VolumeCapacity
