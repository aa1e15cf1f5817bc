#include <cmath>
#include <string>
#include <vector>

#include "PrompterCore/takes/ChapterTimestamps.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Marks = std::vector<ChapterMark>;

using Tests::infinity;

// The line of a mark that is not the first.
std::string lineOf(double seconds) {
    return ChapterTimestamps::youTube(Marks{{"", 0}, {"x", seconds}}).substr(6);
}

TEST(ChapterTimestamps, WritesOneLineAMark) {
    EXPECT_EQ(ChapterTimestamps::youTube({}), "");
    EXPECT_EQ(ChapterTimestamps::youTube(Marks{{"Intro", 3.2}}), "0:00 Intro");
    EXPECT_EQ(ChapterTimestamps::youTube(Marks{{"Intro", 3.2}, {"Main part", 65.9}}),
              "0:00 Intro\n1:05 Main part");
    EXPECT_EQ(ChapterTimestamps::youTube(Marks{{"", 9}, {"\u00C4 \U0001F600", 9}, {"a", 2}}),
              "0:00 \n0:09 \u00C4 \U0001F600\n0:02 a")
        << "in the given order, titles as they are";
}

TEST(ChapterTimestamps, WritesTimesAsTheSitesReadThem) {
    struct Case {
        double seconds;
        const char* line;
    };
    const Case cases[] = {
        {0, "0:00 x"},           {0.999, "0:00 x"},
        {9, "0:09 x"},           {59.99, "0:59 x"},
        {60, "1:00 x"},          {245, "4:05 x"},
        {599, "9:59 x"},         {600, "10:00 x"},
        {3599, "59:59 x"},       {3599.9, "59:59 x"},
        {3600, "1:00:00 x"},     {3723, "1:02:03 x"},
        {3725, "1:02:05 x"},     {43209, "12:00:09 x"},
        {360000, "100:00:00 x"}, {0x1p62, "1281023894007607:45:04 x"},
    };
    for (const auto& [seconds, line] : cases) {
        SCOPED_TRACE(seconds);
        EXPECT_EQ(lineOf(seconds), line);
    }
}

TEST(ChapterTimestamps, TheFirstLineStartsTheVideoWhateverItsTime) {
    for (const double seconds : {-5.0, 7200.0, 1e300, infinity, std::nan("")}) {
        SCOPED_TRACE(seconds);
        EXPECT_EQ(ChapterTimestamps::youTube(Marks{{"a", seconds}}), "0:00 a");
    }
}

// Every second of a day, read back by its parts.
TEST(ChapterTimestamps, EverySecondOfADayReadsBack) {
    for (int second = 0; second < 24 * 3600; ++second) {
        const std::string line = lineOf(second + 0.5);
        int read = 0;
        int part = 0;
        std::size_t digits = 0;
        for (const char c : line) {
            if (c == ':' || c == ' ') {
                read = read * 60 + part;
                part = 0;
                ASSERT_TRUE(digits == 2 || line.find(c) == digits) << line;
                digits = 0;
                if (c == ' ') break;
            } else {
                part = part * 10 + (c - '0');
                ++digits;
            }
        }
        ASSERT_EQ(read, second) << line;
        ASSERT_EQ(std::count(line.begin(), line.end(), ':'), second < 3600 ? 1 : 2) << line;
        ASSERT_FALSE(line[0] == '0' && second >= 60) << line;
    }
}

TEST(ChapterTimestampsDeathTest, ATimeThatCannotBeWrittenStopsTheProgram) {
    const char* const rule = "a whole number fits 64 bits";
    EXPECT_DEATH(lineOf(infinity), rule);
    EXPECT_DEATH(lineOf(-infinity), rule);
    EXPECT_DEATH(lineOf(std::nan("")), rule);
    EXPECT_DEATH(lineOf(0x1p63), rule);
}

}  // namespace
}  // namespace PrompterCore
