#pragma once

// `varnelle colours check`: whether a text in one colour can be read on another.

#include <optional>
#include <string>
#include <string_view>

#include "PrompterCore/colour/RGBA.h"
#include "apps/varnelle/TerminalColours.h"

namespace Varnelle {

/// What WCAG 2 calls a contrast, "AA" or "AAA", for text of the usual size. Absent below both.
[[nodiscard]] std::optional<std::string_view> levelOfNormalText(double contrast) noexcept;
/// The same for large text: 18 points and more, or bold and 14.
[[nodiscard]] std::optional<std::string_view> levelOfLargeText(double contrast) noexcept;

/// The contrast as it is printed, "4.49:1": cut, not rounded, so that none looks better than it is.
[[nodiscard]] std::string contrastText(double contrast);

/// Prints the contrast, its two levels and the colour that a marker in `text` would take beside the
/// eye line; with `json` as a record. On a terminal that knows `colours` a sample of it.
void checkColours(const PrompterCore::RGBA& text, const PrompterCore::RGBA& background, bool json,
                  TerminalColours colours);

}  // namespace Varnelle
