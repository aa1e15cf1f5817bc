#pragma once

// The sizes of the editor's text: a ladder of steps, in points.
//
//   EditorTextSize::biggerThan(19);    // 21
//   EditorTextSize::biggerThan(20);    // 21: a size between two steps goes to the next one
//   EditorTextSize::smallerThan(15);   // 15: there is none below

#include <array>

namespace PrompterCore::EditorTextSize {

/// Ascending.
inline constexpr std::array<double, 6> steps = {15, 17, 19, 21, 24, 28};
/// The step of who never chose one.
inline constexpr double standard = 19;

/// The first step above `size`; the largest step when there is none.
[[nodiscard]] double biggerThan(double size) noexcept;
/// The last step below `size`; the smallest step when there is none.
[[nodiscard]] double smallerThan(double size) noexcept;
/// `size` within the smallest and the largest step; the smallest when it is not a number.
[[nodiscard]] double clamped(double size) noexcept;

}  // namespace PrompterCore::EditorTextSize
