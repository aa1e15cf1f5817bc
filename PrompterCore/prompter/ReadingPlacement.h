#pragma once

// Whether the prompter is shown in a window, and whether it has to be opened on another screen.
//
//   const DisplayTarget glass{.id = 2, .name = "Prompter"};
//   ReadingPlacement::inWindow(glass);                     // false: it has that screen to itself
//   ReadingPlacement::opensPrompterOn(glass, 1, false);    // true: the window is on screen 1

#include <cstdint>
#include <optional>

#include "PrompterCore/devices/DisplayTarget.h"

namespace PrompterCore::ReadingPlacement {

/// True on a built-in screen, and where there is none to present on.
[[nodiscard]] bool inWindow(const std::optional<DisplayTarget>& display) noexcept;

/// True when the prompter must be opened on `display`: it is not showing already, and the screen
/// that its window is on, `windowDisplay`, is another or not known. False without a display.
[[nodiscard]] bool opensPrompterOn(const std::optional<DisplayTarget>& display,
                                   std::optional<std::uint32_t> windowDisplay,
                                   bool alreadyShowing) noexcept;

}  // namespace PrompterCore::ReadingPlacement
