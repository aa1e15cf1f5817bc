#include <gtest/gtest.h>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {
namespace {

int half(int value) {
    require(value % 2 == 0, "the value is even");
    return value / 2;
}

constexpr bool worksInConstantExpressions() {
    require(true, "holds");
    return true;
}
static_assert(worksInConstantExpressions());

TEST(Require, LetsThroughWhatHolds) { EXPECT_EQ(half(4), 2); }

TEST(RequireDeathTest, PrintsThePlaceOfTheCallerAndTheRule) {
    EXPECT_DEATH(half(3), "RequireTest\\.cpp:[0-9]+: precondition broken: the value is even");
}

}  // namespace
}  // namespace PrompterCore
