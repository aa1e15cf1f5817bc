#pragma once

// `varnelle follow`: a reading is followed and shown, on a screen, as lines or as JSON Lines.
//
// Units: seconds of the sound.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "PrompterCore/voice/Alignment.h"
#include "host/Listener.h"
#include "host/ReadThrough.h"

namespace Varnelle {

/// How the following is shown.
enum class FollowDisplay {
    screen,  ///< the full-screen prompter
    lines,   ///< a line of text for each aligned position
    json,    ///< JSON Lines: frames, aligned positions, words, the end
};

struct FollowOptions {
    FollowDisplay display = FollowDisplay::lines;
    bool colour = true;
    bool panel = false;  ///< on the screen the compact panel instead of the scrolling text
    std::optional<double> speed = 1;  ///< seconds of sound a second; absent: as fast as it goes
    double framesPerSecond = 30;
    double width = 40;  ///< columns of a prompt line where there is no screen to ask
};

/// Hears what a display is told; either may be empty.
struct FollowObserver {
    std::function<void(const ReadThrough&, const Frame&)> frame;
    std::function<void(const Alignment&, double time)> aligned;
};

/// How a reading ended.
struct FollowResult {
    bool wasInterrupted = false;
    Frame last;                          ///< what was shown last
    std::optional<std::string> trouble;  ///< what was wrong with the sound or the words
};

/// Follows until the listener ends, the presenter quits or an interrupt arrives.
FollowResult follow(const Script& script, Listener& listener, const FollowOptions& options,
                    const FollowObserver& observer = {});

}  // namespace Varnelle
