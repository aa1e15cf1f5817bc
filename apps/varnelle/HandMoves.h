#pragma once

// The keys that move a reading.

#include "apps/varnelle/Screen.h"
#include "host/ReadThrough.h"

namespace Varnelle {

/// Moves `reading` at `time` if that is what `command` asks for; other commands do nothing.
void moveByHand(ReadThrough& reading, ScreenCommand command, double time);

}  // namespace Varnelle
