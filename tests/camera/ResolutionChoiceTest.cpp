#include <cmath>
#include <concepts>
#include <limits>
#include <unordered_set>

#include "PrompterCore/camera/ResolutionChoice.h"
#include "tests/reference/PlainCamera.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Resolutions = std::vector<CameraResolution>;
using Entries = std::vector<FramedResolution>;
using Tests::most;
constexpr CameraResolution ultra{3840, 2160}, full{1920, 1080}, small{1280, 720};
constexpr CameraResolution upright{1080, 1920}, classic{1920, 1440};
using enum CameraFraming;
constexpr auto none = CameraRotation::none;
constexpr auto quarter = CameraRotation::quarter;

static_assert(std::copyable<FramedResolution> && std::equality_comparable<FramedResolution>);
static_assert(std::copyable<CameraFormatOption> && std::equality_comparable<CameraFormatOption>);

TEST(ResolutionChoice, DoesWhatItsManualShows) {
    const auto offered = ResolutionChoice::offered({{small, 30}, {full, 30}, {ultra, 10}});
    const auto menu = ResolutionChoice::framed(offered, portrait, none);
    const auto chosen = ResolutionChoice::chosen(offered, CameraResolution::fromId("1920x1080"));
    ASSERT_EQ(chosen, full);
    const auto current = ResolutionChoice::entryFor(*chosen, menu, portrait, none);
    EXPECT_EQ(current, (FramedResolution{full, {608, 1080}}));
}

TEST(ResolutionChoice, LeavesOutSlowFormatsWhileAFastOneExists) {
    EXPECT_EQ(ResolutionChoice::offered({{small, 30}, {full, 15}, {small, 60}}),
              Resolutions{small});
    EXPECT_EQ(ResolutionChoice::offered({{full, 15}, {small, 10}}), (Resolutions{full, small}));
    EXPECT_EQ(ResolutionChoice::offered({}), Resolutions{});
}

TEST(ResolutionChoice, TwentyFourIsFastEnough) {
    EXPECT_EQ(ResolutionChoice::offered({{full, 23.976}, {small, 24}}), Resolutions{small});
    EXPECT_EQ(ResolutionChoice::offered({{full, std::nan("")}, {small, 24}}), Resolutions{small});
    EXPECT_EQ(ResolutionChoice::offered({{full, std::nan("")}}), Resolutions{full});
    EXPECT_EQ(ResolutionChoice::offered({{small, std::numeric_limits<double>::infinity()}}),
              Resolutions{small});
}

TEST(ResolutionChoice, KeepsTheOrderOfEqualPixelCounts) {
    EXPECT_EQ(ResolutionChoice::offered({{upright, 30}, {full, 30}}), (Resolutions{upright, full}));
    EXPECT_EQ(ResolutionChoice::offered({{full, 30}, {ultra, 30}, {upright, 30}, {full, 60}}),
              (Resolutions{ultra, full, upright}));
}

TEST(ResolutionChoice, EntriesWithTheSameOutputStandOnce) {
    const Entries menu = ResolutionChoice::framed({classic, full}, landscape, none);
    EXPECT_EQ(menu, (Entries{{classic, {1920, 1080}}}));
    EXPECT_EQ(ResolutionChoice::entryFor(full, menu, landscape, none), menu[0]);
    EXPECT_EQ(menu[0].id(), "1920x1440") << "the sensor's, not the output's";
}

TEST(ResolutionChoice, TurnsBeforeItCrops) {
    EXPECT_EQ(ResolutionChoice::framed({full}, landscape, quarter), (Entries{{full, {1080, 608}}}));
    EXPECT_EQ(ResolutionChoice::framed({full}, portrait, quarter), (Entries{{full, {1080, 1920}}}));
    EXPECT_EQ(ResolutionChoice::framed({full}, portrait, CameraRotation::half),
              (Entries{{full, {608, 1080}}}));
}

TEST(ResolutionChoice, EntryIsFoundBySensorBeforeOutput) {
    // The first has the output that the second's sensor would have.
    const Entries menu{{{1920, 1200}, {1920, 1080}}, {full, {2, 2}}};
    EXPECT_EQ(ResolutionChoice::entryFor(full, menu, landscape, none), menu[1]);
    EXPECT_EQ(ResolutionChoice::entryFor(classic, menu, landscape, none), menu[0]);
    EXPECT_EQ(ResolutionChoice::entryFor(upright, menu, landscape, quarter), menu[0]);
    EXPECT_EQ(ResolutionChoice::entryFor(small, menu, landscape, none), std::nullopt);
    EXPECT_EQ(ResolutionChoice::entryFor(full, {}, landscape, none), std::nullopt);
}

