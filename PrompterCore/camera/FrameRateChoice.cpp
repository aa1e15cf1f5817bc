#include "PrompterCore/camera/FrameRateChoice.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/support/Rounding.h"

namespace PrompterCore::FrameRateChoice {

namespace {

constexpr std::int64_t standardRates[] = {24, 25, 30, 50, 60, 120};
constexpr double tolerance = 0.5;  // frames per second

using Ranges = std::vector<ClosedRange<double>>;

void requireFinite(const Ranges& ranges) noexcept {
    for (const auto& range : ranges)
        require(std::isfinite(range.lower()) && std::isfinite(range.upper()),
                "a range of frame rates has finite ends");
}

bool supports(const ClosedRange<double>& range, std::int64_t rate) noexcept {
    return ClosedRange(range.lower() - tolerance, range.upper() + tolerance)
        .contains(static_cast<double>(rate));
}

bool anySupports(const Ranges& ranges, std::int64_t rate) noexcept {
    return std::ranges::any_of(ranges, [rate](const auto& range) { return supports(range, rate); });
}

std::uint64_t distanceFromTarget(std::int64_t rate) noexcept {
    return rate < target ? distanceBetween(rate, target) : distanceBetween(target, rate);
}

}  // namespace

std::vector<std::int64_t> offered(const Ranges& ranges) {
    requireFinite(ranges);
    std::set<std::int64_t, std::greater<>> rates;
    for (const auto& range : ranges) {
        rates.insert(roundedToNearest(range.upper()));
        if (range.upper() - range.lower() < tolerance) continue;
        for (const std::int64_t rate : standardRates) {
            if (supports(range, rate)) rates.insert(rate);
        }
    }
    return {rates.begin(), rates.end()};
}

std::optional<std::int64_t> chosen(const Ranges& ranges, std::optional<std::int64_t> preferred) {
    requireFinite(ranges);
    if (preferred && anySupports(ranges, *preferred)) return preferred;
    if (anySupports(ranges, target)) return target;
    const std::vector<std::int64_t> rates = offered(ranges);
    // The first of two equally near ones is the faster.
    const auto nearest = std::ranges::min_element(rates, {}, distanceFromTarget);
    return nearest == rates.end() ? std::nullopt : std::optional(*nearest);
}

}  // namespace PrompterCore::FrameRateChoice
