// The scroll model against the plain one over any sequence of calls.

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "tests/reference/PlainScrollModel.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

bool sameNumber(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

struct Pair {
    ScrollModel product;
    Plain::PlainScrollModel plain;

    explicit Pair(const ScrollConfig& config) : product(config), plain{config} {}

    bool agrees() const {
        return sameNumber(product.position(), plain.position) &&
               sameNumber(product.rate(), plain.rate);
    }

    void call(int which, std::int64_t token, double time) {
        switch (which) {
            case 0: product.anchor(token, time), plain.anchor(token, time); break;
            case 1: product.jumpTo(token, time), plain.jump(token, time); break;
            case 2:
                product.setSpeaking(token > 0);
                plain.speaking = token > 0;
                break;
            case 3: product.reset(), plain = {plain.config}; break;
            default: RC_ASSERT(sameNumber(product.tickAt(time), plain.tick(time)));
        }
    }
};

constexpr double inf = std::numeric_limits<double>::infinity();
using Tests::nan;

rc::Gen<ScrollConfig> configOver(const rc::Gen<double>& number) {
    return rc::gen::exec([number] {
        return ScrollConfig{.defaultRate = *number,
                            .minRate = *number,
                            .maxRate = *number,
                            .rateSmoothing = *number,
                            .convergence = *number,
                            .maxLead = *number,
                            .holdAfterSilence = *number,
                            .predictionGain = *number,
                            .backStepThreshold = *number,
                            .backStepDelay = *number};
    });
}

void walk(const rc::Gen<double>& number, const rc::Gen<double>& times, bool timesAreSteps) {
    Pair pair(*configOver(number));
    double now = 0.0;
    const auto calls = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 12));
    for (const int which : calls) {
        const auto token = *rc::gen::inRange<std::int64_t>(-5, 30);
        const double time = *times;
        now = timesAreSteps ? now + time : time;
        pair.call(which, token, now);
        RC_ASSERT(pair.agrees());
    }
}

TEST(ScrollModelTwin, AgreesOnUsualReadings) {
    const bool timesAreSteps = true;
    Tests::forAll(
        [=] {
            walk(rc::gen::element(1.0, 0.5, 0.1, 2.0, 4.0, 8.0),
                 rc::gen::element(0.016, 0.0, 0.1, 0.15, 0.5, 1.0, 3.0, -0.2), timesAreSteps);
        },
        3000);
}

TEST(ScrollModelTwin, AgreesOnAnyNumbers) {
    const bool timesAreSteps = false;
    Tests::forAll(
        [=] {
            const auto odd =
                rc::gen::element(1.0, 0.0, -0.0, -1.0, 0.5, 1e300, -1e300, 5e-324, inf, -inf, nan);
            walk(odd, odd, timesAreSteps);
        },
        3000);
}

TEST(ScrollModelTwin, AgreesOnTheLargestTokens) {
    for (const std::int64_t token :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
          std::int64_t{1} << 53, (std::int64_t{1} << 53) + 1}) {
        Pair pair(ScrollConfig{.defaultRate = 2.0,
                               .minRate = 1.0,
                               .maxRate = 1e30,
                               .rateSmoothing = 0.5,
                               .convergence = 4.0,
                               .maxLead = 6.0,
                               .holdAfterSilence = 1.5,
                               .predictionGain = 1.0,
                               .backStepThreshold = 1.0,
                               .backStepDelay = 0.5});
        for (int step = 0; step < 12; ++step) {
            pair.call(step % 4 == 1 ? 1 : 0, step % 2 == 0 ? token : 3, step);
            pair.call(4, 0, step + 0.5);
            EXPECT_TRUE(pair.agrees()) << token << ' ' << step;
        }
    }
}

}  // namespace
}  // namespace PrompterCore
