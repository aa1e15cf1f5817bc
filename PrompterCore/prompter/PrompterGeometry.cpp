#include "PrompterCore/prompter/PrompterGeometry.h"

namespace PrompterCore::PrompterGeometry {

// Line indices are subtracted as doubles: exact for any real prompter, and without overflow.

double contentOffset(double index, std::int64_t firstLine, double lineHeight,
                     double eyeLineY) noexcept {
    return eyeLineY - lineHeight * (index - static_cast<double>(firstLine));
}

double lineTop(std::int64_t line, double index, std::int64_t firstLine, double lineHeight,
               double eyeLineY) noexcept {
    return contentOffset(index, firstLine, lineHeight, eyeLineY) +
           lineHeight * (static_cast<double>(line) - static_cast<double>(firstLine));
}

double bandOffset(std::optional<std::int64_t> cursorLine, double index, std::int64_t firstLine,
                  double lineHeight, double eyeLineY) noexcept {
    if (!cursorLine) return eyeLineY;
    return lineTop(*cursorLine, index, firstLine, lineHeight, eyeLineY);
}

}  // namespace PrompterCore::PrompterGeometry
