#include "PrompterCore/devices/DisplaySelector.h"

#include <algorithm>
#include <string_view>

#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"

namespace PrompterCore::DisplaySelector {

namespace {

// Screens that are made for nothing else.
constexpr Hardware knownPrompters[] = {{.vendor = 9353, .model = 13073}};

// What the names of such screens hold, in lower case.
constexpr std::string_view keywords[] = {"prompter", "elgato", "prom."};

// By whole characters, so that names that are canonically equivalent give one answer.
bool holds(const Characters& name, std::string_view keyword) {
    const auto isAscii = [](Character character, char ascii) { return character.is(ascii); };
    return std::search(name.begin(), name.end(), keyword.begin(), keyword.end(), isAscii) !=
           name.end();
}

}  // namespace

bool isLikelyPrompter(const DisplayTarget& display) {
    if (display.isBuiltin) return false;
    const Hardware hardware{.vendor = display.vendorID, .model = display.modelID};
    if (std::ranges::find(knownPrompters, hardware) != std::end(knownPrompters)) return true;
    const Characters name(lowercased(display.name));
    return std::ranges::any_of(keywords,
                               [&name](std::string_view keyword) { return holds(name, keyword); });
}

std::optional<DisplayTarget> preferred(std::span<const DisplayTarget> displays,
                                       std::optional<std::uint32_t> remembered) {
    auto display = displays.end();
    if (remembered) display = std::ranges::find(displays, *remembered, &DisplayTarget::id);
    if (display == displays.end()) display = std::ranges::find_if(displays, isLikelyPrompter);
    if (display == displays.end())
        display = std::ranges::find(displays, false, &DisplayTarget::isBuiltin);
    if (display == displays.end()) return std::nullopt;
    return *display;
}

}  // namespace PrompterCore::DisplaySelector
