#pragma once

// What the take bar is about.
//
//   TakeBarMode::resolve({.countdown = 3});          // TakeBarMode::countingDown(3)
//   TakeBarMode::resolve({.following = true});       // TakeBarMode::practising()
//   TakeBarMode::resolve({}).isActive();             // false: at rest

#include <cstdint>
#include <optional>
#include <utility>
#include <variant>

#include "PrompterCore/support/Overloaded.h"

namespace PrompterCore {

/// What is going on, several things at a time. By default nothing.
struct TakeBarInputs {
    bool preparingTake = false;  ///< a take is asked for, the recogniser is getting ready
    std::optional<std::int64_t> countdown;  ///< seconds left; absent when none runs
    bool recording = false;                 ///< a take is recording
    bool startingPractice = false;          ///< a practice read is being started
    bool following = false;                 ///< the prompter follows the voice outside a take

    friend bool operator==(const TakeBarInputs&, const TakeBarInputs&) = default;
};

/// One of: counting down, at rest, preparing, recording, practising.
class TakeBarMode {
public:
    struct CountingDown {
        std::int64_t seconds = 0;  ///< left
        friend bool operator==(const CountingDown&, const CountingDown&) = default;
    };
    struct Rest {
        friend bool operator==(const Rest&, const Rest&) = default;
    };
    struct Preparing {
        friend bool operator==(const Preparing&, const Preparing&) = default;
    };
    struct Recording {
        friend bool operator==(const Recording&, const Recording&) = default;
    };
    struct Practising {
        friend bool operator==(const Practising&, const Practising&) = default;
    };

    [[nodiscard]] static TakeBarMode countingDown(std::int64_t seconds) noexcept {
        return TakeBarMode(CountingDown{seconds});
    }
    [[nodiscard]] static TakeBarMode rest() noexcept { return TakeBarMode(Rest{}); }
    [[nodiscard]] static TakeBarMode preparing() noexcept { return TakeBarMode(Preparing{}); }
    [[nodiscard]] static TakeBarMode recording() noexcept { return TakeBarMode(Recording{}); }
    [[nodiscard]] static TakeBarMode practising() noexcept { return TakeBarMode(Practising{}); }
    /// The first that holds of: recording, counting down, preparing a take or a practice,
    /// following the voice; otherwise at rest.
    [[nodiscard]] static TakeBarMode resolve(const TakeBarInputs& inputs) noexcept;

    /// Anything but at rest.
    [[nodiscard]] bool isActive() const noexcept { return *this != rest(); }

    /// Calls the one of `cases` that takes what this is.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, state_);
    }

    friend bool operator==(const TakeBarMode&, const TakeBarMode&) = default;

private:
    using State = std::variant<CountingDown, Rest, Preparing, Recording, Practising>;
    explicit TakeBarMode(State state) noexcept : state_(state) {}

    State state_;
};

}  // namespace PrompterCore
