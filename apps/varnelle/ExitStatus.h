#pragma once

// What the command's exit status tells a caller.

namespace Varnelle {

enum class ExitStatus : int {
    done = 0,
    nothingFound = 1,   ///< what was asked for is not there
    usage = 2,          ///< the arguments make no sense
    badData = 65,       ///< a file's content cannot be used, or not all of it
    noInput = 66,       ///< a file is missing or unreadable
    unavailable = 69,   ///< a device or a service is missing
    cannotWrite = 74,   ///< the output could not be written
    interrupted = 130,  ///< stopped by an interrupt
};

}  // namespace Varnelle
