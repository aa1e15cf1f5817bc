#pragma once

// Doubles to whole numbers. A value that is not finite or does not fit 64 bits is a caller's
// mistake and stops the program.
//
//   roundedToNearest(2.5);      // 3: halves go away from zero
//   truncatedTowardZero(-2.9);  // -2

#include <cstdint>

namespace PrompterCore {

/// The nearest whole number, halves away from zero. Stops the program unless it fits 64 bits.
[[nodiscard]] std::int64_t roundedToNearest(double value) noexcept;

/// `value` without its fraction. Stops the program unless it fits 64 bits.
[[nodiscard]] std::int64_t truncatedTowardZero(double value) noexcept;

}  // namespace PrompterCore
