#pragma once

// What a session shows of itself: its events as lines or as JSON Lines, or the prompter.
//
//   const std::unique_ptr<SessionDisplay> display = sessionDisplay(options);
//   display->news(TakeBegan{.time = 6.65, .take = 1});     //     6.65 s  recording   take 1

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/varnelle/Follow.h"
#include "apps/varnelle/Screen.h"
#include "host/TakeRecorder.h"

namespace Varnelle {

class SessionDisplay {
public:
    SessionDisplay() = default;
    SessionDisplay(const SessionDisplay&) = delete;
    SessionDisplay& operator=(const SessionDisplay&) = delete;
    virtual ~SessionDisplay() = default;

    /// A take that a session before this one had left unfinished.
    virtual void recovered(const SavedTake& take) = 0;
    /// From now on it is heard who claps, at the session's `time`.
    virtual void ready(double /*time*/) {}
    virtual void news(const TakeNews& news) = 0;
    /// `trouble` is what is wrong with the sound at present.
    virtual void frame(TakeRecorder&, const std::optional<std::string>& /*trouble*/) {}
    virtual void end(double time, std::int64_t takes, bool wasInterrupted) = 0;

    /// Null unless it is one.
    virtual Screen* screen() { return nullptr; }
};

/// Throws Unavailable when a screen is asked for that the terminal cannot show.
[[nodiscard]] std::unique_ptr<SessionDisplay> sessionDisplay(const FollowOptions& options);

}  // namespace Varnelle
