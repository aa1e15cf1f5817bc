// `varnelle demo`, run from outside, without a terminal.

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "tests/varnelle/RunCommand.h"

namespace Varnelle::Tests {
namespace {

TEST(DemoCommand, FollowsTheSampleToItsEndAndSaysWhatItMeasured) {
    const CommandResult result = runVarnelle({"demo"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_NE(result.out.find("  token  164  "), std::string::npos);
    const std::size_t summary = result.out.find("Read to token 165 of 165 in 62.6 seconds");
    ASSERT_NE(summary, std::string::npos) << result.out;
    int positions = 0;
    double delay = 0, distance = 0, inPlace = 0;
    ASSERT_EQ(
        std::sscanf(result.out.c_str() + summary,
                    "Read to token 165 of 165 in 62.6 seconds of speech.\n"
                    "%d positions were aligned, each %lf s after its word had ended (median)\n"
                    "what was shown was %lf words from what was being spoken (median)\n"
                    "the eye line was within one line of the word being spoken %lf %% of the "
                    "time\n",
                    &positions, &delay, &distance, &inPlace),
        4)
        << result.out.substr(summary);
    EXPECT_GT(positions, 150);
    EXPECT_LT(delay, 0.2);
    EXPECT_LT(distance, 2);
    EXPECT_GT(inPlace, 90);
    EXPECT_LE(inPlace, 100);
}

}  // namespace
}  // namespace Varnelle::Tests
