#include "apps/varnelle/CheckColours.h"

#include <cmath>

#include <fmt/format.h>

#include "PrompterCore/colour/EyeLineColour.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/Swatch.h"

namespace Varnelle {

namespace {

std::optional<std::string_view> levelFrom(double contrast, double aa, double aaa) noexcept {
    if (contrast >= aaa) return "AAA";
    if (contrast >= aa) return "AA";
    return std::nullopt;
}

Json asJson(std::optional<std::string_view> level) { return level ? Json(*level) : Json(); }

}  // namespace

std::optional<std::string_view> levelOfNormalText(double contrast) noexcept {
    return levelFrom(contrast, 4.5, 7);
}

std::optional<std::string_view> levelOfLargeText(double contrast) noexcept {
    return levelFrom(contrast, 3, 4.5);
}

std::string contrastText(double contrast) {
    return fmt::format("{:.2f}:1", std::floor(contrast * 100) / 100);
}

void checkColours(const PrompterCore::RGBA& text, const PrompterCore::RGBA& background, bool json,
                  TerminalColours colours) {
    const double contrast = text.contrastWith(background);
    const auto normal = levelOfNormalText(contrast);
    const auto large = levelOfLargeText(contrast);
    const PrompterCore::RGBA eyeLine = PrompterCore::EyeLineColour::automatic(background, text);
    Output output;
    if (json) {
        output.line(Json{{"text", text.hex()},
                         {"background", background.hex()},
                         {"contrast", contrast},
                         {"normalText", asJson(normal)},
                         {"largeText", asJson(large)},
                         {"eyeLine", eyeLine.hex()}}
                        .dump());
    } else {
        output.line(
            fmt::format("{} on {}  {}", text.hex(), background.hex(), contrastText(contrast)));
        output.line(fmt::format("normal text  {}", normal.value_or("too weak for AA")));
        output.line(fmt::format("large text   {}", large.value_or("too weak for AA")));
        output.line(fmt::format("eye line     {}", eyeLine.hex()));
        if (colours != TerminalColours::none && isTerminal())
            output.line(coloured("  The words that you read aloud  ", text, background, colours) +
                        coloured(" \u25B6 ", eyeLine, background, colours));
    }
    output.flush();
}

}  // namespace Varnelle
