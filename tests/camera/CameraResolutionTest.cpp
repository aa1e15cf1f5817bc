#include <concepts>

#include "PrompterCore/camera/CameraResolution.h"
#include "PrompterCore/camera/CameraRotation.h"
#include "PrompterCore/camera/FrameSize.h"
#include "tests/reference/PlainCamera.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::most;
using enum CameraFraming;

static_assert(std::copyable<CameraResolution> && std::equality_comparable<CameraResolution>);

TEST(CameraResolution, DoesWhatItsManualShows) {
    const CameraResolution full{.width = 1920, .height = 1080};
    EXPECT_EQ(full.id(), "1920x1080");
    EXPECT_EQ(full.title(), "1920 \u00D7 1080");
    EXPECT_EQ(full.framed(portrait), (CameraResolution{608, 1080}));
    EXPECT_EQ(CameraResolution::fromId("1920x1080"), full);
    EXPECT_EQ(CameraResolution::fromId("1920 \u00D7 1080"), std::nullopt);
}

TEST(CameraResolution, IsReadFromAnyIdWithTwoNumbers) {
    const CameraResolution full{1920, 1080};
    const struct {
        const char* id;
        std::optional<CameraResolution> read;
    } cases[] = {
        {"1920x1080", full},
        {"x1920xx1080x", full},
        {"1920xabcx1080", full},
        {"1920x 30x1080", full},
        {"1920x1080x99999999999999999999", full},
        {"+1920x+1080", full},
        {"01920x1080", full},
        {"9223372036854775807x1", CameraResolution{most, 1}},
        {"1920x1080x30", std::nullopt},
        {"0x720", std::nullopt},
        {"1280x0", std::nullopt},
        {"-1920x1080", std::nullopt},
        {"1920x-1080", std::nullopt},
        {"1920X1080", std::nullopt},
        {"1920 x 1080", std::nullopt},
        {"1920\u00D71080", std::nullopt},
        {"1920", std::nullopt},
        {"", std::nullopt},
        {"x", std::nullopt},
        {"+-1920x1080", std::nullopt},
        {"+x1080", std::nullopt},
        {"1920.0x1080", std::nullopt},
        {"0x1Fx1080", std::nullopt},
        {"\uFF11\uFF12x1080", std::nullopt},
        {"9223372036854775808x1", std::nullopt},
    };
    for (const auto& [id, read] : cases) {
        EXPECT_EQ(CameraResolution::fromId(id), read) << id;
    }
}

TEST(CameraResolution, AnXWithAnAccentPartsNothing) {
    EXPECT_EQ(CameraResolution::fromId("1920x\u0301x1080"), std::nullopt);
    EXPECT_EQ(CameraResolution::fromId("19x20x\u0301x1080"), (CameraResolution{19, 1080}));
}

TEST(CameraResolution, ReadsItsOwnIdAndNothingFromItsTitle) {
    Tests::forAll([](std::int64_t width, std::int64_t height) {
        const CameraResolution resolution{width, height};
        const bool isPicture = width >= 1 && height >= 1;
        RC_ASSERT(CameraResolution::fromId(resolution.id()) ==
                  (isPicture ? std::optional(resolution) : std::nullopt));
        RC_ASSERT(!CameraResolution::fromId(resolution.title()));
    });
}

TEST(CameraResolution, CropsToTheFraming) {
    const struct {
        CameraResolution whole, landscape, portrait;
    } cases[] = {
        {{1920, 1080}, {1920, 1080}, {608, 1080}},
        {{1280, 720}, {1280, 720}, {406, 720}},
        {{640, 480}, {640, 360}, {270, 480}},
        {{1920, 1440}, {1920, 1080}, {810, 1440}},
        {{1552, 1552}, {1552, 874}, {874, 1552}},
        {{1, 1}, {2, 2}, {2, 2}},
        {{3, 1000}, {4, 2}, {4, 6}},
        {{0, 0}, {0, 0}, {0, 0}},
        {{0, 720}, {0, 720}, {0, 720}},
        {{-1920, 1080}, {-1920, 1080}, {-1920, 1080}},
        {{1921, -1}, {1921, -1}, {1921, -1}},
    };
    for (const auto& [whole, landscapeCrop, portraitCrop] : cases) {
        EXPECT_EQ(whole.framed(landscape), landscapeCrop);
        EXPECT_EQ(whole.framed(portrait), portraitCrop);
    }
}

TEST(CameraResolution, CropIsThatOfWholeNumbersAndOfDoubles) {
    for (std::int64_t width = 1; width <= 400; ++width) {
        for (std::int64_t height = 1; height <= 400; ++height) {
            for (const CameraFraming framing : allCases<CameraFraming>) {
                const CameraResolution crop = CameraResolution{width, height}.framed(framing);
                ASSERT_EQ(crop, Plain::framed(width, height, framing)) << width << 'x' << height;
                const Size size = FrameSize::cropping(
                    {.width = static_cast<double>(width), .height = static_cast<double>(height)},
                    framing);
                ASSERT_EQ(size, (Size{static_cast<double>(crop.width),
                                      static_cast<double>(crop.height)}));
            }
        }
    }
}

