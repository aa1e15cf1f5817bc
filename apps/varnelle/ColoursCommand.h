#pragma once

// The arguments of `varnelle colours`. What they ask for is done in CheckColours and Presets.

#include <CLI/CLI.hpp>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// Adds `colours` with its sub-commands to `app`. `exit` outlives the parsing, which runs what is
/// asked for and sets it.
void addColours(CLI::App& app, ExitStatus& exit);

}  // namespace Varnelle
