#pragma once

// Panes side by side in a width that may be too small for them. Widths are in points.
//
//   // The second pane can give up twice as much as the first, so it does.
//   PaneLayout::fit({{.preferred = 300, .minimum = 200}, {.preferred = 500, .minimum = 300}},
//                   700, 0);   // 266.67 and 433.33

#include <vector>

#include "PrompterCore/support/Required.h"

namespace PrompterCore::PaneLayout {

/// What a pane asks for, in points.
struct Pane {
    Required<double> preferred;  ///< where there is room
    Required<double> minimum;    ///< where there is not

    friend bool operator==(const Pane&, const Pane&) = default;
};

/// A width for each pane within `total` less `reserved`, which stays free. All get their preferred
/// widths where these fit; otherwise what is missing is shared in proportion to what each pane can
/// give up. No pane goes below its minimum: the widths may then add up to more than there is.
/// O(n) in panes.
[[nodiscard]] std::vector<double> fit(const std::vector<Pane>& panes, double total,
                                      double reserved);

}  // namespace PrompterCore::PaneLayout
