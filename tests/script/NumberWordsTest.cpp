#include <cstdint>
#include <limits>
#include <string_view>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "PrompterCore/script/NumberWords.h"
#include "tests/reference/PlainNumbers.h"
#include "tests/script/Built.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Properties.h"

namespace PrompterCore {

namespace {

using Plain::split;
using Tests::bytes;

}  // namespace

TEST(NumberWords, ExamplesAreAsTheHeaderShows) {
    EXPECT_EQ(bytes(numberWords(105)), split("one hundred five"));
    EXPECT_EQ(bytes(yearWords(1905)), split("nineteen oh five"));
}

TEST(NumberWords, EveryScaleHasItsWord) {
    struct Case {
        std::int64_t number;
        const char* words;
    };
    const Case cases[] = {
        {0, "zero"},
        {1, "one"},
        {10, "ten"},
        {19, "nineteen"},
        {20, "twenty"},
        {42, "forty two"},
        {99, "ninety nine"},
        {100, "one hundred"},
        {105, "one hundred five"},
        {110, "one hundred ten"},
        {999, "nine hundred ninety nine"},
        {1'000, "one thousand"},
        {1'001, "one thousand one"},
        {1'100, "one thousand one hundred"},
        {20'000, "twenty thousand"},
        {999'999, "nine hundred ninety nine thousand nine hundred ninety nine"},
        {1'000'000, "one million"},
        {1'000'001, "one million one"},
        {12'000'500, "twelve million five hundred"},
        {999'999'999,
         "nine hundred ninety nine million nine hundred ninety nine thousand "
         "nine hundred ninety nine"},
        {1'000'000'000, "one billion"},
        {2'000'000'017, "two billion seventeen"},
        {1'000'000'000'000, "one thousand billion"},
        {5'000'000'000'000, "five thousand billion"},
        {1'000'000'000'000'000'000, "one billion billion"},
        {std::numeric_limits<std::int64_t>::max(),
         "nine billion two hundred twenty three million three hundred seventy two thousand "
         "thirty six billion eight hundred fifty four million seven hundred seventy five thousand "
         "eight hundred seven"},
        {-1, "minus one"},
        {-42, "minus forty two"},
        {-1'000'000'000, "minus one billion"},
        {-std::numeric_limits<std::int64_t>::max(),
         "minus nine billion two hundred twenty three million three hundred seventy two thousand "
         "thirty six billion eight hundred fifty four million seven hundred seventy five thousand "
         "eight hundred seven"},
    };
    for (const auto& [number, words] : cases)
        EXPECT_EQ(bytes(numberWords(number)), split(words)) << number;
}

TEST(NumberWords, AreTakenWithoutAllocating) {
    std::string_view last;
    const auto keep = [&last](std::string_view word) { last = word; };
    EXPECT_EQ(Tests::allocationsDuring([&] {
                  takeNumberWords(std::numeric_limits<std::int64_t>::max(), WordTaker(keep));
              }),
              0);
    EXPECT_EQ(last, "seven");
    EXPECT_EQ(Tests::allocationsDuring([&] { takeYearWords(1905, WordTaker(keep)); }), 0);
    EXPECT_EQ(last, "five");
}

TEST(NumberWords, TheOneNumberWithoutAPositiveStopsTheProgram) {
    EXPECT_DEATH((void)numberWords(std::numeric_limits<std::int64_t>::min()), "precondition");
    EXPECT_DEATH((void)yearWords(std::numeric_limits<std::int64_t>::min()), "precondition");
}

TEST(NumberWords, EveryNumberUpTo9999ReadsAsThePlainReading) {
    for (std::int64_t number = 0; number <= 9'999; ++number)
        EXPECT_EQ(bytes(numberWords(number)), Plain::numberWords(number)) << number;
}

TEST(NumberWords, AnyNumberReadsAsThePlainReading) {
    Tests::forAll(
        [](std::int64_t number) {
            if (number == std::numeric_limits<std::int64_t>::min()) return;
            for (std::int64_t part = number; part != 0; part /= 10)
                RC_ASSERT(bytes(numberWords(part)) == Plain::numberWords(part));
        },
        500);
}

TEST(YearWords, TwoPairsOfDigitsFrom1100To9999) {
    struct Case {
        std::int64_t number;
        const char* words;
    };
    const Case cases[] = {
        {0, "zero"},
        {42, "forty two"},
        {999, "nine hundred ninety nine"},
        {1000, "one thousand"},
        {1066, "one thousand sixty six"},
        {1099, "one thousand ninety nine"},
        {1100, "eleven hundred"},
        {1101, "eleven oh one"},
        {1492, "fourteen ninety two"},
        {1500, "fifteen hundred"},
        {1900, "nineteen hundred"},
        {1905, "nineteen oh five"},
        {1910, "nineteen ten"},
        {1999, "nineteen ninety nine"},
        {2000, "twenty hundred"},
        {2009, "twenty oh nine"},
        {2010, "twenty ten"},
        {2024, "twenty twenty four"},
        {3000, "thirty hundred"},
        {9999, "ninety nine ninety nine"},
        {10000, "ten thousand"},
        {-1984, "minus one thousand nine hundred eighty four"},
    };
    for (const auto& [number, words] : cases)
        EXPECT_EQ(bytes(yearWords(number)), split(words)) << number;
}

TEST(YearWords, EveryYearFrom0To9999ReadsAsThePlainReading) {
    for (std::int64_t year = 0; year <= 9'999; ++year)
        EXPECT_EQ(bytes(yearWords(year)), Plain::yearWords(year)) << year;
}

}  // namespace PrompterCore
