#pragma once

// On which screen the operator's controller window goes: not on the prompter's, if that can be
// helped.
//
//   const std::vector<std::uint32_t> screens{1, 2};
//   ControllerPlacement(2, 1, screens).screen;              // 1: where the operator works
//   ControllerPlacement(1, std::nullopt, screens).screen;   // 2: the first but the prompter's

#include <cstdint>
#include <optional>
#include <vector>

namespace PrompterCore {

/// Where the controller window goes. Screens are DisplayTarget::id.
struct ControllerPlacement {
    /// The screen `working` when it is one of `screens` and not the prompter's; else the first of
    /// `screens` that is not the prompter's; else the prompter's own.
    ControllerPlacement(std::uint32_t prompter, std::optional<std::uint32_t> working,
                        const std::vector<std::uint32_t>& screens) noexcept;

    std::uint32_t screen;       ///< the screen for the window
    bool sharesPrompterScreen;  ///< there is no other than the prompter's

    friend bool operator==(const ControllerPlacement&, const ControllerPlacement&) = default;
};

}  // namespace PrompterCore
