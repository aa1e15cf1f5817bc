#pragma once

// Colours shown in a terminal.
//
//   coloured("  ", orange, orange, TerminalColours::all);       // two blanks on #FF8000
//   coloured("  ", orange, orange, TerminalColours::palette);   // on the nearest of 256 colours
//   coloured("  ", orange, orange, TerminalColours::none);      // two blanks

#include <cstdint>
#include <string>
#include <string_view>

#include "PrompterCore/colour/RGBA.h"
#include "apps/varnelle/TerminalColours.h"

namespace Varnelle {

/// `colour` with every component in 0 ... 1, as a screen would show a stored one that has others.
[[nodiscard]] PrompterCore::RGBA visible(const PrompterCore::RGBA& colour);

/// The nearest colour of xterm's palette, 16 to 255: those below are the user's own. Opacity does
/// not count.
[[nodiscard]] std::int64_t paletteIndex(const PrompterCore::RGBA& colour);

/// `text` in one colour on another, as far as the terminal knows them. Opacity does not show.
[[nodiscard]] std::string coloured(std::string_view text, const PrompterCore::RGBA& colour,
                                   const PrompterCore::RGBA& background, TerminalColours known);

}  // namespace Varnelle
