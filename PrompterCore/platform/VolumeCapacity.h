#pragma once

// How much may still be written where a file is to stand.
//
//   VolumeCapacity::forImportantUsageAt("/home/ann/Takes");   // bytes

#include <cstdint>
#include <filesystem>
#include <optional>

namespace PrompterCore::VolumeCapacity {

/// Bytes free on the volume that holds `path`; on macOS with what the system would clear away for
/// something the user asked for. Absent when `path` does not exist or the system does not say.
[[nodiscard]] std::optional<std::int64_t> forImportantUsageAt(const std::filesystem::path& path);

}  // namespace PrompterCore::VolumeCapacity
