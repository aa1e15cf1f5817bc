#pragma once

// The clap detector written down step by step, with its whole state in the open: every sample goes
// through `pending`, every clap of a group is kept.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "PrompterCore/audio/ClapDetector.h"

namespace PrompterCore::Plain {

struct PlainClapDetector {
    double sampleRate;
    std::int64_t stepLength =
        std::llround(sampleRate * 0.0025) < 1 ? 1 : std::llround(sampleRate * 0.0025);
    double stepSeconds = static_cast<double>(stepLength) / sampleRate;
    std::vector<float> pending{};
    double pendingStart = 0;
    float lastSample = 0;
    std::vector<ClapDetector::Step> steps{};
    std::size_t nextToCheck = 0;
    std::vector<double> claps{};
    double quietUntil = -std::numeric_limits<double>::infinity();

    double mean(std::size_t from, std::size_t count) const {
        double sum = 0;
        for (std::size_t k = from; k < from + count; ++k)
            sum += std::pow(10, steps[k].level / 10);
        return 10 * std::log10(sum / static_cast<double>(count) + 1e-12);
    }

    bool isClap(std::size_t i) const {
        std::size_t peak = i;
        if (steps[i + 1].level > steps[peak].level) peak = i + 1;
        if (steps[i + 2].level > steps[peak].level) peak = i + 2;
        const double background = mean(i - 8, 8);
        const double tail = mean(i + 10, 9);
        return steps[peak].level > -50 && steps[peak].level - background >= 15 &&
               steps[i].level - background >= 9 && steps[peak].bright >= 0.1 &&
               steps[peak].level - tail >= 10;
    }

    std::vector<ClapGesture> feed(const std::vector<float>& samples, double startingAt) {
        if (pending.empty()) pendingStart = startingAt;
        pending.insert(pending.end(), samples.begin(), samples.end());
        const auto length = static_cast<std::size_t>(stepLength);
        std::size_t made = 0;
        for (; (made + 1) * length <= pending.size(); ++made) {
            double energy = 0, differenceEnergy = 0;
            for (std::size_t k = made * length; k < (made + 1) * length; ++k) {
                const float x = pending[k], square = x * x, difference = x - lastSample;
                energy += static_cast<double>(square);
                differenceEnergy +=
                    static_cast<double>(difference) * static_cast<double>(difference);
                lastSample = x;
            }
            const auto count = static_cast<double>(stepLength);
            steps.push_back({pendingStart + stepSeconds * static_cast<double>(made),
                             10 * std::log10(energy / count + 1e-12),
                             (differenceEnergy / count) / (energy / count + 1e-12)});
        }
        pending.erase(pending.begin(),
                      pending.begin() + static_cast<std::ptrdiff_t>(made * length));
        pendingStart += stepSeconds * static_cast<double>(made);
        while (nextToCheck + 18 < steps.size()) {
            const std::size_t i = nextToCheck++;
            const double t = steps[i].time;
            if (i < 8 || t < quietUntil || !isClap(i)) continue;
            quietUntil = t + 0.1;
            if (!claps.empty() && t - claps.back() > 0.6) claps.clear();
            claps.push_back(t);
        }
        if (nextToCheck > 1008) {
            steps.erase(steps.begin(),
                        steps.begin() + static_cast<std::ptrdiff_t>(nextToCheck - 8));
            nextToCheck = 8;
        }
        std::vector<ClapGesture> over;
        if (!claps.empty() && pendingStart - claps.back() >= 0.65) {
            over.push_back({static_cast<std::int64_t>(claps.size()), claps.front(), claps.back()});
            claps.clear();
        }
        return over;
    }
};

}  // namespace PrompterCore::Plain
