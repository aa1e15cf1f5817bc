#include "apps/varnelle/TerminalColours.h"

#include <cstdlib>
#include <string_view>

#include "apps/varnelle/CommandLine.h"

namespace Varnelle {

namespace {

std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

TerminalColours terminalColours() {
    const std::string_view terminal = variable("TERM");
    if (!wantsColour() || terminal.empty() || terminal == "dumb") return TerminalColours::none;
    const std::string_view colours = variable("COLORTERM");
    const bool knowsAll =
        colours == "truecolor" || colours == "24bit" || terminal.ends_with("-direct");
    return knowsAll ? TerminalColours::all : TerminalColours::palette;
}

}  // namespace Varnelle
