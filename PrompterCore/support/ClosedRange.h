#pragma once

// Ranges that hold both their ends.
//
//   ClosedRange<double> rates(23.976, 30);   // frames per second
//   rates.contains(30);                      // true

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

/// The values from `lower` to `upper`, both included. Never empty.
template <class T>
class ClosedRange {
public:
    /// Stops the program unless `lower` <= `upper`, and so when either is not a number.
    constexpr ClosedRange(T lower, T upper) noexcept : lower_(lower), upper_(upper) {
        require(lower <= upper, "a range's lower bound is not above its upper bound");
    }

    [[nodiscard]] constexpr T lower() const noexcept { return lower_; }  ///< included
    [[nodiscard]] constexpr T upper() const noexcept { return upper_; }  ///< included
    [[nodiscard]] constexpr bool contains(T value) const noexcept {
        return lower_ <= value && value <= upper_;
    }

    friend constexpr bool operator==(const ClosedRange&, const ClosedRange&) noexcept = default;

private:
    T lower_;
    T upper_;
};

}  // namespace PrompterCore
