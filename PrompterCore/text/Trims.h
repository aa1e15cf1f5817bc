#pragma once

// The two trims, and white space inside a text. All take whole characters: a space that carries a
// combining mark is a blank character and goes with its mark.
//
//   trimmedOfWhiteSpace(" a b\n");    // "a b"
//   trimmedOfBlanks(" a\n");          // "a\n": a line break is no blank
//   withSingleBlanks(" a\n  b ");     // "a b"

#include <string>
#include <string_view>

namespace PrompterCore {

/// `bytes` without leading and trailing characters that are White_Space. They are well-formed; the
/// result is a part of them. O(n); never allocates.
[[nodiscard]] std::string_view trimmedOfWhiteSpace(std::string_view bytes) noexcept;

/// The same for horizontal blanks: general category Zs, and the tab.
[[nodiscard]] std::string_view trimmedOfBlanks(std::string_view bytes) noexcept;

/// The runs of characters of `bytes`, well-formed, that are not White_Space, with one blank between
/// them. O(n).
[[nodiscard]] std::string withSingleBlanks(std::string_view bytes);

}  // namespace PrompterCore
