#pragma once

// `varnelle demo`: the sample that ships with the project, followed, and measured against the times
// at which its words were really spoken.

#include <string>

#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/Follow.h"

namespace Varnelle {

/// Where a file of the sample is: beside an installed program, else in the source tree that it was
/// built from.
[[nodiscard]] std::string sampleFile(const std::string& name);

/// Throws NoInput when the sample is not where it was installed.
ExitStatus demo(const FollowOptions& options);

}  // namespace Varnelle
