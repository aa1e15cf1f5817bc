#include "PrompterCore/colour/RGBA.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "PrompterCore/colour/HexDigits.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Folding.h"

namespace PrompterCore {

namespace {

// WCAG 2.0, "relative luminance": a component of sRGB made linear in light.
double linear(double component) noexcept {
    return component <= 0.03928 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

}  // namespace

RGBA RGBA::fromRecord(const Record& record) {
    // One by one, so that the first key that is missing is the one that is complained of.
    const auto red = record.required<double>("red");
    const auto green = record.required<double>("green");
    const auto blue = record.required<double>("blue");
    return unclamped(red, green, blue, record.required<double>("alpha"));
}

Record RGBA::toRecord() const {
    return Record()
        .with("red", red_)
        .with("green", green_)
        .with("blue", blue_)
        .with("alpha", alpha_);
}

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
        const auto byte = HexDigits::byteAt(all, 2 * i);
        if (!byte) return std::nullopt;
        components[i] = *byte / 255.0;
    }
    return RGBA(components[0], components[1], components[2], components[3]);
}

std::string RGBA::hex() const {
    std::string hex = "#";
    for (const double component : {red_, green_, blue_, alpha_}) {
        const std::int64_t byte = roundedToNearest(component * 255);
        require(0 <= byte && byte <= 255, "a colour that is written as hex lies within 0 ... 1");
        HexDigits::append(hex, static_cast<std::uint8_t>(byte));
    }
    return hex;
}

double RGBA::luminance() const noexcept {
    return 0.2126 * linear(red_) + 0.7152 * linear(green_) + 0.0722 * linear(blue_);
}

double RGBA::contrastWith(const RGBA& other) const noexcept {
    const double mine = luminance() + 0.05;
    const double others = other.luminance() + 0.05;
    return mine > others ? mine / others : others / mine;
}

}  // namespace PrompterCore
