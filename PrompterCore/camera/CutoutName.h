#pragma once

// What the cut-out of the person is called that is saved beside a recording.
//
//   CutoutName::fileFor("/Recordings/Take 3.mp4");              // "/Recordings/Take 3 cut-out.mov"
//   CutoutName::isCutout("/Recordings/Take 3 cut-out.mov");     // true
//
// A file's extension is what stands behind the last full stop of its name, where that is neither
// the name's first character nor its last and nothing behind it is a blank or steers the direction
// of writing: "Talk v1. Final" has none. Separators at the end of a location do not count.

#include <filesystem>

namespace PrompterCore::CutoutName {

/// The cut-out of `recording`, in its folder: its name without its extension, " cut-out" and the
/// extension "mov", whatever the recording's own.
[[nodiscard]] std::filesystem::path fileFor(const std::filesystem::path& recording);

/// Whether the file's name without its extension ends with " cut-out".
[[nodiscard]] bool isCutout(const std::filesystem::path& file);

}  // namespace PrompterCore::CutoutName
