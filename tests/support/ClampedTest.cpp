#include <algorithm>
#include <concepts>
#include <cstdint>

#include "PrompterCore/support/Clamped.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Delay = Clamped<0, 1000>;
using Tests::least;
using Tests::most;

static_assert(std::copyable<Delay> && std::equality_comparable<Delay>);
static_assert(!std::default_initializable<Delay>, "somebody chose the number");
static_assert(Delay(2500) == 1000 && Delay(-40) == 0 && Delay(30) == 30);

TEST(Clamped, ClampsHoweverItChanges) {
    Delay delay = 2500;
    EXPECT_EQ(delay, 1000);
    delay -= 1200;
    EXPECT_EQ(delay, 0);
    EXPECT_EQ(delay--, 0);
    EXPECT_EQ(delay, 0);
    EXPECT_EQ(delay++, 0);
    EXPECT_EQ(delay, 1);
    delay += 5000;
    EXPECT_EQ(delay, 1000);
    EXPECT_EQ(++delay, 1000);
    EXPECT_EQ(--delay, 999);
    delay *= -1;
    EXPECT_EQ(delay, 0);
    delay = least;
    EXPECT_EQ(delay, 0);
    delay = most;
    EXPECT_EQ(delay, 1000);
}

TEST(Clamped, ComparesWithPlainNumbersAsTheyStand) {
    const Delay delay = 1000;
    EXPECT_NE(delay, 2500) << "2500 is not clamped before";
    EXPECT_EQ(delay, Delay(2500));
    EXPECT_LT(delay, 1001);
}

TEST(Clamped, StaysWithinItsBounds) {
    Tests::forAll([](std::int64_t start, const std::vector<std::int16_t>& steps) {
        using Small = Clamped<-7, 9>;
        Small value = start;
        std::int64_t plain = std::clamp<std::int64_t>(start, -7, 9);
        for (const std::int64_t step : steps) {
            if (step % 3 == 0) {
                value *= step;
                plain *= step;
            } else {
                value += step;
                plain += step;
            }
            plain = std::clamp<std::int64_t>(plain, -7, 9);
            RC_ASSERT(value == plain);
        }
    });
}

TEST(ClampedDeathTest, StopsWhereAChangeOverflows) {
    Delay delay = 2;
    EXPECT_DEATH(delay += most, "a sum fits 64 bits");
    EXPECT_DEATH(delay *= least, "a product fits 64 bits");
    Clamped<least, most> wide = least;
    EXPECT_DEATH(wide -= 1, "a difference fits 64 bits");
    EXPECT_DEATH(--wide, "a difference fits 64 bits");
}

}  // namespace
}  // namespace PrompterCore
