#pragma once

// The numbers at the ends, by short names: what every operation on counts and on doubles has to
// survive.
//
//   using Tests::most;
//   EXPECT_EQ(PromptPanel::visible(lines, most, 3), rest);

#include <cstdint>
#include <limits>

namespace PrompterCore::Tests {

inline constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
inline constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr float infiniteSample = std::numeric_limits<float>::infinity();
inline constexpr float nanSample = std::numeric_limits<float>::quiet_NaN();

}  // namespace PrompterCore::Tests
