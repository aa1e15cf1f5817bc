#pragma once

// Where the recorded crop sits in the room that the camera's picture leaves it, as the user slid
// it.
//
// Units: -1 is the left or top edge of the picture, 0 the middle, 1 the right or bottom edge.
//
//   FrameOffset offset = FrameOffset::centred;
//   offset = offset.moved(-0.25, 0);     // (-0.25, 0)
//   offset = offset.moved(-3, 0);        // (-1, 0)

namespace PrompterCore {

/// A value, always within -1 ... 1. Never allocates.
class FrameOffset {
public:
    /// Each coordinate is clamped to -1 ... 1; one that is not a number becomes 0.
    constexpr FrameOffset(double x, double y) noexcept : x_(clamped(x)), y_(clamped(y)) {}

    static const FrameOffset centred;  ///< (0, 0)

    [[nodiscard]] constexpr double x() const noexcept { return x_; }  ///< -1 (left) ... 1 (right)
    [[nodiscard]] constexpr double y() const noexcept { return y_; }  ///< -1 (top) ... 1 (bottom)
    /// Whether both coordinates are exactly 0.
    [[nodiscard]] constexpr bool isCentred() const noexcept { return *this == centred; }

    /// The sums, clamped; one that is not a number becomes 0.
    [[nodiscard]] FrameOffset moved(double dx, double dy) const noexcept;

    friend constexpr bool operator==(const FrameOffset&, const FrameOffset&) = default;

private:
    static constexpr double clamped(double value) noexcept {
        if (value < -1) return -1;
        if (value > 1) return 1;
        return value == value ? value : 0;
    }

    double x_, y_;
};

inline constexpr FrameOffset FrameOffset::centred{0, 0};

}  // namespace PrompterCore
