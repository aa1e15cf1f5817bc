#include <concepts>
#include <string>

#include "PrompterCore/colour/ColourPresetLibrary.h"
#include "tests/colour/Colours.h"
#include "tests/support/Generators.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using namespace ColourPresetLibrary;  // NOLINT
using Tests::black;
using Tests::orange;
using Tests::white;
using Presets = std::vector<ColourPreset>;

static_assert(std::copyable<ColourPreset> && std::equality_comparable<ColourPreset>);

UUID id(int n) {
    UUID::Bytes bytes{};
    bytes[15] = static_cast<std::uint8_t>(n);
    return UUID(bytes);
}

Presets named(const std::vector<Text>& names) {
    Presets presets;
    for (const Text& name : names)
        presets.push_back({.id = id(static_cast<int>(presets.size()) + 1),
                           .name = name,
                           .text = white,
                           .highlight = orange});
    return presets;
}

std::vector<std::string> names(const Presets& presets) {
    std::vector<std::string> result;
    for (const ColourPreset& preset : presets)
        result.push_back(preset.name.utf8());
    return result;
}

Presets withOneMore(const Text& name, const Presets& presets) {
    return adding(name, white, orange, std::nullopt, presets, id(99));
}

// The name that an empty list keeps.
std::string kept(const Text& name) {
    const Presets presets = withOneMore(name, {});
    return presets.empty() ? "nothing is added" : presets.front().name.utf8();
}

TEST(ColourPresetLibrary, AddsAtTheEnd) {
    const Presets before = named({"Night"});
    const Presets after = adding("Studio", black, orange, white, before, id(7));
    ASSERT_EQ(after.size(), 2U);
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(
        after[1],
        (ColourPreset{
            .id = id(7), .name = "Studio", .text = black, .highlight = orange, .marker = white}));
    EXPECT_EQ(names(before), std::vector<std::string>{"Night"}) << "the argument is what it was";
}

