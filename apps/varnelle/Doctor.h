#pragma once

// `varnelle doctor`: what the command needs of this machine, and what to do about what is missing.

#include <string>
#include <vector>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// One of the things that are needed.
struct Finding {
    std::string name;
    bool isThere = false;
    std::string text;  ///< which one it is; or what is missing, and what to do about it
};

/// Looks at the speech model, the pronunciations, the microphone, the keychain (stores a value of
/// its own and removes it), sound files and takes, in this order. Takes a few seconds at most.
[[nodiscard]] std::vector<Finding> examine();

/// Prints a line for each finding, or with `json` an object of them. `unavailable` unless
/// everything is there.
[[nodiscard]] ExitStatus doctor(bool json);

}  // namespace Varnelle
