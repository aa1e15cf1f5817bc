#include <concepts>
#include <optional>
#include <vector>

#include "PrompterCore/devices/ControllerPlacement.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ControllerPlacement> && std::equality_comparable<ControllerPlacement>);

TEST(ControllerPlacement, AvoidsThePrompterWhereItCan) {
    using Screens = std::vector<std::uint32_t>;
    struct Case {
        const char* what;
        std::uint32_t prompter;
        std::optional<std::uint32_t> working;
        Screens screens;
        std::uint32_t screen;
        bool shares;
    };
    const Case cases[] = {
        {"where the operator works", 2, 1, {1, 2}, 1, false},
        {"where the operator works, over an earlier one", 2, 3, {1, 2, 3}, 3, false},
        {"the operator works on the prompter's", 2, 2, {1, 2}, 1, false},
        {"working on one that is not there", 2, 7, {2, 3, 1}, 3, false},
        {"nowhere", 2, std::nullopt, {2, 3, 1}, 3, false},
        {"only the prompter's", 2, std::nullopt, {2}, 2, true},
        {"only the prompter's, working on it", 2, 2, {2}, 2, true},
        {"only the prompter's, working on one that is not there", 2, 1, {2}, 2, true},
        {"no screens", 2, 1, {}, 2, true},
        {"the prompter's is not there", 2, std::nullopt, {5}, 5, false},
    };
    for (const auto& [what, prompter, working, screens, screen, shares] : cases) {
        SCOPED_TRACE(what);
        const ControllerPlacement placement(prompter, working, screens);
        EXPECT_EQ(placement.screen, screen);
        EXPECT_EQ(placement.sharesPrompterScreen, shares);
    }
}

TEST(ControllerPlacement, ComparesBothFields) {
    const std::vector<std::uint32_t> both{1, 2};
    const std::vector<std::uint32_t> one{1};
    EXPECT_EQ(ControllerPlacement(2, 1, both), ControllerPlacement(3, 1, both));
    EXPECT_NE(ControllerPlacement(2, 1, both), ControllerPlacement(1, 2, both));
    EXPECT_NE(ControllerPlacement(2, 1, both), ControllerPlacement(1, 1, one));
}

}  // namespace
}  // namespace PrompterCore
