#include <cmath>

#include "PrompterCore/camera/FrameSize.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using enum CameraFraming;
constexpr Size fullHd{1920, 1080};
using Tests::infinity;

TEST(FrameSize, DoesWhatItsManualShows) {
    EXPECT_EQ(FrameSize::cropping(fullHd, portrait), (Size{608, 1080}));
    EXPECT_EQ(FrameSize::room(fullHd, portrait), (Size{1312, 0}));
    EXPECT_EQ(FrameSize::rect(fullHd, portrait, FrameOffset(1, 0)),
              (Rectangle{{1312, 0}, {608, 1080}}));
}

TEST(FrameSize, AWholeCropLeavesNoRoom) {
    EXPECT_EQ(FrameSize::cropping(fullHd, landscape), fullHd);
    EXPECT_EQ(FrameSize::room(fullHd, landscape), (Size{0, 0}));
    EXPECT_EQ(FrameSize::rect(fullHd, landscape, FrameOffset(1, -1)), (Rectangle{{0, 0}, fullHd}));
}

TEST(FrameSize, OffsetsGoFromEdgeToEdge) {
    const auto left = [](double x) {
        return FrameSize::rect(fullHd, portrait, FrameOffset(x, 0)).minX();
    };
    EXPECT_EQ(left(-1), 0);
    EXPECT_EQ(left(0), 656);
    EXPECT_EQ(left(1), 1312);
    EXPECT_EQ(FrameSize::rect({1920, 1440}, landscape, FrameOffset(0, -1)).minY(), 0);
    EXPECT_EQ(FrameSize::rect({1920, 1440}, landscape, FrameOffset(0, 1)).minY(), 360);
}

TEST(FrameSize, NoPictureStaysAsItIs) {
    for (const Size& none : {Size{0, 0}, Size{0, 1080}, Size{1920, -1}, Size{-5, 5}}) {
        EXPECT_EQ(FrameSize::cropping(none, portrait), none);
        EXPECT_EQ(FrameSize::room(none, portrait), (Size{0, 0}));
        EXPECT_EQ(FrameSize::rect(none, portrait, FrameOffset(1, 1)), (Rectangle{{0, 0}, none}));
    }
    EXPECT_TRUE(std::isnan(FrameSize::cropping({std::nan(""), 9}, portrait).width));
    EXPECT_EQ(FrameSize::room({std::nan(""), 9}, portrait), (Size{0, 0}));
}

TEST(FrameSize, TheSmallestCropIsTwoByTwo) {
    EXPECT_EQ(FrameSize::cropping({1, 1}, landscape), (Size{2, 2}));
    EXPECT_EQ(FrameSize::cropping({0.001, 0.001}, portrait), (Size{2, 2}));
    EXPECT_EQ(FrameSize::room({1, 1}, landscape), (Size{0, 0})) << "never below 0";
}

TEST(FrameSize, ALargePictureHasACropToo) {
    EXPECT_EQ(FrameSize::cropping({infinity, 1080}, landscape), (Size{1920, 1080}));
    EXPECT_EQ(FrameSize::cropping({0x1p80, 0x1p80}, landscape).width, 0x1p80);
    EXPECT_EQ(FrameSize::room({infinity, 1080}, landscape), (Size{infinity, 0}));
}

TEST(FrameSize, CropLiesWithinThePictureUpToItsRounding) {
    Tests::forAll([] {
        const auto tenths = rc::gen::inRange(1, 100'000);
        const Size sensor{*tenths / 10.0, *tenths / 10.0};
        const auto hundredths = rc::gen::inRange(-100, 101);
        const FrameOffset offset(*hundredths / 100.0, *hundredths / 100.0);
        for (const CameraFraming framing : allCases<CameraFraming>) {
            const Rectangle crop = FrameSize::rect(sensor, framing, offset);
            const Size room = FrameSize::room(sensor, framing);
            RC_ASSERT(crop.minX() >= 0 && crop.minY() >= 0);
            RC_ASSERT(crop.maxX() <= std::max(sensor.width, crop.size.width) + 1e-9);
            RC_ASSERT(crop.maxY() <= std::max(sensor.height, crop.size.height) + 1e-9);
            RC_ASSERT(std::fmod(crop.size.width, 2) == 0 && std::fmod(crop.size.height, 2) == 0);
            // One side is used up, to the rounding.
            RC_ASSERT(room.width <= 1 || room.height <= 1);
            // Opposite offsets leave the same room on opposite sides.
            const Rectangle opposite =
                FrameSize::rect(sensor, framing, FrameOffset(-offset.x(), -offset.y()));
            RC_ASSERT(std::abs(crop.minX() + opposite.minX() - room.width) < 1e-9);
            RC_ASSERT(std::abs(crop.minY() + opposite.minY() - room.height) < 1e-9);
        }
    });
}

TEST(FrameSize, NeverAllocates) {
    EXPECT_EQ(Tests::allocationsDuring([] {
                  static_cast<void>(FrameSize::rect(fullHd, portrait, FrameOffset::centred));
              }),
              0);
    static_assert(noexcept(FrameSize::rect(fullHd, portrait, FrameOffset::centred)));
    static_assert(noexcept(FrameSize::room(fullHd, portrait)));
}

}  // namespace
}  // namespace PrompterCore
