#pragma once

// `varnelle demo`: the sample that ships with the project, followed, and measured against the times
// at which its words were really spoken.

#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/Follow.h"

namespace Varnelle {

/// Throws NoInput when the sample is not where it was installed.
ExitStatus demo(const FollowOptions& options);

}  // namespace Varnelle
