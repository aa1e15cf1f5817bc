#pragma once

// A take's chapters as the plain list that video sites read from a description.
//
//   ChapterTimestamps::youTube(marks);   // "0:00 Intro\n1:05 Main part"

#include <span>
#include <string>

#include "PrompterCore/takes/ChapterMark.h"

namespace PrompterCore::ChapterTimestamps {

/// One line a mark in the given order: its time as m:ss or h:mm:ss, a space, its title. The first
/// line always has 0:00, which the sites ask for; the others have their own time, a part of a
/// second dropped. Empty without marks. Stops the program unless the whole seconds of every mark
/// but the first fit 64 bits.
[[nodiscard]] std::string youTube(std::span<const ChapterMark> marks);

}  // namespace PrompterCore::ChapterTimestamps
