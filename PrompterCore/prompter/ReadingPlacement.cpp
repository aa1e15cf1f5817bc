#include "PrompterCore/prompter/ReadingPlacement.h"

namespace PrompterCore::ReadingPlacement {

bool inWindow(const std::optional<DisplayTarget>& display) noexcept {
    return !display || display->isBuiltin;
}

bool opensPrompterOn(const std::optional<DisplayTarget>& display,
                     std::optional<std::uint32_t> windowDisplay, bool alreadyShowing) noexcept {
    return display && !alreadyShowing && windowDisplay != display->id;
}

}  // namespace PrompterCore::ReadingPlacement
