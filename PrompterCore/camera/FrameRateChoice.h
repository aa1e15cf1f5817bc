#pragma once

// Which whole frame rates are offered for a resolution, and which one is used.
//
// Units: frames per second. A range holds both its ends, and half a frame per second beyond each:
// a device that says 29.97 supports 30.
//
//   FrameRateChoice::offered({{3, 60}});               // 60, 50, 30, 25, 24
//   FrameRateChoice::chosen({{1, 30}}, 29);            // 29
//   FrameRateChoice::chosen({{1, 30}}, std::nullopt);  // 30

#include <cstdint>
#include <optional>
#include <vector>

#include "PrompterCore/support/ClosedRange.h"

namespace PrompterCore::FrameRateChoice {

/// What the camera runs at when nothing else is asked for.
inline constexpr std::int64_t target = 30;

/// The standard rates that `ranges` support and the top rate of each, highest first, each once. A
/// range narrower than half a frame per second offers its top rate alone. Stops the program unless
/// all ends are finite and the top rates fit 64 bits.
[[nodiscard]] std::vector<std::int64_t> offered(const std::vector<ClosedRange<double>>& ranges);

/// `preferred` where a range supports it, whether it is offered or not; else `target` where one
/// does; else the offered rate nearest to it, the faster of two. Absent without ranges. Stops the
/// program unless all ends are finite and, where none supports `target`, as offered() does.
[[nodiscard]] std::optional<std::int64_t> chosen(const std::vector<ClosedRange<double>>& ranges,
                                                 std::optional<std::int64_t> preferred);

}  // namespace PrompterCore::FrameRateChoice
