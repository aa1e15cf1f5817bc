#pragma once

// `varnelle camera`: the menu of a camera's resolutions and frame rates, and a drawing of its
// preview.

#include <CLI/CLI.hpp>

namespace Varnelle {

/// Adds the sub-command.
void addCameraCommand(CLI::App& app);

}  // namespace Varnelle