TEST(ResolutionChoice, NoPictureIsFramedAsItStands) {
    EXPECT_EQ(ResolutionChoice::framed({{0, 0}, {0, 7}}, landscape, quarter),
              (Entries{{{0, 0}, {0, 0}}, {{0, 7}, {7, 0}}}));
}

TEST(ResolutionChoice, ChoosesThePreferredOrTheNextSmaller) {
    const Resolutions all{ultra, full, small};
    EXPECT_EQ(ResolutionChoice::chosen(all, CameraResolution{2560, 1440}), full);
    EXPECT_EQ(ResolutionChoice::chosen(all, CameraResolution{640, 480}), small);
    EXPECT_EQ(ResolutionChoice::chosen(all, small), small);
    EXPECT_EQ(ResolutionChoice::chosen(all, std::nullopt), ultra);
    EXPECT_EQ(ResolutionChoice::chosen(all, upright), full) << "as many pixels are not more";
    EXPECT_EQ(ResolutionChoice::chosen({}, full), std::nullopt);
    EXPECT_EQ(ResolutionChoice::chosen({}, std::nullopt), std::nullopt);
}

TEST(ResolutionChoice, FramedMenuHasNoOutputTwice) {
    Tests::forAll([](const std::vector<std::pair<std::uint8_t, std::uint8_t>>& sizes) {
        Resolutions resolutions;
        for (const auto& [width, height] : sizes) {
            resolutions.push_back({width, height});
        }
        for (const CameraFraming framing : allCases<CameraFraming>) {
            for (const CameraRotation rotation : allCases<CameraRotation>) {
                const Entries menu = ResolutionChoice::framed(resolutions, framing, rotation);
                std::unordered_set<CameraResolution> outputs;
                for (const FramedResolution& entry : menu) {
                    RC_ASSERT(outputs.insert(entry.output).second);
                    RC_ASSERT(entry.output == applied(rotation, entry.sensor).framed(framing));
                }
                // And every resolution is found again.
                for (const CameraResolution& each : resolutions) {
                    const auto entry = ResolutionChoice::entryFor(each, menu, framing, rotation);
                    RC_ASSERT(entry.has_value());
                    RC_ASSERT(entry->output == applied(rotation, each).framed(framing));
                }
            }
        }
    });
}

TEST(ResolutionChoice, OfferedAgreesWithTheSlowSearch) {
    Tests::forAll([] {
        const auto side = rc::gen::inRange<std::int64_t>(-2, 6);
        const auto rate = rc::gen::element(0.0, 15.0, 23.9, 24.0, 60.0, std::nan(""));
        std::vector<CameraFormatOption> formats;
        const auto count = *rc::gen::inRange(0, 12);
        for (int i = 0; i < count; ++i) {
            formats.push_back({{*side, *side}, *rate});
        }
        RC_ASSERT(ResolutionChoice::offered(formats) == Plain::offered(formats));
    });
}

TEST(ResolutionChoice, EqualEntriesHashAlike) {
    const std::hash<FramedResolution> hash;
    EXPECT_EQ(hash({full, small}), hash({full, small}));
    EXPECT_NE(hash({full, small}), hash({small, full}));
}

TEST(ResolutionChoiceDeathTest, StopsWhereAPixelCountOverflows) {
    const CameraResolution huge{most, 2};
    const char* const rule = "a product fits 64 bits";
    EXPECT_DEATH(static_cast<void>(ResolutionChoice::offered({{huge, 30}, {full, 30}})), rule);
    EXPECT_DEATH(static_cast<void>(ResolutionChoice::chosen({full}, huge)), rule);
    EXPECT_DEATH(static_cast<void>(ResolutionChoice::chosen({huge}, full)), rule);
    EXPECT_EQ(ResolutionChoice::chosen({huge}, huge), huge) << "nothing is counted";
    EXPECT_EQ(ResolutionChoice::chosen({full, huge}, full), full);
}

}  // namespace
}  // namespace PrompterCore
