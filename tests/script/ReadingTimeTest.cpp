#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "PrompterCore/script/ReadingTime.h"

namespace PrompterCore {

TEST(ReadingTime, PaceIs150WordsAMinute) { EXPECT_EQ(ReadingTime::wordsPerMinute, 150); }

TEST(ReadingTime, SummaryRoundsToWholeMinutesHalvesUp) {
    struct Case {
        std::int64_t words;
        const char* summary;
    };
    const Case cases[] = {
        {std::numeric_limits<std::int64_t>::min(), "Empty"},
        {-5, "Empty"},
        {0, "Empty"},
        {1, "1 word \u00B7 under a minute aloud"},
        {2, "2 words \u00B7 under a minute aloud"},
        {149, "149 words \u00B7 under a minute aloud"},
        {150, "150 words \u00B7 about a minute aloud"},
        {224, "224 words \u00B7 about a minute aloud"},
        {225, "225 words \u00B7 about 2 minutes aloud"},
        {374, "374 words \u00B7 about 2 minutes aloud"},
        {375, "375 words \u00B7 about 3 minutes aloud"},
        {1'000'000, "1000000 words \u00B7 about 6667 minutes aloud"},
        {std::numeric_limits<std::int64_t>::max(),
         "9223372036854775807 words \u00B7 about 61489146912365172 minutes aloud"},
    };
    for (const auto& [words, summary] : cases)
        EXPECT_EQ(ReadingTime::summary(words), summary) << words;
}

}  // namespace PrompterCore
