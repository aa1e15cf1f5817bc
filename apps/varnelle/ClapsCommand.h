#pragma once

// `varnelle claps`: the claps in a sound file, and what they would command.

#include <string>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// Writes a line for each gesture that is heard in the sound file `name` (- is standard input): for
/// people, or one JSON object; people are told when there is none. No take is being recorded at the
/// beginning; each command changes that. Throws NoInput and BadData for the file, as
/// SoundFileSource does.
ExitStatus clapsCommand(const std::string& name, bool json);

}  // namespace Varnelle
