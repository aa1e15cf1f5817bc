#include <algorithm>
#include <span>
#include <vector>

#include <gtest/gtest.h>

#include "host/LastClaps.h"
#include "tests/support/Sounds.h"

namespace Varnelle {
namespace {

using PrompterCore::ClapDetector;
using PrompterCore::ClapGesture;
using PrompterCore::Tests::Sounds;

// What is left when the claps' sound of so many seconds has been heard, 10 ms at a time.
std::vector<ClapGesture> leftOf(const std::vector<double>& claps, double seconds, double rate) {
    Sounds sounds(rate, seconds, 3);
    for (const double clap : claps) {
        sounds.clapAt(clap);
    }
    ClapDetector detector(rate);
    std::span<const float> rest(sounds.samples());
    const auto place = [&] {
        return static_cast<double>(sounds.samples().size() - rest.size()) / rate;
    };
    while (!rest.empty()) {
        const auto size = std::min(rest.size(), static_cast<std::size_t>(rate / 100));
        EXPECT_TRUE(detector.feed(rest.first(size), place()).empty()) << "over before the end";
        rest = rest.subspan(size);
    }
    return lastClaps(detector, rate, place());
}

TEST(LastClaps, CountAsIfSilenceFollowed) {
    for (const double rate : {8000.0, 44'100.0, 48'000.0}) {
        for (const double seconds : {0.53, 0.8137, 1.1}) {
            SCOPED_TRACE(rate);
            SCOPED_TRACE(seconds);
            const auto left = leftOf({0.2, 0.5}, seconds, rate);
            ASSERT_EQ(left.size(), 1U);
            EXPECT_EQ(left[0].count, 2);
            EXPECT_NEAR(left[0].firstClap, 0.2, 0.003);
            EXPECT_NEAR(left[0].lastClap, 0.5, 0.003);
        }
    }
    EXPECT_TRUE(leftOf({}, 0.5, 48'000).empty());
    EXPECT_TRUE(leftOf({}, 0, 48'000).empty());
}

TEST(LastClaps, AClapAtTheVeryEndTakesNoneAwayFromThoseBefore) {
    const auto left = leftOf({0.2, 0.5, 1.14}, 1.145, 48'000);
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left[0].count, 2);
    EXPECT_EQ(left[1].count, 1);
    EXPECT_NEAR(left[1].firstClap, 1.14, 0.003);
}

}  // namespace
}  // namespace Varnelle
