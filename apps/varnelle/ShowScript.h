#pragma once

// The commands that only look at a script: `varnelle script` and `varnelle lines`.

#include <cstdint>
#include <string>

namespace Varnelle {

/// `varnelle script`: words, reading time, chapters with their starts; with `json` everything that
/// is derived from the text.
void showScript(const std::string& file, bool json);

/// `varnelle lines`: the prompt lines for a width in terminal columns.
void showLines(const std::string& file, std::int64_t width, bool json);

}  // namespace Varnelle
