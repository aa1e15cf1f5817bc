#pragma once

// What the take controller's window shows: its label, its colour, whether there is a way back.
//
// Units: whole seconds, left of a countdown or recorded so far.
//
//   ControllerStatus status = ControllerStatus::recording(65);
//   status.label();                            // "Recording · 01:05"
//   status.tone();                             // ControllerStatus::Tone::recording
//   status == ControllerStatus::ready();       // false

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/support/Overloaded.h"

namespace PrompterCore {

/// One of: counting down, recording, ready, preparing, practising.
class ControllerStatus {
public:
    struct CountingDown {
        std::int64_t seconds = 0;  ///< left
        friend bool operator==(const CountingDown&, const CountingDown&) = default;
    };
    struct Recording {
        std::int64_t seconds = 0;  ///< recorded
        friend bool operator==(const Recording&, const Recording&) = default;
    };
    struct Ready {
        friend bool operator==(const Ready&, const Ready&) = default;
    };
    struct Preparing {
        friend bool operator==(const Preparing&, const Preparing&) = default;
    };
    struct Practising {
        friend bool operator==(const Practising&, const Practising&) = default;
    };

    class TakeStep;
    /// The colours in which a status is drawn.
    enum class Tone { neutral, waiting, recording, practising };

    [[nodiscard]] static ControllerStatus countingDown(std::int64_t seconds) noexcept {
        return ControllerStatus(CountingDown{seconds});
    }
    [[nodiscard]] static ControllerStatus recording(std::int64_t seconds) noexcept {
        return ControllerStatus(Recording{seconds});
    }
    [[nodiscard]] static ControllerStatus ready() noexcept { return ControllerStatus(Ready{}); }
    [[nodiscard]] static ControllerStatus preparing() noexcept {
        return ControllerStatus(Preparing{});
    }
    [[nodiscard]] static ControllerStatus practising() noexcept {
        return ControllerStatus(Practising{});
    }
    /// For a take at `step`: an idle one is practising while the prompter is `reading`, a running
    /// one has recorded 0 seconds where the host does not know them.
    [[nodiscard]] static ControllerStatus take(const TakeStep& step, bool reading,
                                               std::optional<std::int64_t> recordingSeconds);

    /// In words for the user: "Recording in 3", "Ready".
    [[nodiscard]] std::string label() const;
    /// The red of a recording from its countdown on.
    [[nodiscard]] Tone tone() const noexcept;
    /// Whether something is under way that can be left: always but when ready.
    [[nodiscard]] bool stepsBack() const noexcept;

    /// Whole minutes and seconds, each with at least two digits: 3725 s are "62:05". Below 0 is 0.
    [[nodiscard]] static std::string clock(std::int64_t seconds);

    /// Calls the one of `cases` that takes what this is.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, state_);
    }

    friend bool operator==(const ControllerStatus&, const ControllerStatus&) = default;

private:
    using State = std::variant<CountingDown, Recording, Ready, Preparing, Practising>;
    explicit ControllerStatus(State state) noexcept : state_(state) {}

    State state_;
};

/// Where a take stands. One of: counting down, idle, preparing, running.
class ControllerStatus::TakeStep {
public:
    struct CountingDown {
        std::int64_t seconds = 0;  ///< left
        friend bool operator==(const CountingDown&, const CountingDown&) = default;
    };
    struct Idle {
        friend bool operator==(const Idle&, const Idle&) = default;
    };
    struct Preparing {
        friend bool operator==(const Preparing&, const Preparing&) = default;
    };
    struct Running {
        friend bool operator==(const Running&, const Running&) = default;
    };

    [[nodiscard]] static TakeStep countingDown(std::int64_t seconds) noexcept {
        return TakeStep(CountingDown{seconds});
    }
    [[nodiscard]] static TakeStep idle() noexcept { return TakeStep(Idle{}); }
    [[nodiscard]] static TakeStep preparing() noexcept { return TakeStep(Preparing{}); }
    [[nodiscard]] static TakeStep running() noexcept { return TakeStep(Running{}); }

    /// Calls the one of `cases` that takes what this is.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, state_);
    }

    friend bool operator==(const TakeStep&, const TakeStep&) = default;

private:
    using State = std::variant<CountingDown, Idle, Preparing, Running>;
    explicit TakeStep(State state) noexcept : state_(state) {}

    State state_;
};

template <>
struct Enumeration<ControllerStatus::Tone> {
    struct Row {
        ControllerStatus::Tone value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {
        {ControllerStatus::Tone::neutral, "neutral"},
        {ControllerStatus::Tone::waiting, "waiting"},
        {ControllerStatus::Tone::recording, "recording"},
        {ControllerStatus::Tone::practising, "practising"},
    };
};

}  // namespace PrompterCore
