#include "PrompterCore/devices/ControllerPlacement.h"

#include <algorithm>

namespace PrompterCore {

ControllerPlacement::ControllerPlacement(std::uint32_t prompter,
                                         std::optional<std::uint32_t> working,
                                         const std::vector<std::uint32_t>& screens) noexcept
    : screen(prompter), sharesPrompterScreen(false) {
    const auto isOther = [prompter](std::uint32_t id) { return id != prompter; };
    auto chosen = screens.end();
    if (working && isOther(*working)) chosen = std::ranges::find(screens, *working);
    if (chosen == screens.end()) chosen = std::ranges::find_if(screens, isOther);
    if (chosen != screens.end())
        screen = *chosen;
    else
        sharesPrompterScreen = true;
}

}  // namespace PrompterCore
