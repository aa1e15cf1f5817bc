#pragma once

// `varnelle devices`: the audio inputs that are there, and which one would be listened to.

#include <optional>
#include <string>

#include "PrompterCore/text/Text.h"

namespace Varnelle {

/// An input's id or name as an argument gives it. Absent when it is empty: the default is meant.
[[nodiscard]] std::optional<PrompterCore::Text> askedInput(const std::string& argument);

/// Prints the inputs; `remembered` is an input's id or name. Throws Unavailable without a sound
/// server.
void showDevices(const std::string& remembered, bool json);

}  // namespace Varnelle