TEST(CameraResolution, CropOfALargerPictureIsThatOfWholeNumbersToo) {
    Tests::forAll(
        [] {
            const auto width = *rc::gen::inRange<std::int64_t>(1, 100'000);
            const auto height = *rc::gen::inRange<std::int64_t>(1, 100'000);
            for (const CameraFraming framing : allCases<CameraFraming>) {
                const CameraResolution crop = CameraResolution{width, height}.framed(framing);
                RC_ASSERT(crop == Plain::framed(width, height, framing));
                RC_ASSERT(crop.width % 2 == 0 && crop.height % 2 == 0);
                RC_ASSERT(crop.width >= 2 && crop.height >= 2);
                RC_ASSERT(crop.width <= width + 1 && crop.height <= height + 1);
            }
        },
        2000);
}

TEST(CameraResolution, CropOfACropStaysWithinTwoPixels) {
    Tests::forAll([] {
        const auto width = *rc::gen::inRange<std::int64_t>(2, 10'000);
        const auto height = *rc::gen::inRange<std::int64_t>(2, 10'000);
        for (const CameraFraming framing : allCases<CameraFraming>) {
            const CameraResolution once = CameraResolution{width, height}.framed(framing);
            const CameraResolution twice = once.framed(framing);
            RC_ASSERT(std::abs(twice.width - once.width) <= 2);
            RC_ASSERT(std::abs(twice.height - once.height) <= 2);
        }
    });
}

TEST(CameraResolution, EqualOnesHashAlikeAndSidesDoNotChangePlaces) {
    const std::hash<CameraResolution> hash;
    EXPECT_EQ(hash({1920, 1080}), hash({1920, 1080}));
    EXPECT_NE(hash({1920, 1080}), hash({1080, 1920}));
    EXPECT_NE((CameraResolution{1920, 1080}), (CameraResolution{1080, 1920}));
}

TEST(CameraResolutionDeathTest, StopsWhereTheCropDoesNotFit) {
    EXPECT_DEATH(static_cast<void>(CameraResolution{most, most}.framed(landscape)),
                 "a whole number fits 64 bits");
    EXPECT_DEATH(static_cast<void>(CameraResolution{most, most}.framed(portrait)),
                 "a whole number fits 64 bits");
    EXPECT_EQ((CameraResolution{most, 1}.framed(landscape)), (CameraResolution{2, 2}));
}

TEST(CameraFraming, HasTheShapesOfItsTable) {
    EXPECT_EQ(ratio(landscape), 1.7777777777777777);
    EXPECT_EQ(ratio(portrait), 0.5625);
    EXPECT_FALSE(isPortrait(landscape));
    EXPECT_TRUE(isPortrait(portrait));
    EXPECT_EQ(id(landscape), "landscape");
    EXPECT_EQ(id(portrait), "portrait");
    EXPECT_EQ(title(landscape), "Landscape");
    EXPECT_EQ(title(portrait), "Portrait");
    EXPECT_EQ(fromRawValue<CameraFraming>("Portrait"), std::nullopt);
    EXPECT_EQ(fromRawValue<CameraFraming>("portrait "), std::nullopt);
}

TEST(CameraFraming, WhatCannotBeReadIsLandscape) {
    EXPECT_EQ(fromStored<CameraFraming>("portrait"), portrait);
    EXPECT_EQ(fromStored<CameraFraming>("Portrait"), landscape);
    EXPECT_EQ(fromStored<CameraFraming>(""), landscape);
    EXPECT_EQ(fromStored<CameraFraming>(std::nullopt), landscape);
}

TEST(CameraRotation, HasTheTurnsOfItsTable) {
    std::int64_t position = 0;
    for (const CameraRotation rotation : allCases<CameraRotation>) {
        EXPECT_EQ(rawValue(rotation), 90 * position);
        EXPECT_EQ(id(rotation), 90 * position);
        EXPECT_EQ(degrees(rotation), 90.0 * static_cast<double>(position));
        EXPECT_EQ(title(rotation), std::to_string(90 * position) + "\u00B0");
        EXPECT_EQ(turnsSideways(rotation), position % 2 == 1);
        EXPECT_EQ((rawValue(rotation) + rawValue(reversed(rotation))) % 360, 0);
        EXPECT_EQ(reversed(reversed(rotation)), rotation);
        ++position;
    }
    EXPECT_EQ(reversed(CameraRotation::quarter), CameraRotation::threeQuarters);
    EXPECT_EQ(reversed(CameraRotation::half), CameraRotation::half);
}

TEST(CameraRotation, IsReadFromItsFourNumbersOnly) {
    for (std::int64_t raw = -720; raw <= 720; ++raw) {
        const bool isTurn = raw == 0 || raw == 90 || raw == 180 || raw == 270;
        EXPECT_EQ(fromRawValue<CameraRotation>(raw).has_value(), isTurn) << raw;
    }
    EXPECT_EQ(fromRawValue<CameraRotation>(90), CameraRotation::quarter);
    EXPECT_EQ(fromRawValue<CameraRotation>(360), std::nullopt);
    EXPECT_EQ(fromRawValue<CameraRotation>(-90), std::nullopt);
}

TEST(CameraRotation, TurnedThereAndBackIsNothing) {
    Tests::forAll([](std::int64_t width, std::int64_t height) {
        const CameraResolution resolution{width, height};
        for (const CameraRotation rotation : allCases<CameraRotation>) {
            const CameraResolution turned = applied(rotation, resolution);
            RC_ASSERT(turned ==
                      (turnsSideways(rotation) ? CameraResolution{height, width} : resolution));
            RC_ASSERT(applied(reversed(rotation), turned) == resolution);
        }
    });
}

}  // namespace
}  // namespace PrompterCore
