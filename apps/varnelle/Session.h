#pragma once

// A recording session is shown while it runs: on a screen, as lines or as JSON Lines.
//
// Units: seconds of the session's sound.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/varnelle/Follow.h"
#include "host/SoundSource.h"
#include "host/TakeRecorder.h"

namespace Varnelle {

/// How a session ended.
struct SessionResult {
    bool wasInterrupted = false;
    bool wasQuit = false;                ///< by a key, which an interrupt can be
    std::int64_t takes = 0;              ///< saved
    double seconds = 0;                  ///< of sound that was heard
    std::optional<std::string> trouble;  ///< why takes could not be written, or not all of one
};

/// Runs the session until the sound ends, the presenter quits, an interrupt arrives or no take can
/// be written any more; a running take is saved then, whatever happens. `recovered` are the takes
/// of a session that had broken off; they are told first. A source that has to be waited for goes
/// at its own pace, whatever `options` say.
SessionResult runSession(const Script& script, SoundSource& sound, const TakePlan& plan,
                         const FollowOptions& options, const std::vector<SavedTake>& recovered);

}  // namespace Varnelle
