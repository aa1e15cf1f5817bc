#pragma once

// How many colours a terminal can be sent, by what it and its user say in the environment.
//
//   terminalColours();   // TerminalColours::all where COLORTERM is "truecolor"

namespace Varnelle {

enum class TerminalColours {
    none,     ///< they are refused, or the terminal knows no escapes
    palette,  ///< the 256 of xterm
    all,      ///< 24 bits
};

/// NO_COLOR refuses them when it says anything at all, and so does a TERM that is "dumb" or not
/// there. All are known where COLORTERM or TERM say so: a terminal that takes 24 bits for
/// something else shows nonsense, one of 256 colours is only less exact.
[[nodiscard]] TerminalColours terminalColours();

}  // namespace Varnelle
