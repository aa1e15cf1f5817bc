#include "PrompterCore/support/Rounding.h"

#include <cmath>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

namespace {

std::int64_t wholeNumber(double value) noexcept {
    // 2^63 itself does not fit; -2^63 does. NaN fails both comparisons.
    require(value >= -0x1p63 && value < 0x1p63, "a whole number fits 64 bits");
    return static_cast<std::int64_t>(value);
}

}  // namespace

std::int64_t roundedToNearest(double value) noexcept { return wholeNumber(std::round(value)); }

std::int64_t truncatedTowardZero(double value) noexcept { return wholeNumber(std::trunc(value)); }

}  // namespace PrompterCore
