#pragma once

// `varnelle take`: a recording session from its arguments.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "PrompterCore/takes/FreeSpace.h"
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

/// The bytes that are free where a folder is; absent where nobody knows.
using FreeBytes = std::function<std::optional<std::int64_t>(const std::filesystem::path&)>;

/// Exactly one of `audio` and `microphone` is present. Where `freeBytes` are less than half an hour
/// of takes it is said before the session.
ExitStatus takeCommand(const TakeArguments& arguments, const FollowOptions& options,
                       const FreeBytes& freeBytes = PrompterCore::FreeSpace::bytesAt);

}  // namespace Varnelle
