#include "host/LastClaps.h"

#include <cmath>
#include <cstddef>

namespace Varnelle {

std::vector<PrompterCore::ClapGesture> lastClaps(PrompterCore::ClapDetector& detector, double rate,
                                                 double end) {
    // Short, as a microphone's: one buffer of it all would tell one gesture at most, and lose what
    // a late clap follows.
    const std::vector<float> silence(static_cast<std::size_t>(std::ceil(rate * 0.01)), 0.0F);
    const double length = static_cast<double>(silence.size()) / rate;
    std::vector<PrompterCore::ClapGesture> last;
    for (int buffer = 0; buffer < 75; ++buffer) {
        for (const auto& gesture : detector.feed(silence, end + buffer * length)) {
            last.push_back(gesture);
        }
    }
    return last;
}

}  // namespace Varnelle
