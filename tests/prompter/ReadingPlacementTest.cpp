#include <optional>

#include "PrompterCore/prompter/ReadingPlacement.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

TEST(ReadingPlacement, IsInAWindowUnlessAnExternalScreenShowsIt) {
    EXPECT_TRUE(ReadingPlacement::inWindow(std::nullopt));
    EXPECT_TRUE(
        ReadingPlacement::inWindow(DisplayTarget{.id = 1, .name = "Built-in", .isBuiltin = true}));
    EXPECT_FALSE(ReadingPlacement::inWindow(DisplayTarget{.id = 2, .name = "Glass"}));
}

TEST(ReadingPlacement, OpensWhereTheWindowIsNotYet) {
    const DisplayTarget glass{.id = 2, .name = "Glass"};
    constexpr bool notShowing = false;
    constexpr bool showing = true;
    EXPECT_TRUE(ReadingPlacement::opensPrompterOn(glass, std::nullopt, notShowing));
    EXPECT_TRUE(ReadingPlacement::opensPrompterOn(glass, 1, notShowing));
    EXPECT_FALSE(ReadingPlacement::opensPrompterOn(glass, 2, notShowing));
    EXPECT_FALSE(ReadingPlacement::opensPrompterOn(glass, std::nullopt, showing));
    EXPECT_FALSE(ReadingPlacement::opensPrompterOn(glass, 1, showing));
    EXPECT_FALSE(ReadingPlacement::opensPrompterOn(std::nullopt, std::nullopt, notShowing));
    EXPECT_FALSE(ReadingPlacement::opensPrompterOn(std::nullopt, 1, notShowing));
}

}  // namespace
}  // namespace PrompterCore
