#include "PrompterCore/colour/EyeLineColour.h"

namespace PrompterCore::EyeLineColour {

namespace {

// What WCAG 2.0 asks of graphics and of large text.
constexpr double leastContrast = 3;

constexpr RGBA white(1, 1, 1, 1);
constexpr RGBA black(0, 0, 0, 1);

}  // namespace

RGBA automatic(const RGBA& background, const RGBA& current) noexcept {
    if (current.contrastWith(background) >= leastContrast) return current;
    return white.contrastWith(background) > black.contrastWith(background) ? white : black;
}

}  // namespace PrompterCore::EyeLineColour
