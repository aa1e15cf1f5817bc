#pragma once

// The files of a take beside its sound, and what a take is called.
//
//   TakeFiles::nameOf("Launch", date, TimeZone());       // "Launch 2025-03-05 at 14.07.09.m4a"
//   TakeFiles::saveMarks("Takes/Launch.m4a", marks);     // Takes/Launch.marks.json

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/takes/ChapterMark.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/TimeZone.h"

namespace Varnelle::TakeFiles {

/// The name of a take begun at `date`. A title too long for a file's name, which is counted in
/// bytes, loses characters at its end.
[[nodiscard]] std::string nameOf(const std::optional<PrompterCore::Text>& title,
                                 std::chrono::system_clock::time_point date,
                                 const PrompterCore::TimeZone& timeZone);

/// Saves the marks beside the take `sound` as a JSON list of records, and returns where. Throws
/// CannotWrite.
std::filesystem::path saveMarks(const std::filesystem::path& sound,
                                const std::vector<PrompterCore::ChapterMark>& marks);

/// Saves the chapter list for a video's description beside the take `sound`, and returns where.
/// Throws CannotWrite.
std::filesystem::path saveChapters(const std::filesystem::path& sound,
                                   const std::vector<PrompterCore::ChapterMark>& marks);

}  // namespace Varnelle::TakeFiles
