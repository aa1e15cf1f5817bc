#pragma once

// The mark that shows where the lens is, for the reader to look at.
//
// Units: positions are fractions, 0 ... 1, of the width and height of the area that shows the mark;
// drags and that area are in points.
//
//   LensMarker marker = LensMarker::default_;       // (0.5, 0.32)
//   marker = marker.offset(50, 0, 500, 400);        // (0.6, 0.32)

namespace PrompterCore {

/// A value, always within 0 ... 1. Never allocates.
class LensMarker {
public:
    /// Each coordinate is clamped to 0 ... 1; one that is not a number becomes 0.5.
    constexpr LensMarker(double x, double y) noexcept : x_(clamped(x)), y_(clamped(y)) {}

    static const LensMarker default_;  ///< in the middle, a little under a third of the height down

    [[nodiscard]] constexpr double x() const noexcept { return x_; }  ///< 0 (left) ... 1 (right)
    [[nodiscard]] constexpr double y() const noexcept { return y_; }  ///< 0 (top) ... 1 (bottom)
    /// Whether both coordinates are exactly the default's.
    [[nodiscard]] constexpr bool isDefault() const noexcept { return *this == default_; }

    /// Dragged by `dx`, `dy` points over an area of this size, clamped. Along a side that is not
    /// above 0 it stays. What is not a number becomes 0.5.
    [[nodiscard]] LensMarker offset(double dx, double dy, double width,
                                    double height) const noexcept;

    friend constexpr bool operator==(const LensMarker&, const LensMarker&) = default;

private:
    static constexpr double clamped(double value) noexcept {
        if (value < 0) return 0;
        if (value > 1) return 1;
        return value == value ? value : 0.5;
    }

    double x_, y_;
};

inline constexpr LensMarker LensMarker::default_{0.5, 0.32};

}  // namespace PrompterCore
