#pragma once

// The colours that the tests of this room name.

#include "PrompterCore/colour/RGBA.h"

namespace PrompterCore::Tests {

inline constexpr RGBA black(0, 0, 0, 1);
inline constexpr RGBA white(1, 1, 1, 1);
inline constexpr RGBA orange(1, 0.5, 0, 1);
inline constexpr RGBA paleYellow(1, 1, 0.6, 1);
inline constexpr RGBA darkBlue(0, 0, 0.4, 1);

}  // namespace PrompterCore::Tests
