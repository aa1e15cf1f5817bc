#pragma once

// A line that somebody types and nobody sees.
//
//   const auto value = hiddenLine("Value for com.example.transcripts: ");

#include <optional>
#include <string>
#include <string_view>

namespace Varnelle {

/// Asks `question` on standard error and reads a line of the terminal that is standard input, which
/// does not show it meanwhile; without its line break, and up to the input's end when none comes.
/// Absent when an interrupt came first. The terminal is left as it was.
[[nodiscard]] std::optional<std::string> hiddenLine(std::string_view question);

}  // namespace Varnelle
