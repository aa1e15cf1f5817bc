#pragma once

// What joins the parts of a summary that a user reads: "150 words · about a minute aloud".

#include <string_view>

namespace PrompterCore {

/// Space, U+00B7, space.
inline constexpr std::string_view separator = " \u00B7 ";

}  // namespace PrompterCore
