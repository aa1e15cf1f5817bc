#pragma once

// Geometry in double precision. The unit (points or pixels) is said where a record is used.
//
//   const Size frame{.width = 1920, .height = 1080};

namespace PrompterCore {

/// Taken as it stands: neither side is clamped.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

}  // namespace PrompterCore
