#include "PrompterCore/audio/AudioLevel.h"

#include <algorithm>
#include <cmath>

namespace PrompterCore::AudioLevel {

double meter(std::span<const float> samples) noexcept {
    if (samples.empty()) return 0.0;
    double sum = 0.0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    const double meanSquare = sum / static_cast<double>(samples.size());
    if (!(meanSquare > 0)) return 0.0;
    const double level = 10.0 * std::log10(meanSquare);
    return std::clamp(level / -floorDecibels + 1.0, 0.0, 1.0);
}

}  // namespace PrompterCore::AudioLevel
