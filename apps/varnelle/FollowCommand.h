#pragma once

// What `follow` and `demo` listen to, from their arguments.

#include <memory>
#include <optional>
#include <string>

#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/Follow.h"
#include "host/Listener.h"

namespace Varnelle {

/// The sound file `name`, heard by the recogniser of this machine, which is told the script. Throws
/// NoInput and BadData for the file, Unavailable without a recogniser.
[[nodiscard]] std::unique_ptr<Listener> soundListener(const Script& script,
                                                      const std::string& name);

/// `varnelle follow`: exactly one of `audio` and `words` is present.
ExitStatus followCommand(const std::string& scriptFile, const std::optional<std::string>& audio,
                         const std::optional<std::string>& words, const FollowOptions& options);

}  // namespace Varnelle
