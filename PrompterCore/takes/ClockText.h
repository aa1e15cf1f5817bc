#pragma once

// What the clocks of this room are written with. Not installed.

#include <cstdint>
#include <string>

namespace PrompterCore {

/// In decimal, with a zero in front where there is one digit.
[[nodiscard]] inline std::string atLeastTwoDigits(std::int64_t number) {
    std::string digits = std::to_string(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

}  // namespace PrompterCore
