#pragma once

// How many columns of a terminal a text takes, whatever the process's locale.
//
// Units: columns of a terminal; an ASCII letter takes 1.
//
//   columnsOf("caf\u00E9");         // 4
//   columnsOf("\u65E5\u672C");      // 4: East Asian characters take 2 each
//   columnsOf("\u2764\uFE0F");      // 2: a heart shown as an emoji

#include <cstdint>
#include <string_view>

namespace PrompterCore {

/// The sum over the text's characters. 2 for East Asian wide and full-width ones and for emoji: a
/// flag, a skin tone and a joined sequence are one emoji. 0 for non-spacing and enclosing marks,
/// control and format characters and line breaks. 1 for all others, the tab and spacing marks
/// (which terminals give a column of their own) included; ambiguous ones count as narrow.
/// `wellFormed` is well-formed. O(n); never allocates.
[[nodiscard]] std::int64_t columnsOf(std::string_view wellFormed) noexcept;

}  // namespace PrompterCore
