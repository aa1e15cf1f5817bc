#include "PrompterCore/appearance/PaneLayout.h"

#include <algorithm>

namespace PrompterCore::PaneLayout {

namespace {

template <class Width>
std::vector<double> widths(const std::vector<Pane>& panes, Width width) {
    std::vector<double> result;
    result.reserve(panes.size());
    for (const Pane& pane : panes)
        result.push_back(width(pane));
    return result;
}

double slackOf(const Pane& pane) noexcept { return pane.preferred - pane.minimum; }

}  // namespace

std::vector<double> fit(const std::vector<Pane>& panes, double total, double reserved) {
    double preferred = 0;
    double slack = 0;
    for (const Pane& pane : panes) {
        preferred += pane.preferred;
        slack += slackOf(pane);
    }
    double available = total - reserved;
    const bool fits = available > 0 ? available >= preferred : available <= 0 && !(preferred > 0);
    if (fits) return widths(panes, [](const Pane& pane) -> double { return pane.preferred; });
    if (available <= 0) available = 0;
    if (!(slack > 0)) return widths(panes, [](const Pane& pane) -> double { return pane.minimum; });
    const double shortfall = std::min(slack, preferred - available);
    return widths(panes, [shortfall, slack](const Pane& pane) {
        return pane.preferred - shortfall * slackOf(pane) / slack;
    });
}

}  // namespace PrompterCore::PaneLayout
