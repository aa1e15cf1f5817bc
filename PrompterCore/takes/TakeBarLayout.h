#pragma once

// How wide the take bar is, and how much of it is shown.
//
// Units: points.
//
//   TakeBarLayout::fitting(TakeBarMode::recording(), 600);   // compact, 520 wide

#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/takes/TakeBarMode.h"

namespace PrompterCore {

/// How the take bar is drawn.
struct TakeBarLayout {
    /// From the least shown to all of it, in this order.
    enum class Density { minimal, compact, full };

    static constexpr double margin = 16.0;  ///< points, kept free on either side

    Density density = Density::minimal;
    double width = 0;  ///< points, of the bar

    /// The densest bar for `mode` that leaves its margins in `width`, and the minimal one where
    /// none does: it is then wider than its space.
    [[nodiscard]] static TakeBarLayout fitting(const TakeBarMode& mode, double width) noexcept;

    friend bool operator==(const TakeBarLayout&, const TakeBarLayout&) = default;
};

template <>
struct Enumeration<TakeBarLayout::Density> {
    struct Row {
        TakeBarLayout::Density value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {
        {TakeBarLayout::Density::minimal, "minimal"},
        {TakeBarLayout::Density::compact, "compact"},
        {TakeBarLayout::Density::full, "full"},
    };
};

}  // namespace PrompterCore
