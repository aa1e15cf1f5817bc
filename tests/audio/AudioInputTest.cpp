#include <concepts>
#include <optional>
#include <vector>

#include "PrompterCore/audio/AudioInput.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Inputs = std::vector<AudioInput>;
using AudioInputSelector::isMissing;
using AudioInputSelector::preferred;

static_assert(SelectableDevice<AudioInput>);
static_assert(std::copyable<AudioInput> && std::equality_comparable<AudioInput>);

TEST(AudioInputSelector, PrefersTheChosenThenTheDefaultThenTheFirst) {
    const Inputs inputs{{.id = "a", .name = "Built-in", .isDefault = true},
                        {.id = "b", .name = "Lavalier"}};
    const Inputs plain{{.id = "a", .name = "Built-in"}, {.id = "b", .name = "Lavalier"}};
    EXPECT_EQ(preferred(inputs, "b"), inputs[1]);
    EXPECT_EQ(preferred(inputs, "c"), inputs[0]);
    EXPECT_EQ(preferred(inputs, std::nullopt), inputs[0]);
    EXPECT_EQ(preferred(plain, "c"), plain[0]);
    EXPECT_EQ(preferred(Inputs(), "a"), std::nullopt);
    const Inputs doubled{{.id = "a", .name = "first"}, {.id = "a", .name = "second"}};
    EXPECT_EQ(preferred(doubled, "a"), doubled[0]);
}

TEST(AudioInputSelector, MissingIsOnlyWhatWasChosen) {
    const Inputs inputs{{.id = "a", .name = "Built-in"}};
    EXPECT_TRUE(isMissing("X", inputs));
    EXPECT_TRUE(isMissing("X", Inputs()));
    EXPECT_FALSE(isMissing("a", inputs));
    EXPECT_FALSE(isMissing("", inputs));
    EXPECT_FALSE(isMissing("", Inputs()));
    EXPECT_FALSE(isMissing(std::nullopt, inputs));
}

TEST(AudioInput, ComparesAllFields) {
    const AudioInput input{"a", "A", true};
    EXPECT_EQ(input, (AudioInput{"a", "A", true}));
    EXPECT_NE(input, (AudioInput{"b", "A", true}));
    EXPECT_NE(input, (AudioInput{"a", "B", true}));
    EXPECT_NE(input, (AudioInput{"a", "A", false}));
}

}  // namespace
}  // namespace PrompterCore
