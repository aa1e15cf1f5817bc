#pragma once

// Regular expressions, as the Unicode library understands them: \d is a decimal digit of any
// script, and $ is the end of the text or the place before a line break that ends it.
//
//   RegularExpression::containsMatch("take 12", "\\d$");   // true

#include <string_view>

#include "PrompterCore/text/Text.h"

namespace PrompterCore::RegularExpression {

/// Whether `pattern` matches anywhere in `text`, code point by code point. Stops the program unless
/// `pattern` is a regular expression.
[[nodiscard]] bool containsMatch(const Text& text, std::string_view pattern);

}  // namespace PrompterCore::RegularExpression
