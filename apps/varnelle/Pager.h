#pragma once

// A long text on a terminal goes through the user's pager, as in `git log`.
//
//   showPaged(text);    // until the user has left it

#include <string_view>

namespace Varnelle {

/// Writes `text` to standard output, on a terminal through $PAGER, or `less` where there is one.
/// Not where $PAGER is empty or "cat"; and a pager that cannot be started costs nobody the text:
/// then it stands on the terminal itself. While there is a pager, the keys that interrupt are its
/// own: they leave a search, or nothing, and must not take the terminal from it. Throws as Output
/// does.
void showPaged(std::string_view text);

}  // namespace Varnelle
