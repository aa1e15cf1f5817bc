#pragma once

// A text as a terminal may be sent it: nothing in it can move the cursor, change a colour or
// reorder its neighbours, and every terminal gives it the same columns.
//
// Units: columns of a terminal.
//
//   terminalText("a\x1B[2Jb");        // "a[2Jb": the escape is gone
//   terminalText("\u2764\uFE0F!");    // "\u2764 !": a plain heart, and a space for its second half
//   shortened("Introduction", 6);     // "Intro" and an ellipsis

#include <cstdint>
#include <string>
#include <string_view>

namespace Varnelle {

/// `wellFormed` without control and format characters, each tab a space. Emoji that terminals
/// disagree on become the plain character they begin with, filled up with spaces, so that adding
/// up the columns of the code points gives columnsOf(wellFormed). O(n).
[[nodiscard]] std::string terminalText(std::string_view wellFormed);

/// terminalText(wellFormed) in at most `columns`: cut between two characters, with an ellipsis as
/// the last one. Empty for fewer than 1.
[[nodiscard]] std::string shortened(std::string_view wellFormed, std::int64_t columns);

}  // namespace Varnelle
