#include <concepts>
#include <cstdint>
#include <utility>

#include "PrompterCore/support/IndexRange.h"
#include "tests/support/Extremes.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

template <class A, class B>
concept Comparable = requires(const A& a, const B& b) {
    a == b;
};
template <class R>
concept MadeFromBraces = requires(void (*take)(R)) {
    take({2, 5});
};
using Pair = std::pair<std::int64_t, std::int64_t>;

static_assert(std::copyable<TokenRange> && std::equality_comparable<TokenRange>);
static_assert(MadeFromBraces<Pair> && !MadeFromBraces<TokenRange>, "braces cannot drop the unit");
static_assert(!Comparable<TokenRange, WordRange> && !Comparable<CharacterRange, LineRange>);
static_assert(!std::convertible_to<TokenRange, WordRange>);
static_assert(!std::constructible_from<TokenRange, WordRange>);
static_assert(!std::constructible_from<TokenRange, std::int64_t>);
static_assert(sizeof(TokenRange) == 16);

using Tests::least;
using Tests::most;

TEST(IndexRange, HoldsFromLowerUpToNotIncludingUpper) {
    constexpr TokenRange range(2, 5);
    EXPECT_EQ(range.lower(), 2);
    EXPECT_EQ(range.upper(), 5);
    EXPECT_EQ(range.count(), 3);
    EXPECT_FALSE(range.isEmpty());
    EXPECT_FALSE(range.contains(1));
    EXPECT_TRUE(range.contains(2));
    EXPECT_TRUE(range.contains(4));
    EXPECT_FALSE(range.contains(5));
}

TEST(IndexRange, EmptyRangesHoldNothingButAreSomewhere) {
    EXPECT_EQ(TokenRange(), TokenRange(0, 0));
    EXPECT_EQ(TokenRange::emptyAt(7), TokenRange(7, 7));
    EXPECT_NE(TokenRange::emptyAt(7), TokenRange::emptyAt(8));
    EXPECT_TRUE(TokenRange::emptyAt(7).isEmpty());
    EXPECT_FALSE(TokenRange::emptyAt(7).contains(7));
    EXPECT_EQ(TokenRange::emptyAt(7).count(), 0);
}

TEST(IndexRange, MayLieAnywhereIn64Bits) {
    EXPECT_EQ(TokenRange(-3, -1).count(), 2);
    EXPECT_EQ(TokenRange(0, most).count(), most);
    EXPECT_TRUE(TokenRange(least, most).contains(0));
}

TEST(IndexRangeDeathTest, RefusesALowerBoundAboveTheUpper) {
    EXPECT_DEATH(TokenRange(5, 2), "lower bound is not above its upper bound");
}

TEST(IndexRangeDeathTest, RefusesToCountPast64Bits) {
    EXPECT_DEATH(static_cast<void>(TokenRange(-1, most).count()), "a difference fits 64 bits");
}

}  // namespace
}  // namespace PrompterCore
