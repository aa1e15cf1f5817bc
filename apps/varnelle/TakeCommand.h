#pragma once

// `varnelle take`: a recording session from its arguments.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "PrompterCore/text/TimeZone.h"
#include "apps/varnelle/ExitStatus.h"
#include "apps/varnelle/Follow.h"

namespace Varnelle {

struct TakeArguments {
    std::string script;
    std::optional<std::string> audio;       ///< a sound file; "-" is standard input
    std::optional<std::string> microphone;  ///< a name, or "" for the system's choice
    std::filesystem::path folder;           ///< made when it is missing and its parent is not
    std::optional<std::int64_t> countdown;  ///< seconds. Absent: 5 where somebody can see it, at a
                                            ///< microphone that listens for claps; else none
    bool listensForClaps = true;
    bool goesOn = false;  ///< a take goes on where the last one ended
    PrompterCore::TimeZone timeZone;
};

/// Exactly one of `audio` and `microphone` is present.
ExitStatus takeCommand(const TakeArguments& arguments, const FollowOptions& options);

}  // namespace Varnelle
