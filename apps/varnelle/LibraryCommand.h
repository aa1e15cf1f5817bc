#pragma once

// `varnelle library`: a folder of scripts as the library's tree.

#include <CLI/CLI.hpp>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

void addLibraryCommand(CLI::App& app, ExitStatus& exit);

}  // namespace Varnelle
