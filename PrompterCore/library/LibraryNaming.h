#pragma once

// Names for scripts and folders: whatever a user types becomes a name that is safe as a file's and
// differs from its siblings'.
//
//   LibraryNaming::sanitize("  a/b:c  ");                        // "abc"
//   LibraryNaming::unique("Notes", {"notes"});                   // "Notes 2"
//   LibraryNaming::copyNameOf("Talk", {"Talk", "Talk copy"});    // "Talk copy 2"

#include <cstdint>
#include <string_view>
#include <vector>

#include "PrompterCore/text/Text.h"

namespace PrompterCore::LibraryNaming {

inline constexpr std::string_view fallback = "Untitled";  ///< where a name would be empty
inline constexpr std::int64_t longestName = 120;          ///< user-perceived characters

/// `name` without "/", ":" and line breaks, without blanks at its ends and dots at its start, cut
/// to `longestName`; `fallback` when nothing is left. What stands inside stays: blanks, tabs, dots.
[[nodiscard]] Text sanitize(const Text& name);

/// The sanitised name, numbered from 2 where it is taken: the first that differs from every one of
/// `existing` when both are lower-cased, without a locale. The number may make it longer than
/// `longestName`. `existing` is taken as it is.
[[nodiscard]] Text unique(const Text& name, const std::vector<Text>& existing);

/// The name of a duplicate of `name`: that, sanitised, with " copy" behind it, made unique. The
/// longest names have no room for " copy" and are only numbered.
[[nodiscard]] Text copyNameOf(const Text& name, const std::vector<Text>& existing);

}  // namespace PrompterCore::LibraryNaming
