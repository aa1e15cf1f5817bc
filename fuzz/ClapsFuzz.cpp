// The clap detector is fed a sequence of buffers, beside its plain twin.
//
// Bytes: the rate, then the buffers: a time step, how many samples, and how they are made: silence,
// a run of one value, or a sample a byte.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "PrompterCore/support/Require.h"
#include "fuzz/Bytes.h"
#include "tests/reference/PlainClapDetector.h"

using namespace PrompterCore;

namespace {

bool sameNumber(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Few samples a step, so that few bytes make a gesture.
constexpr double rates[] = {400, 100, 600, 1000, 8000, 0, -400, 1e-300};

float sampleOf(std::uint8_t byte) {
    switch (byte) {
        case 255: return std::numeric_limits<float>::quiet_NaN();
        case 254: return std::numeric_limits<float>::infinity();
        case 253: return -std::numeric_limits<float>::max();
        case 252: return 1e-30F;
        default: return static_cast<float>(static_cast<std::int8_t>(byte)) / 128;
    }
}

std::vector<float> bufferOf(Bytes& bytes) {
    const std::size_t count = bytes.next();
    const std::uint8_t how = bytes.next();
    if (how < 100) return std::vector<float>(count, 0.0F);
    if (how < 150) return std::vector<float>(count, sampleOf(bytes.next()));
    std::vector<float> buffer;
    for (const std::uint8_t byte : bytes.take(count)) {
        buffer.push_back(sampleOf(byte));
    }
    return buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes({data, size});
    const double rate = rates[bytes.next() % std::size(rates)];
    ClapDetector detector(rate);
    Plain::PlainClapDetector plain{rate};
    double time = 0;
    while (!bytes.isEmpty()) {
        time += bytes.number() / 8;
        const std::vector<float> buffer = bufferOf(bytes);
        const auto got = detector.feed(buffer, time);
        const auto expected = plain.feed(buffer, time);
        require(got.size() == expected.size() && got.size() <= 1, "both end gestures alike");
        if (!got.empty()) {
            require(got[0].count == expected[0].count && got[0].count >= 1, "both count alike");
            require(sameNumber(got[0].firstClap, expected[0].firstClap), "both begin alike");
            require(sameNumber(got[0].lastClap, expected[0].lastClap), "both end alike");
        }
        require(std::ranges::equal(detector.steps(), plain.steps,
                                   [](const auto& a, const auto& b) {
                                       return sameNumber(a.time, b.time) &&
                                              sameNumber(a.level, b.level) &&
                                              sameNumber(a.bright, b.bright);
                                   }),
                "both remember the same steps");
    }
    return 0;
}