TEST(ColourPresetLibrary, NamesLoseTheirWhiteSpace) {
    struct Case {
        const char* what;
        Text name;
        std::string kept;
    };
    const Case cases[] = {
        {"blanks, a line break", "  Studio\n  Blue  ", "Studio Blue"},
        {"CR LF and tabs", "\tStudio\r\n\tBlue\r\n", "Studio Blue"},
        {"other white space", "\u3000Studio\u00A0\u2028Blue\u0085", "Studio Blue"},
        {"a blank with a mark on it", "Studio \u0301Blue", "Studio Blue"},
        {"only blanks", "   ", "nothing is added"},
        {"only white space", "\n\u2003\r\n", "nothing is added"},
        {"nothing", "", "nothing is added"},
        {"what is invisible but no white space", "\u200B", "\u200B"},
        {"decomposed stays decomposed", "Cafe\u0301", "Cafe\u0301"},
        {"right to left", " \u05E9\u05DC  \u05D5\u05DD ", "\u05E9\u05DC \u05D5\u05DD"},
    };
    for (const auto& [what, name, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(kept(name), expected);
    }
}

std::string times(int count, const std::string& piece) {
    std::string result;
    for (int i = 0; i < count; i++)
        result += piece;
    return result;
}

TEST(ColourPresetLibrary, NamesAreCutAfter40Characters) {
    EXPECT_EQ(nameLimit, 40);
    EXPECT_EQ(kept(times(40, "x")), times(40, "x"));
    EXPECT_EQ(kept(times(45, "x")), times(40, "x"));
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    EXPECT_EQ(kept(times(41, family)), times(40, family)) << "one character each";
    EXPECT_EQ(kept(times(41, "e\u0301")), times(40, "e\u0301")) << "with its mark";
    EXPECT_EQ(kept(times(41, "\U0001F1E9\U0001F1EA")), times(40, "\U0001F1E9\U0001F1EA"));
    EXPECT_EQ(kept(times(39, "x") + " y"), times(39, "x") + " ") << "the blank at the cut stays";
    EXPECT_EQ(kept(times(39, "x") + "   y"), times(39, "x") + " ") << "cut when it is one";
    EXPECT_EQ(kept("   " + times(40, "x")), times(40, "x")) << "trimmed before it is cut";
    // A mark that a line break kept apart goes onto the blank in its place: one character.
    EXPECT_EQ(kept(times(39, "x") + "\n\u0301y"), times(39, "x") + " \u0301");
}

TEST(ColourPresetLibrary, NamesInUseGetANumber) {
    struct Case {
        const char* what;
        std::vector<Text> inUse;
        Text wanted;
        std::string name;
    };
    const std::string forty = times(40, "x");
    const Case cases[] = {
        {"free", {}, "Studio", "Studio"},
        {"once", {"Studio"}, "Studio", "Studio 2"},
        {"twice", {"Studio", "Studio 2"}, "Studio", "Studio 3"},
        {"a gap", {"Studio", "Studio 3"}, "Studio", "Studio 2"},
        {"the number alone", {"Studio 2"}, "Studio", "Studio"},
        {"a number counts from its own name", {"Studio 2"}, "Studio 2", "Studio 2 2"},
        {"case counts", {"studio"}, "Studio", "Studio"},
        {"accents count", {"Cafe"}, "Caf\u00E9", "Caf\u00E9"},
        {"composed or not does not", {"Caf\u00E9"}, "Cafe\u0301", "Cafe\u0301 2"},
        {"cleaned first", {"Studio Blue"}, " Studio\nBlue ", "Studio Blue 2"},
        {"the number is beyond the limit", {forty}, forty + "yyy", forty + " 2"},
        {"what stands there is not cleaned", {" Studio"}, "Studio", "Studio"},
        {"ten", {"a", "a 2", "a 3", "a 4", "a 5", "a 6", "a 7", "a 8", "a 9"}, "a", "a 10"},
    };
    for (const auto& [what, inUse, wanted, name] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(withOneMore(wanted, named(inUse)).back().name.utf8(), name);
    }
}

TEST(ColourPresetLibrary, AnUnusableNameAddsNothing) {
    const Presets presets = named({"Night"});
    EXPECT_EQ(withOneMore(" \n ", presets), presets);
}

TEST(ColourPresetLibrary, RenamesInPlace) {
    const Presets presets = named({"Night", "Studio", "Day"});
    EXPECT_EQ(names(renaming(id(2), " Blue  room ", presets)),
              (std::vector<std::string>{"Night", "Blue room", "Day"}));
    EXPECT_EQ(names(renaming(id(2), "Night", presets)),
              (std::vector<std::string>{"Night", "Night 2", "Day"}));
    EXPECT_EQ(renaming(id(2), "Studio", presets), presets) << "its own name is free to it";
    EXPECT_EQ(renaming(id(9), "Blue", presets), presets) << "an unknown id";
    EXPECT_EQ(renaming(id(2), " \t", presets), presets) << "no name";
    EXPECT_EQ(renaming(id(2), "Blue", {}), Presets());
    const ColourPreset renamed = renaming(id(2), "Blue", presets)[1];
    EXPECT_EQ(renamed.id, id(2));
    EXPECT_EQ(renamed.text, white);
    EXPECT_EQ(renamed.highlight, orange);
    EXPECT_EQ(renamed.marker, std::nullopt);
}

TEST(ColourPresetLibrary, RenamesTheFirstOfEqualIdsOnly) {
    Presets presets = named({"Night", "Studio"});
    presets[1].id = id(1);
    EXPECT_EQ(names(renaming(id(1), "Blue", presets)),
              (std::vector<std::string>{"Blue", "Studio"}));
    EXPECT_EQ(names(renaming(id(1), "Studio", presets)),
              (std::vector<std::string>{"Studio 2", "Studio"}))
        << "the other one's name counts, though its id is the same";
    // A list may hold a name twice; the other one still counts.
    presets[1].name = "Night";
    EXPECT_EQ(names(renaming(id(1), "Night", presets)),
              (std::vector<std::string>{"Night 2", "Night"}));
}

TEST(ColourPresetLibrary, RemovesEveryPresetOfAnId) {
    Presets presets = named({"Night", "Studio", "Day"});
    EXPECT_EQ(names(removing(id(2), presets)), (std::vector<std::string>{"Night", "Day"}));
    EXPECT_EQ(removing(id(9), presets), presets);
    EXPECT_EQ(removing(id(1), {}), Presets());
    presets[2].id = id(1);
    EXPECT_EQ(names(removing(id(1), presets)), std::vector<std::string>{"Studio"});
}

TEST(ColourPresetLibrary, RecognisesThePresetOfTheColours) {
    Presets presets = named({"Plain", "Marked", "Plain again"});
    presets[1].marker = black;
    const auto name = [&](std::optional<RGBA> text, std::optional<RGBA> highlight,
                          std::optional<RGBA> marker) -> std::string {
        const auto found = matching(text, highlight, marker, presets);
        return found ? found->name.utf8() : "none";
    };
    EXPECT_EQ(name(white, orange, {}), "Plain") << "the first one";
    EXPECT_EQ(name(white, orange, black), "Marked");
    EXPECT_EQ(name(white, orange, white), "none");
    EXPECT_EQ(name(black, orange, {}), "none");
    EXPECT_EQ(name(white, black, {}), "none");
    EXPECT_EQ(name({}, orange, {}), "none");
    EXPECT_EQ(name(white, {}, {}), "none");
    EXPECT_EQ(name(RGBA(1, 1, 1, 0.5), orange, {}), "none") << "alpha counts";
    EXPECT_EQ(matching(white, orange, {}, {}), std::nullopt);
    presets = {presets[1]};
    EXPECT_EQ(name(white, orange, {}), "none") << "an absent marker does not match one";
    presets[0].marker = std::nullopt;
    EXPECT_EQ(name(white, orange, black), "none") << "nor the reverse";
}

// Names over an alphabet in which they collide.
Text anyName() {
    return *Tests::textOver({"a", "A", " ", "2", "\n", "e\u0301", "\u00E9", "\u0301"});
}

TEST(ColourPresetLibrary, NamesThatItGivesDiffer) {
    Tests::forAll([] {
        Presets presets;
        for (int i = 0; i < 12; i++) {
            const Presets before = presets;
            presets = adding(anyName(), white, orange, {}, presets, id(i));
            RC_ASSERT(presets.size() - before.size() <= 1);
            if (i > 3) presets = renaming(id(*rc::gen::inRange(0, i)), anyName(), presets);
        }
        for (std::size_t i = 0; i < presets.size(); i++) {
            RC_ASSERT(!presets[i].name.isEmpty());
            for (std::size_t j = 0; j < i; j++)
                RC_ASSERT(presets[i].name != presets[j].name);
        }
    });
}

TEST(ColourPresetLibrary, RemovingUndoesAdding) {
    Tests::forAll([](const Text& name) {
        const Presets presets = named({"Night", "a", "b"});
        RC_ASSERT(removing(id(99), withOneMore(name, presets)) == presets);
    });
}

}  // namespace
}  // namespace PrompterCore
