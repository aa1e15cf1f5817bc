#include <string>

#include "PrompterCore/colour/EyeLineColour.h"
#include "tests/colour/Colours.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::black;
using Tests::darkBlue;
using Tests::paleYellow;
using Tests::white;

RGBA grey(int byte) { return {byte / 255.0, byte / 255.0, byte / 255.0, 1}; }

TEST(EyeLineColour, KeepsAColourThatCanBeSeen) {
    EXPECT_EQ(EyeLineColour::automatic(black, white), white);
    EXPECT_EQ(EyeLineColour::automatic(white, black), black);
    EXPECT_EQ(EyeLineColour::automatic(black, RGBA(1, 1, 1, 0.1)), RGBA(1, 1, 1, 0.1))
        << "alpha stays, and does not count";
    EXPECT_EQ(EyeLineColour::automatic(white, grey(0x94)), grey(0x94)) << "3.03 to 1";
}

TEST(EyeLineColour, ReplacesOneThatCannot) {
    EXPECT_EQ(EyeLineColour::automatic(white, paleYellow), black);
    EXPECT_EQ(EyeLineColour::automatic(black, darkBlue), white);
    EXPECT_EQ(EyeLineColour::automatic(white, RGBA(1, 1, 0.6, 0.2)), black) << "opaque";
    EXPECT_EQ(EyeLineColour::automatic(white, grey(0x95)), black) << "2.995 to 1";
    EXPECT_EQ(EyeLineColour::automatic(darkBlue, darkBlue), white);
    EXPECT_EQ(EyeLineColour::automatic(grey(0x75), grey(0x75)), white);
    EXPECT_EQ(EyeLineColour::automatic(grey(0x76), grey(0x76)), black);
}

TEST(EyeLineColour, ABackgroundThatIsNoNumberGivesBlack) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(EyeLineColour::automatic(RGBA(notANumber, 0, 0, 1), white), black);
}

TEST(EyeLineColour, CanAlwaysBeSeen) {
    for (int background = 0; background <= 255; background++) {
        for (int current = 0; current <= 255; current++) {
            const RGBA taken = EyeLineColour::automatic(grey(background), grey(current));
            ASSERT_GE(taken.contrastWith(grey(background)), 3.0) << background << ' ' << current;
            if (grey(current).contrastWith(grey(background)) >= 3.0)
                ASSERT_EQ(taken, grey(current)) << background;
            else
                ASSERT_TRUE(taken == white || taken == black) << background << ' ' << current;
        }
    }
}

}  // namespace
}  // namespace PrompterCore
