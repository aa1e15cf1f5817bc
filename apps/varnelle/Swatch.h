#pragma once

// Colours shown in a terminal, whatever its own palette.

#include <cmath>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "PrompterCore/colour/RGBA.h"

namespace Varnelle {

/// `colour` with every component in 0 ... 1, as a screen would show a stored one that has others.
[[nodiscard]] inline PrompterCore::RGBA visible(const PrompterCore::RGBA& colour) {
    return {colour.red(), colour.green(), colour.blue(), colour.alpha()};
}

/// `text` in one colour on another, for a terminal that knows 24-bit colours. Opacity does not
/// show.
[[nodiscard]] inline std::string coloured(std::string_view text, const PrompterCore::RGBA& colour,
                                          const PrompterCore::RGBA& background) {
    const auto code = [](int layer, const PrompterCore::RGBA& shown) {
        const auto byte = [](double component) { return std::lround(component * 255); };
        const PrompterCore::RGBA in = visible(shown);
        return fmt::format("{};2;{};{};{}", layer, byte(in.red()), byte(in.green()),
                           byte(in.blue()));
    };
    return fmt::format("\x1B[{};{}m{}\x1B[0m", code(38, colour), code(48, background), text);
}

}  // namespace Varnelle
