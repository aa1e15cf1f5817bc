#include "apps/varnelle/Swatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include <fmt/format.h>

namespace Varnelle {

namespace {

using PrompterCore::RGBA;
using Bytes = std::array<std::int64_t, 3>;  // red, green, blue, each from 0 to 255

Bytes bytesOf(const RGBA& colour) {
    const auto byte = [](double component) { return std::int64_t{std::lround(component * 255)}; };
    const RGBA in = visible(colour);
    return {byte(in.red()), byte(in.green()), byte(in.blue())};
}

std::int64_t distance(const Bytes& a, const Bytes& b) {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return sum;
}

// xterm's palette: six levels of each component, and behind them 24 greys.
constexpr std::array<std::int64_t, 6> levels{0, 95, 135, 175, 215, 255};
constexpr std::int64_t firstOfCube = 16, firstGrey = 232, greys = 24;

std::int64_t nearestLevel(std::int64_t byte) {
    const auto nearest =
        std::ranges::min_element(levels, {}, [&](auto level) { return std::abs(level - byte); });
    return std::distance(levels.begin(), nearest);
}

std::string code(int layer, const RGBA& colour, TerminalColours known) {
    if (known == TerminalColours::palette)
        return fmt::format("{};5;{}", layer, paletteIndex(colour));
    const auto [red, green, blue] = bytesOf(colour);
    return fmt::format("{};2;{};{};{}", layer, red, green, blue);
}

}  // namespace

RGBA visible(const RGBA& colour) {
    return {colour.red(), colour.green(), colour.blue(), colour.alpha()};
}

std::int64_t paletteIndex(const RGBA& colour) {
    const Bytes wanted = bytesOf(colour);
    std::int64_t inCube = 0;
    Bytes cube{};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const std::int64_t level = nearestLevel(wanted[i]);
        inCube = inCube * std::ssize(levels) + level;
        cube[i] = levels[static_cast<std::size_t>(level)];
    }
    const std::int64_t mean = (wanted[0] + wanted[1] + wanted[2]) / 3;
    const std::int64_t grey = std::clamp<std::int64_t>((mean - 3) / 10, 0, greys - 1);
    const std::int64_t shade = 8 + 10 * grey;
    const bool isGrey = distance(wanted, {shade, shade, shade}) < distance(wanted, cube);
    return isGrey ? firstGrey + grey : firstOfCube + inCube;
}

std::string coloured(std::string_view text, const RGBA& colour, const RGBA& background,
                     TerminalColours known) {
    if (known == TerminalColours::none) return std::string(text);
    return fmt::format("\x1B[{};{}m{}\x1B[0m", code(38, colour, known), code(48, background, known),
                       text);
}

}  // namespace Varnelle
