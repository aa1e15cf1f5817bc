#pragma once

// `varnelle secret`: one value for each service name, in the system's keychain.

#include <string>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

enum class SecretAction { set, get, remove };

/// `set` takes the value from standard input, and asks for it, unseen, where that is a terminal;
/// `get` prints it, `nothingFound` when there is none that can be read. Throws Unavailable when the
/// keychain refuses, BadData when the name or the value is not UTF-8. No message holds the value.
[[nodiscard]] ExitStatus secretCommand(SecretAction action, const std::string& service);

}  // namespace Varnelle
