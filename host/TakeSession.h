#pragma once

// The course of a recording session: when a take begins and ends, from hand claps, keys and the
// time. It owns no clock and no sound: it is told what happened when, and says what belongs to a
// take.
//
// Units: times are seconds of the session's sound and never go back between calls.
//
//   TakeSession session(Countdown::standard);
//   session.hear(gesture, 2.0);         // two claps: a countdown
//   session.advanceTo(7.0);             // {began, 7.0}
//   session.hear(claps, 65.0);          // two claps, the first at 64.1: {ended, 64.05}
//
// Two claps begin a take after the countdown, two claps during the countdown call it off, two claps
// in the take end it just before the first of them; a key does the same at its own moment. Where
// there is no countdown the take begins behind the claps that asked for it.

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/audio/ClapDetector.h"
#include "PrompterCore/takes/ControllerStatus.h"
#include "PrompterCore/takes/Countdown.h"

namespace Varnelle {

/// Something that the session decided.
struct TakeEvent {
    enum class Kind {
        countdown,  ///< a take was asked for
        calledOff,  ///< the countdown, or a take that holds nothing but the claps against it
        began,      ///< what sounds from `time` on is the take
        ended,      ///< what sounds up to `time` is
    };

    Kind kind = Kind::countdown;
    double time = 0;  ///< seconds; may lie before the call, by `lookBack` at most

    friend bool operator==(const TakeEvent&, const TakeEvent&) = default;
};

/// A value: copy it to remember a state, compare two with ==.
class TakeSession {
public:
    /// Claps that end a take stay out of it, with so many seconds before them.
    static constexpr double clapMargin = 0.05;
    /// A take without a countdown begins so many seconds behind the last clap, which rings that
    /// long.
    static constexpr double clapRing = 0.25;
    /// No event lies further back than so many seconds: two claps, how long they wait for a third,
    /// the margin, and a buffer of a tenth of a second.
    static constexpr double lookBack = 1.5;

    /// No take is asked for. Takes have a countdown of `countdown` seconds; none for 0 and less.
    explicit TakeSession(std::int64_t countdown) noexcept;

    /// Takes a gesture that was found to be over at `time`. Other numbers of claps than two are no
    /// command.
    std::vector<TakeEvent> hear(const PrompterCore::ClapGesture& gesture, double time);
    /// The presenter asked by hand for the next step: a take, none after all, its end.
    std::vector<TakeEvent> step(double time);
    /// Time has passed.
    std::vector<TakeEvent> advanceTo(double time);
    /// The session is over: a running take ends here, a countdown is called off.
    std::vector<TakeEvent> finish(double time);

    [[nodiscard]] bool isRecording() const noexcept { return began_.has_value(); }
    /// Seconds left at `time`. Absent unless a countdown runs.
    [[nodiscard]] std::optional<std::int64_t> countdownAt(double time) const noexcept;
    /// How much of the countdown is over, from 0 to 1; 0 unless one runs.
    [[nodiscard]] double countdownProgressAt(double time) const noexcept;
    /// Seconds since the take began. Absent unless one runs.
    [[nodiscard]] std::optional<double> recordedAt(double time) const noexcept;
    /// What the controller shows. A session is ready or in a take; nobody practises in it.
    [[nodiscard]] PrompterCore::ControllerStatus statusAt(double time) const;

    friend bool operator==(const TakeSession&, const TakeSession&) = default;

private:
    std::vector<TakeEvent> ask(double time, double beginWithoutCountdown);
    std::vector<TakeEvent> end(double at, double time);
    std::vector<TakeEvent> callOff(double time);

    std::int64_t length_;                               // seconds of a countdown
    std::optional<PrompterCore::Countdown> countdown_;  // absent unless one runs
    std::optional<double> began_;                       // absent unless a take runs
    double ended_ = 0;                                  // where the last take did
};

}  // namespace Varnelle
