#pragma once

// Geometry in double precision. The unit (points or pixels) is said where a record is used.
//
//   const Rectangle window{.origin = {.x = 0, .y = 75}, .size = {.width = 800, .height = 450}};
//   window.maxY();    // 525

namespace PrompterCore {

/// Taken as it stands: neither side is clamped.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

/// The corner with the least x and y, and a size that is not negative. Which way y grows is said
/// where a rectangle is used.
struct Rectangle {
    Point origin;
    Size size;

    [[nodiscard]] double minX() const noexcept { return origin.x; }
    [[nodiscard]] double minY() const noexcept { return origin.y; }
    [[nodiscard]] double maxX() const noexcept { return origin.x + size.width; }
    [[nodiscard]] double maxY() const noexcept { return origin.y + size.height; }

    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

}  // namespace PrompterCore
