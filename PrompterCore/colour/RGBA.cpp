#include "PrompterCore/colour/RGBA.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Folding.h"

namespace PrompterCore {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

// A component out of its two upper-case digits.
std::optional<double> component(std::string_view pair) noexcept {
    const std::size_t high = digits.find(pair[0]);
    const std::size_t low = digits.find(pair[1]);
    if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
    return static_cast<double>(16 * high + low) / 255.0;
}

void appendByte(std::string& hex, double component) {
    const std::int64_t byte = roundedToNearest(component * 255);
    require(0 <= byte && byte <= 255, "a colour that is written as hex lies within 0 ... 1");
    hex += digits[static_cast<std::size_t>(byte / 16)];
    hex += digits[static_cast<std::size_t>(byte % 16)];
}

// WCAG 2.0, "relative luminance": a component of sRGB made linear in light.
double linear(double component) noexcept {
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

}  // namespace

std::optional<RGBA> RGBA::fromHex(const Text& text) {
    std::string_view written = text.utf8();
    if (written.starts_with('#')) written.remove_prefix(1);
    // Upper-casing first, then counting: the ligature "ff" (U+FB00) is two digits. Bytes may be
    // counted for characters, since none but ASCII digits will do.
    const std::string upper = uppercased(Text(written)).utf8();
    if (upper.size() != 6 && upper.size() != 8) return std::nullopt;
    const std::string all = upper.size() == 6 ? upper + "FF" : upper;
    std::array<double, 4> components{};
    for (std::size_t i = 0; i < components.size(); i++) {
        const auto value = component(std::string_view(all).substr(2 * i, 2));
        if (!value) return std::nullopt;
        components[i] = *value;
    }
    return RGBA(components[0], components[1], components[2], components[3]);
}

std::string RGBA::hex() const {
    std::string hex = "#";
    for (const double each : {red_, green_, blue_, alpha_})
        appendByte(hex, each);
    return hex;
}

double RGBA::luminance() const noexcept {
    return 0.2126 * linear(red_) + 0.7152 * linear(green_) + 0.0722 * linear(blue_);
}

double RGBA::contrastWith(const RGBA& other) const noexcept {
    const double mine = luminance();
    const double others = other.luminance();
    return (std::max(mine, others) + 0.05) / (std::min(mine, others) + 0.05);
}

}  // namespace PrompterCore
