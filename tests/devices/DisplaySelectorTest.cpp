#include <concepts>
#include <functional>
#include <optional>
#include <unordered_set>
#include <vector>

#include "PrompterCore/devices/DisplaySelector.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Displays = std::vector<DisplayTarget>;
using DisplaySelector::Hardware;
using DisplaySelector::isLikelyPrompter;

static_assert(std::copyable<DisplayTarget> && std::equality_comparable<DisplayTarget>);
static_assert(std::copyable<Hardware> && std::equality_comparable<Hardware>);

std::optional<std::uint32_t> preferredId(const Displays& displays,
                                         std::optional<std::uint32_t> remembered = std::nullopt) {
    const auto display = DisplaySelector::preferred(displays, remembered);
    return display ? std::optional(display->id) : std::nullopt;
}

const DisplayTarget builtin{.id = 1, .name = "Built-in", .isBuiltin = true};
const DisplayTarget office{.id = 2, .name = "Office"};
const DisplayTarget glass{.id = 3, .name = "My Prompter"};

TEST(DisplaySelector, DoesWhatItsManualShows) {
    const Displays screens{builtin, office, glass};
    EXPECT_EQ(preferredId(screens), 3);
    EXPECT_EQ(preferredId(screens, 1), 1);
}

TEST(DisplaySelector, RecognisesAPrompterByItsName) {
    struct Case {
        const char* what;
        Text name;
        bool isPrompter;
    };
    const Case cases[] = {
        {"as it is", "Prompter Display", true},
        {"in capitals", "PROMPTER DISPLAY", true},
        {"mixed", "teleProMpter", true},
        {"the second keyword", "Elgato 9", true},
        {"the second keyword in capitals", "an ELGATO screen", true},
        {"the third keyword", "Prom. 2", true},
        {"the third needs its full stop", "Prom 2", false},
        {"at the very end", "my prom.", true},
        {"one letter short", "prompte", false},
        {"letters apart", "p rompter", false},
        {"another letter, decomposed", "elgato\u0301", false},
        {"another letter, composed", "elgat\u00F3", false},
        {"full-width letters are others", "\uFF30rompter", false},
        {"no name", "", false},
    };
    for (const auto& [what, name, isPrompter] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(isLikelyPrompter({.id = 2, .name = name}), isPrompter);
        EXPECT_FALSE(isLikelyPrompter({.id = 2, .name = name, .isBuiltin = true}));
    }
}

TEST(DisplaySelector, RecognisesAPrompterByItsHardware) {
    struct Case {
        std::uint32_t vendor, model;
        bool isPrompter;
    };
    for (const auto& [vendor, model, isPrompter] :
         {Case{9353, 13073, true}, Case{0x2489, 0x3311, true}, Case{9353, 13072, false},
          Case{9352, 13073, false}, Case{13073, 9353, false}, Case{0, 0, false}}) {
        SCOPED_TRACE(vendor);
        EXPECT_EQ(isLikelyPrompter({.id = 2, .name = "x", .vendorID = vendor, .modelID = model}),
                  isPrompter);
        EXPECT_FALSE(isLikelyPrompter(
            {.id = 2, .name = "x", .isBuiltin = true, .vendorID = vendor, .modelID = model}));
    }
}

TEST(DisplaySelector, PrefersTheChosenThenAPrompterThenAnExternalScreen) {
    const DisplayTarget other{.id = 4, .name = "Other"};
    const DisplayTarget builtinPrompter{.id = 5, .name = "Prompter", .isBuiltin = true};
    struct Case {
        const char* what;
        Displays displays;
        std::optional<std::uint32_t> remembered, id;
    };
    const Case cases[] = {
        {"the second external screen is the prompter", {builtin, office, glass}, {}, 3},
        {"none is: the first external one", {builtin, office, other}, {}, 2},
        {"only the built-in one", {builtin}, {}, {}},
        {"only the built-in one, named as a prompter", {builtinPrompter}, {}, {}},
        {"the built-in one was chosen", {builtin, office, glass}, 1, 1},
        {"the chosen one over the prompter", {office, glass}, 2, 2},
        {"the chosen one is gone", {builtin, office, glass}, 9, 3},
        {"the chosen one is gone, only the built-in one left", {builtin}, 9, {}},
        {"two prompters: the first", {{.id = 7, .name = "prom."}, glass}, {}, 7},
        {"two of one id: the first", {{.id = 3, .name = "first"}, glass}, 3, 3},
        {"no screens", {}, 1, {}},
    };
    for (const auto& [what, displays, remembered, id] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(preferredId(displays, remembered), id);
    }
}

TEST(DisplaySelector, GivesTheWholeRecord) {
    EXPECT_EQ(DisplaySelector::preferred(Displays{builtin, glass}, std::nullopt), glass);
}

TEST(DisplaySelector, HardwareIsHashable) {
    const std::unordered_set<Hardware> models{{9353, 13073}, {13073, 9353}, {9353, 13073}};
    EXPECT_EQ(models.size(), 2U);
    EXPECT_TRUE(models.contains({.vendor = 9353, .model = 13073}));
    EXPECT_NE(std::hash<Hardware>()({1, 2}), std::hash<Hardware>()({2, 1}));
}

TEST(DisplayTarget, ComparesAllFields) {
    const DisplayTarget screen{1, "A", 2, 3, true, 4, 5};
    EXPECT_EQ(screen, (DisplayTarget{1, "A", 2, 3, true, 4, 5}));
    for (const DisplayTarget& other :
         {DisplayTarget{9, "A", 2, 3, true, 4, 5}, DisplayTarget{1, "B", 2, 3, true, 4, 5},
          DisplayTarget{1, "A", 9, 3, true, 4, 5}, DisplayTarget{1, "A", 2, 9, true, 4, 5},
          DisplayTarget{1, "A", 2, 3, false, 4, 5}, DisplayTarget{1, "A", 2, 3, true, 9, 5},
          DisplayTarget{1, "A", 2, 3, true, 4, 9}})
        EXPECT_NE(screen, other);
}

}  // namespace
}  // namespace PrompterCore
