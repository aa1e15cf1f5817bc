#pragma once

// Where lines and the highlight band stand relative to the eye line, the height at which the
// reader's eyes rest.
//
// Units: display points from the top of the view, except line positions, which count lines and may
// have a fraction (LineBreaker::lineIndexFor). The view lays out a window of lines from `firstLine`
// on; `index` is the line position being read, which always stands at the eye line.
//
//   PrompterGeometry::contentOffset(10.5, 8, 40, 300);     // 200: the top of line 8
//   PrompterGeometry::lineTop(10, 10.5, 8, 40, 300);       // 280
//   PrompterGeometry::bandOffset(10, 10.5, 8, 40, 300);    // 280: the band lies on line 10
//
// Every number has an answer, computed as written; what is not finite goes through the formulas.
// Nothing here allocates: safe in a display callback.

#include <cstdint>
#include <optional>

namespace PrompterCore::PrompterGeometry {

/// The top of line `firstLine`. Never allocates.
[[nodiscard]] double contentOffset(double index, std::int64_t firstLine, double lineHeight,
                                   double eyeLineY) noexcept;

/// The top of `line`, counted from the top of `firstLine`. Never allocates.
[[nodiscard]] double lineTop(std::int64_t line, double index, std::int64_t firstLine,
                             double lineHeight, double eyeLineY) noexcept;

/// The top of the highlight band: that of `cursorLine`, so that the band follows the line as the
/// text scrolls; the eye line where there is no such line. Never allocates.
[[nodiscard]] double bandOffset(std::optional<std::int64_t> cursorLine, double index,
                                std::int64_t firstLine, double lineHeight,
                                double eyeLineY) noexcept;

}  // namespace PrompterCore::PrompterGeometry
