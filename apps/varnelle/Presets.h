#pragma once

// `varnelle colours presets`: a list of colour presets in a file, in the form in which it is
// stored.
//
// Units: presets are counted from 1, as a user counts. The functions that change the file print
// what became of the preset; what is wrong they say on standard error and return the exit status.
// A file that is no list of presets is said to be none and is never written.

#include <cstdint>
#include <optional>
#include <string>

#include "PrompterCore/colour/RGBA.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/TerminalColours.h"

namespace Varnelle {

/// A file of presets and how they are shown.
struct PresetFile {
    std::string name;
    bool json = false;  ///< as they are stored
    /// Of the swatches, where they are shown on a terminal.
    TerminalColours colours = TerminalColours::none;
};

void listPresets(const PresetFile& file);
/// Makes the file when there is none.
ExitStatus addPreset(const PresetFile& file, const std::string& name,
                     const PrompterCore::RGBA& text, const PrompterCore::RGBA& highlight,
                     const std::optional<PrompterCore::RGBA>& marker);
ExitStatus renamePreset(const PresetFile& file, std::int64_t preset, const std::string& name);
ExitStatus removePreset(const PresetFile& file, std::int64_t preset);

}  // namespace Varnelle
