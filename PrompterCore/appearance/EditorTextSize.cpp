#include "PrompterCore/appearance/EditorTextSize.h"

#include <algorithm>

namespace PrompterCore::EditorTextSize {

double biggerThan(double size) noexcept {
    const auto* const step =
        std::find_if(steps.begin(), steps.end(), [size](double each) { return each > size; });
    return step == steps.end() ? steps.back() : *step;
}

double smallerThan(double size) noexcept {
    const auto step =
        std::find_if(steps.rbegin(), steps.rend(), [size](double each) { return each < size; });
    return step == steps.rend() ? steps.front() : *step;
}

// What is not a number is greater than nothing.
double clamped(double size) noexcept {
    return size > steps.front() ? std::min(size, steps.back()) : steps.front();
}

}  // namespace PrompterCore::EditorTextSize
