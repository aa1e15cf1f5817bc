#include <concepts>
#include <limits>
#include <vector>

#include "PrompterCore/platform/ModelInstallation.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<ModelAsset> && std::equality_comparable<ModelAsset>);
static_assert(std::copyable<ModelEntry> && std::equality_comparable<ModelEntry>);
static_assert(std::copyable<ModelInstallState> && std::equality_comparable<ModelInstallState>);

TEST(ModelInstallation, JudgesByTheFirstEntryWithTheMarker) {
    using State = ModelInstallState;
    const ModelAsset asset{.marker = "Encoder", .encoderBytes = 1000, .downloadBytes = 1500};
    struct Case {
        const char* what;
        std::vector<ModelEntry> entries;
        State state;
    };
    const Case cases[] = {
        {"no entries", {}, State::missing()},
        {"none with the marker", {{"Decoder", 1000}}, State::missing()},
        {"95 %", {{"AudioEncoder.bin", 950}}, State::installed(950)},
        {"just below", {{"AudioEncoder.bin", 949}}, State::partial(949)},
        {"just started", {{"Encoder", 0}}, State::partial(0)},
        {"larger than expected", {{"Encoder", 5000}}, State::installed(5000)},
        {"the first counts", {{"Encoder.a", 10}, {"Encoder.b", 1000}}, State::partial(10)},
        {"in another case", {{"encoder", 1000}}, State::missing()},
        {"half a character", {{"Encoder\u0301", 1000}}, State::missing()},
    };
    for (const auto& [what, entries, state] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(ModelInstallation::stateOf(asset, entries), state);
    }
}

TEST(ModelInstallation, FindsAMarkerThatIsWrittenDecomposed) {
    const ModelAsset asset{.marker = "caf\u00E9", .encoderBytes = 10, .downloadBytes = 10};
    EXPECT_EQ(ModelInstallation::stateOf(asset, {{"a cafe\u0301 model", 10}}),
              ModelInstallState::installed(10));
}

TEST(ModelInstallation, SizesBeyondWhatADoubleCountsStillAnswer) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    const ModelAsset asset{.marker = "m", .encoderBytes = most, .downloadBytes = most};
    EXPECT_EQ(ModelInstallation::stateOf(asset, {{"m", most}}), ModelInstallState::installed(most));
}

TEST(ModelInstallState, OnlyTheWholeModelIsInstalled) {
    EXPECT_TRUE(ModelInstallState::installed(0).isInstalled());
    EXPECT_FALSE(ModelInstallState::partial(7).isInstalled());
    EXPECT_FALSE(ModelInstallState::missing().isInstalled());
    EXPECT_NE(ModelInstallState::installed(7), ModelInstallState::partial(7));
}

}  // namespace
}  // namespace PrompterCore
