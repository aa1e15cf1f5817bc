#include "host/ClapsInSpeech.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "PrompterCore/support/Rounding.h"

namespace Varnelle {

namespace {

constexpr double before = 0.2;  // seconds of sound that count around the gesture
constexpr double behind = 0.6;
constexpr double ring = 0.15;    // of a clap, which is no other sound
constexpr double margin = 0.01;  // before a clap: its own rise
constexpr double attack = 0.03;  // in which a clap is loudest
constexpr double instant = 0.0025;

struct Energy {
    double sum = 0;
    double samples = 0;

    void add(std::span<const float> sound) {
        for (const float sample : sound) {
            sum += static_cast<double>(sample) * static_cast<double>(sample);
        }
        samples += static_cast<double>(sound.size());
    }
    double mean() const { return samples > 0 ? sum / samples : 0; }
};

}  // namespace

bool standOut(const PrompterCore::ClapGesture& gesture, const SoundTail& tail, double rate) {
    const auto between = [&](double from, double to) {
        return tail.between(PrompterCore::roundedToNearest(from * rate),
                            PrompterCore::roundedToNearest(to * rate));
    };
    const auto loudest = [&](double clap) {
        double level = 0;
        for (double at = 0; at < attack; at += instant) {
            Energy energy;
            energy.add(between(clap + at, clap + at + instant));
            level = std::max(level, energy.mean());
        }
        return level;
    };
    const double claps = std::min(loudest(gesture.firstClap), loudest(gesture.lastClap));
    Energy around;
    around.add(between(gesture.firstClap - before, gesture.firstClap - margin));
    around.add(between(gesture.firstClap + ring, gesture.lastClap - margin));
    around.add(between(gesture.lastClap + ring, gesture.lastClap + behind));
    return claps > around.mean();
}

}  // namespace Varnelle
