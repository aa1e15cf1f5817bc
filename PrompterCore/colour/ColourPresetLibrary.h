#pragma once

// The user's presets: a list in the user's order, which every operation answers with a new list.
//
//   auto presets = ColourPresetLibrary::adding("  Blue\n room ", text, highlight, {}, {}, id);
//   presets[0].name;                                            // "Blue room"
//   presets = ColourPresetLibrary::adding("Blue room", text, highlight, {}, presets, otherId);
//   presets[1].name;                                            // "Blue room 2"
//   ColourPresetLibrary::matching(text, highlight, {}, presets); // presets[0]

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/colour/ColourPreset.h"

namespace PrompterCore::ColourPresetLibrary {

/// The longest name that is kept, in user-perceived characters.
inline constexpr std::int64_t nameLimit = 40;

/// `presets` with one more at the end. Its name is `name` without white space around it, every run
/// of white space in it one blank, cut after `nameLimit` characters (a blank there stays); where
/// another preset has exactly that name, a blank and the first free number from 2 on follow, beyond
/// the limit if need be. The list as it is when no name is left.
[[nodiscard]] std::vector<ColourPreset> adding(const Text& name, const RGBA& text,
                                               const RGBA& highlight,
                                               const std::optional<RGBA>& marker,
                                               std::vector<ColourPreset> presets, const UUID& id);

/// `presets` with another name for the first one of this id, made as for `adding`; its own name is
/// free to it. The list as it is when no name is left or there is no such preset.
[[nodiscard]] std::vector<ColourPreset> renaming(const UUID& id, const Text& name,
                                                 std::vector<ColourPreset> presets);

/// `presets` without every one of this id.
[[nodiscard]] std::vector<ColourPreset> removing(const UUID& id, std::vector<ColourPreset> presets);

/// The first preset with exactly these colours; a marker that is absent only matches one that is.
/// Absent when there is none, and when `text` or `highlight` is absent.
[[nodiscard]] std::optional<ColourPreset> matching(const std::optional<RGBA>& text,
                                                   const std::optional<RGBA>& highlight,
                                                   const std::optional<RGBA>& marker,
                                                   const std::vector<ColourPreset>& presets);

}  // namespace PrompterCore::ColourPresetLibrary
