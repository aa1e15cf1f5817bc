#pragma once

// What the lines of a text file end with: LF on Linux and macOS, CR LF where Windows wrote it, CR
// in old files.
//
//   lineEndOf("# One\r\nHello.\r\n");        // "\r\n"
//   withLineEnd("# Two\n\n", "\r\n");        // "# Two\r\n\r\n"

#include <optional>
#include <string>
#include <string_view>

namespace Varnelle {

/// What every line ends with. Absent when nothing ends a line, and when lines end differently.
[[nodiscard]] std::optional<std::string_view> lineEndOf(std::string_view text) noexcept;

/// `text` with `lineEnd` in the place of each of the three.
[[nodiscard]] std::string withLineEnd(std::string_view text, std::string_view lineEnd);

}  // namespace Varnelle
