#pragma once

// Colours that a user saved under a name.
//
//   const ColourPreset studio{.id = id, .name = "Studio", .text = white, .highlight = orange};

#include <optional>

#include "PrompterCore/colour/RGBA.h"
#include "PrompterCore/colour/UUID.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Identified by its id, equal when everything is.
struct ColourPreset {
    UUID id;         ///< never changes, whatever the name becomes
    Text name;       ///< as the user reads it; ColourPresetLibrary keeps it clean and unique
    RGBA text;       ///< of the script
    RGBA highlight;  ///< of what is highlighted in it
    std::optional<RGBA> marker = std::nullopt;  ///< absent: the marker's colour is left alone

    /// The preset of a stored record. Throws RecordFailure unless every key but "marker" is there.
    [[nodiscard]] static ColourPreset fromRecord(const Record& record);
    /// "id", "name", "text", "highlight" and, where there is one, "marker". Throws RecordFailure
    /// unless the colours' components are finite.
    [[nodiscard]] Record toRecord() const;

    friend bool operator==(const ColourPreset&, const ColourPreset&) = default;
};

}  // namespace PrompterCore
