#pragma once

// `varnelle diff`: how two versions of a script differ.

#include <CLI/CLI.hpp>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// Adds the sub-command. Its exit status tells what was found: 0 the same, 1 different, 2 trouble.
void addDiffCommand(CLI::App& app, ExitStatus& exit);

}  // namespace Varnelle
