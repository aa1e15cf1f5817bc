#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "PrompterCore/prompter/PrompterGeometry.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using PrompterGeometry::bandOffset;
using PrompterGeometry::contentOffset;
using PrompterGeometry::lineTop;

using Tests::least;
using Tests::most;

TEST(PrompterGeometry, DoesWhatItsManualShows) {
    EXPECT_EQ(contentOffset(10.5, 8, 40, 300), 200);
    EXPECT_EQ(lineTop(10, 10.5, 8, 40, 300), 280);
    EXPECT_EQ(bandOffset(10, 10.5, 8, 40, 300), 280);
    EXPECT_EQ(bandOffset(std::nullopt, 10.5, 8, 40, 300), 300);
}

TEST(PrompterGeometry, LineBeingReadStandsAtTheEyeLine) {
    Tests::forAll([](std::int16_t line, std::int16_t firstLine, std::uint8_t height, double eye) {
        RC_ASSERT(contentOffset(line, line, height, eye) == eye);
        // Whole lines of whole points: exact.
        RC_ASSERT(lineTop(line, line, firstLine, height, 250) == 250);
    });
}

TEST(PrompterGeometry, LinesStandOneHeightApart) {
    Tests::forAll(
        [](std::int16_t line, std::int16_t firstLine, std::uint8_t height, std::int16_t quarters) {
            const double index = quarters / 4.0;
            RC_ASSERT(lineTop(line + 1, index, firstLine, height, 300) ==
                      lineTop(line, index, firstLine, height, 300) + height);
            RC_ASSERT(lineTop(firstLine, index, firstLine, height, 300) ==
                      contentOffset(index, firstLine, height, 300));
        });
}

TEST(PrompterGeometry, LineIsCountedFromTheTopOfTheWindow) {
    // In doubles that is not the same as counting from the line being read.
    EXPECT_EQ(lineTop(7, 0.2, 3, 40.1, 300), 572.68);
    EXPECT_NE(300 + 40.1 * (7 - 0.2), 572.68);
}

TEST(PrompterGeometry, EveryNumberHasAnAnswer) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(contentOffset(infinity, 0, 40, 300), -infinity);
    EXPECT_TRUE(std::isnan(contentOffset(infinity, 0, 0, 300)));
    EXPECT_TRUE(std::isnan(contentOffset(std::nan(""), 0, 40, 300)));
    EXPECT_EQ(lineTop(most, 0, least, 1, 0), 0x1p63);
    EXPECT_EQ(lineTop(least, 0, most, 1, 0), -0x1p63);
    EXPECT_EQ(bandOffset(least, 0, least, 1, 0), -0x1p63);
    EXPECT_EQ(lineTop(5, 3, 0, -10, 300), 280) << "a negative height turns the column around";
}

TEST(PrompterGeometry, NeverAllocates) {
    EXPECT_EQ(Tests::allocationsDuring([] {
                  static_cast<void>(contentOffset(10.5, 8, 40, 300));
                  static_cast<void>(lineTop(10, 10.5, 8, 40, 300));
                  static_cast<void>(bandOffset(10, 10.5, 8, 40, 300));
              }),
              0);
    static_assert(noexcept(contentOffset(0, 0, 0, 0))&& noexcept(lineTop(0, 0, 0, 0, 0)));
    static_assert(noexcept(bandOffset(0, 0, 0, 0, 0)));
}

}  // namespace
}  // namespace PrompterCore
