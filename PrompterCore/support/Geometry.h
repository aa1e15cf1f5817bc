#pragma once

// Geometry in double precision. The unit (points or pixels) is said where a record is used.
//
//   const Rectangle window{.origin = {.x = 0, .y = 75}, .size = {.width = 800, .height = 450}};
//   window.maxY();    // 525

namespace PrompterCore {

/// Taken as it stands: neither side is clamped.
struct Size {
    double width = 0;   ///< along x
    double height = 0;  ///< along y

    friend bool operator==(const Size&, const Size&) = default;
};

/// A place, or a way from one to another.
struct Point {
    double x = 0;  ///< grows to the right
    double y = 0;  ///< grows as is said where the point is used

    friend bool operator==(const Point&, const Point&) = default;
};

/// The corner with the least x and y, and a size that is not negative. Which way y grows is said
/// where a rectangle is used.
struct Rectangle {
    Point origin;  ///< the corner with the least x and y
    Size size;     ///< neither side negative

    [[nodiscard]] double minX() const noexcept { return origin.x; }                ///< left edge
    [[nodiscard]] double minY() const noexcept { return origin.y; }                ///< least y
    [[nodiscard]] double maxX() const noexcept { return origin.x + size.width; }   ///< right edge
    [[nodiscard]] double maxY() const noexcept { return origin.y + size.height; }  ///< greatest y

    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

}  // namespace PrompterCore
