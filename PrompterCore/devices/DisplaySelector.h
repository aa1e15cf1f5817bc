#pragma once

// Which screen stands behind the prompter's glass.
//
//   const std::vector<DisplayTarget> screens{{.id = 1, .name = "Built-in", .isBuiltin = true},
//                                            {.id = 2, .name = "Office"},
//                                            {.id = 3, .name = "My Prompter"}};
//   DisplaySelector::preferred(screens, std::nullopt)->id;   // 3: by its name
//   DisplaySelector::preferred(screens, 1)->id;              // 1: chosen, although built in

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "PrompterCore/devices/DisplayTarget.h"

namespace PrompterCore::DisplaySelector {

/// A model of screen, by the numbers that the system reports for it.
struct Hardware {
    std::uint32_t vendor = 0;  ///< DisplayTarget::vendorID
    std::uint32_t model = 0;   ///< DisplayTarget::modelID

    friend bool operator==(const Hardware&, const Hardware&) = default;
};

/// True for an external screen that is known as a prompter's by its hardware, or whose name says
/// so, in whatever capitals. A built-in screen never is one.
[[nodiscard]] bool isLikelyPrompter(const DisplayTarget& display);

/// The screen for the prompter: the one whose id is `remembered`, even a built-in one; else the
/// first likely prompter; else the first external screen. Absent otherwise: the only screen there
/// is must not disappear behind the prompter unasked. O(n) in screens.
[[nodiscard]] std::optional<DisplayTarget> preferred(std::span<const DisplayTarget> displays,
                                                     std::optional<std::uint32_t> remembered);

}  // namespace PrompterCore::DisplaySelector

/// Equal hardware has equal hashes.
template <>
struct std::hash<PrompterCore::DisplaySelector::Hardware> {
    std::size_t operator()(const PrompterCore::DisplaySelector::Hardware& hardware) const noexcept {
        return std::hash<std::uint64_t>()(std::uint64_t{hardware.vendor} << 32 | hardware.model);
    }
};
