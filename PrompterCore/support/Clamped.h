#pragma once

// A whole number that stays within bounds, however it is changed.
//
//   Clamped<0, 1000> delay = 2500;    // 1000
//   delay -= 1200;                    // 0
//   delay++;                          // 1

#include <cstdint>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

/// A number from `least` to `most`, both included: what is below becomes `least`, what is above
/// becomes `most`. Reads and assigns like the number itself.
template <std::int64_t least, std::int64_t most>
class Clamped {
    static_assert(least <= most);

public:
    constexpr Clamped(std::int64_t value) noexcept  // NOLINT: reads like the number
        : value_(value < least  ? least
                 : value > most ? most
                                : value) {}
    constexpr operator std::int64_t() const noexcept { return value_; }

    /// Each change clamps its result. Stops the program unless the result fits 64 bits before.
    Clamped& operator+=(std::int64_t other) noexcept { return *this = checkedAdd(value_, other); }
    Clamped& operator-=(std::int64_t other) noexcept {
        return *this = checkedSubtract(value_, other);
    }
    Clamped& operator*=(std::int64_t other) noexcept {
        return *this = checkedMultiply(value_, other);
    }
    Clamped& operator++() noexcept { return *this += 1; }
    Clamped& operator--() noexcept { return *this -= 1; }
    Clamped operator++(int) noexcept {
        const Clamped before = *this;
        ++*this;
        return before;
    }
    Clamped operator--(int) noexcept {
        const Clamped before = *this;
        --*this;
        return before;
    }

private:
    std::int64_t value_;
};

/// Deduced, so that a plain number is compared as it stands, not clamped before.
template <std::int64_t least, std::int64_t most>
[[nodiscard]] constexpr bool operator==(const Clamped<least, most>& a,
                                        const Clamped<least, most>& b) noexcept {
    return static_cast<std::int64_t>(a) == static_cast<std::int64_t>(b);
}

}  // namespace PrompterCore
