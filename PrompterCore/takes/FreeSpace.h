#pragma once

// How much a take may still grow where it is stored.
//
//   FreeSpace::bytesAt(folder);   // the host compares it with its own limits

#include <cstdint>
#include <filesystem>
#include <optional>

namespace PrompterCore::FreeSpace {

/// Bytes available on the volume of `path` for something the user asked for. Absent when the path
/// does not exist or the system does not say.
[[nodiscard]] std::optional<std::int64_t> bytesAt(const std::filesystem::path& path);

}  // namespace PrompterCore::FreeSpace
