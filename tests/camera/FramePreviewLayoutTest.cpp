#include <cmath>
#include <concepts>

#include "PrompterCore/camera/FramePreviewLayout.h"
#include "PrompterCore/camera/FrameSize.h"
#include "tests/reference/PlainPreview.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using enum CameraFraming;
constexpr Size fullHd{1920, 1080};
constexpr Size pane{800, 600};
constexpr bool mirrored = true;
constexpr bool asSeen = false;
constexpr double scale = 337.5 / 608;  // of the portrait crop in that pane

static_assert(std::copyable<FramePreviewLayout> && std::equality_comparable<FramePreviewLayout>);

FramePreviewLayout portraitLayout(FrameOffset offset, bool isMirrored) {
    return FramePreviewLayout(fullHd, portrait, offset, pane, isMirrored);
}

void expectNear(const Rectangle& a, const Rectangle& b) {
    EXPECT_NEAR(a.minX(), b.minX(), 1e-9);
    EXPECT_NEAR(a.minY(), b.minY(), 1e-9);
    EXPECT_NEAR(a.size.width, b.size.width, 1e-9);
    EXPECT_NEAR(a.size.height, b.size.height, 1e-9);
}

TEST(FramePreviewLayout, DoesWhatItsManualShows) {
    const auto layout = portraitLayout(FrameOffset::centred, asSeen);
    EXPECT_EQ(layout.window(), (Rectangle{{231.25, 0}, {337.5, 600}}));
    EXPECT_NEAR(layout.offset(FrameOffset::centred, {30, 0}).x(), -60 / (1312 * scale), 1e-12);
}

TEST(FramePreviewLayout, WindowIsTheLargestInTheMiddleOfThePane) {
    EXPECT_EQ(FramePreviewLayout(fullHd, landscape, FrameOffset::centred, pane, asSeen).window(),
              (Rectangle{{0, 75}, {800, 450}}));
    EXPECT_EQ(portraitLayout(FrameOffset::centred, asSeen).window(),
              (Rectangle{{231.25, 0}, {337.5, 600}}));
    EXPECT_EQ(FramePreviewLayout(fullHd, landscape, FrameOffset::centred, {-8, 6}, asSeen).window(),
              (Rectangle{{-4, 3}, {0, 0}}))
        << "a pane without room has a window without size";
    EXPECT_EQ(portraitLayout(FrameOffset::centred, asSeen).pane(), pane);
}

TEST(FramePreviewLayout, PictureLiesAroundTheWindow) {
    const auto layout = portraitLayout(FrameOffset::centred, asSeen);
    expectNear(layout.picture(), {{231.25 - 656 * scale, 0}, {1920 * scale, 1080 * scale}});
    EXPECT_NEAR(layout.picture().minX(), -132.9, 0.05);
    EXPECT_NEAR(layout.picture().size.width, 1065.8, 0.05);
    EXPECT_NEAR(layout.picture().size.height, 599.5, 0.05);
    EXPECT_NEAR(layout.room().width, 728.3, 0.05);
    EXPECT_EQ(layout.room().height, 0);
    EXPECT_TRUE(layout.canPan());
    EXPECT_FALSE(layout.mirrored());
}

TEST(FramePreviewLayout, MirroredShowsTheFarSide) {
    const auto layout = portraitLayout(FrameOffset(-1, 0), mirrored);
    expectNear(layout.picture(), {{231.25 - 1312 * scale, 0}, {1920 * scale, 1080 * scale}});
    EXPECT_TRUE(layout.mirrored());
    EXPECT_NE(layout, portraitLayout(FrameOffset(1, 0), asSeen));
    EXPECT_EQ(layout.picture(), portraitLayout(FrameOffset(1, 0), asSeen).picture());
}

TEST(FramePreviewLayout, WithoutASensorThePictureIsTheWindow) {
    for (const Size& none : {Size{0, 0}, Size{1920, 0}, Size{-1, 1080}, Size{std::nan(""), 1}}) {
        const FramePreviewLayout layout(none, landscape, FrameOffset(1, 1), pane, mirrored);
        EXPECT_EQ(layout.picture(), layout.window());
        EXPECT_EQ(layout.room(), (Size{0, 0}));
        EXPECT_FALSE(layout.canPan());
        EXPECT_EQ(layout.offset(FrameOffset(0.25, -0.5), {100, 100}), FrameOffset(0.25, -0.5));
    }
}

TEST(FramePreviewLayout, DragsFromEdgeToEdge) {
    const auto layout = portraitLayout(FrameOffset::centred, asSeen);
    const auto mirror = portraitLayout(FrameOffset::centred, mirrored);
    const double half = layout.room().width / 2;
    EXPECT_EQ(layout.offset(FrameOffset::centred, {half, 0}), FrameOffset(-1, 0));
    EXPECT_EQ(mirror.offset(FrameOffset::centred, {half, 0}), FrameOffset(1, 0));
    EXPECT_EQ(layout.offset(FrameOffset::centred, {half * 3, 0}), FrameOffset(-1, 0));
    EXPECT_EQ(layout.offset(FrameOffset::centred, {-half * 3, 50}), FrameOffset(1, 0));
    EXPECT_EQ(layout.offset(FrameOffset(1, 0), {2 * half, 0}), FrameOffset(-1, 0))
        << "the whole room is the whole range";
}

TEST(FramePreviewLayout, DragsUpAndDownAlikeWhetherMirroredOrNot) {
    for (const bool isMirrored : {asSeen, mirrored}) {
        const FramePreviewLayout layout({1920, 1440}, landscape, FrameOffset::centred, pane,
                                        isMirrored);
        EXPECT_EQ(layout.room(), (Size{0, 150}));
        EXPECT_EQ(layout.offset(FrameOffset::centred, {70, 75}), FrameOffset(0, -1));
        EXPECT_EQ(layout.offset(FrameOffset::centred, {70, -37.5}), FrameOffset(0, 0.5));
    }
}

TEST(FramePreviewLayout, OffersADragFromOnePointOn) {
    const auto roomOf = [](double width) {
        // One point a pixel: the crop is 1600 by 900 and fills the pane.
        return FramePreviewLayout({width, 900}, landscape, FrameOffset::centred, {1600, 900},
                                  asSeen);
    };
    EXPECT_EQ(roomOf(1601).room().width, 1);
    EXPECT_TRUE(roomOf(1601).canPan());
    EXPECT_FALSE(roomOf(1600.5).canPan());
    EXPECT_TRUE(
        FramePreviewLayout({1600, 901}, landscape, FrameOffset::centred, {1600, 900}, asSeen)
            .canPan());
}

TEST(FramePreviewLayout, LayerTurnsThePictureUpsideDown) {
    const FramePreviewLayout layout({1920, 1440}, landscape, FrameOffset(0, 1), pane, asSeen);
    EXPECT_EQ(layout.picture(), (Rectangle{{0, -75}, {800, 600}}));
    EXPECT_EQ(layout.layerPicture(600), (Rectangle{{0, 75}, {800, 600}}));
    EXPECT_EQ(layout.layerPicture(0).minY(), -525);
}

struct Setting {
    Size sensor, pane;
    FrameOffset offset = FrameOffset::centred;
};

Setting anySetting() {
    const auto pixels = rc::gen::inRange(2, 5000);
    const auto points = rc::gen::inRange(1, 2000);
    const auto hundredths = rc::gen::inRange(-100, 101);
    return {.sensor = {static_cast<double>(*pixels), static_cast<double>(*pixels)},
            .pane = {static_cast<double>(*points), static_cast<double>(*points)},
            .offset = FrameOffset(*hundredths / 100.0, *hundredths / 100.0)};
}

TEST(FramePreviewLayout, CropFillsTheWindowUpToTheRoundingOfItsHeight) {
    Tests::forAll([] {
        const Setting setting = anySetting();
        for (const CameraFraming framing : allCases<CameraFraming>) {
            const FramePreviewLayout layout(setting.sensor, framing, setting.offset, setting.pane,
                                            asSeen);
            const Rectangle crop = FrameSize::rect(setting.sensor, framing, setting.offset);
            const double s = layout.picture().size.width / setting.sensor.width;
            const double slack = 1e-9 * (1 + layout.picture().size.width);
            const Rectangle& window = layout.window();
            RC_ASSERT(std::abs(layout.picture().minX() + crop.minX() * s - window.minX()) < slack);
            RC_ASSERT(std::abs(layout.picture().minX() + crop.maxX() * s - window.maxX()) < slack);
            RC_ASSERT(std::abs(layout.picture().minY() + crop.minY() * s - window.minY()) < slack);
            // Each side was moved by a pixel at most: of the crop's own shape, that is.
            const double exactHeight = crop.size.width / ratio(framing);
            RC_ASSERT(std::abs(crop.size.height - exactHeight) <= 1 + 1 / ratio(framing) + 1e-9);
            RC_ASSERT(std::abs(crop.size.height * s - window.size.height) <=
                      (1 + 1 / ratio(framing)) * s + slack);
        }
    });
}

TEST(FramePreviewLayout, PictureIsThatOfTheFormulas) {
    Tests::forAll([] {
        const Setting setting = anySetting();
        for (const CameraFraming framing : allCases<CameraFraming>) {
            for (const bool isMirrored : {asSeen, mirrored}) {
                const FramePreviewLayout layout(setting.sensor, framing, setting.offset,
                                                setting.pane, isMirrored);
                RC_ASSERT(layout.picture() ==
                          Plain::previewPicture(setting.sensor, ratio(framing), setting.offset.x(),
                                                setting.offset.y(), setting.pane, isMirrored));
            }
        }
    });
}

TEST(FramePreviewLayout, AllOfTheRoomIsTwo) {
    Tests::forAll([] {
        const Setting setting = anySetting();
        for (const CameraFraming framing : allCases<CameraFraming>) {
            const FramePreviewLayout layout(setting.sensor, framing, setting.offset, setting.pane,
                                            asSeen);
            const Size room = layout.room();
            const FrameOffset far = layout.offset(FrameOffset(1, 1), room);
            RC_ASSERT(far.x() == (room.width > 0 ? -1 : 1));
            RC_ASSERT(far.y() == (room.height > 0 ? -1 : 1));
            // Before clamping: a tenth of the room is a fifth.
            const FrameOffset tenth =
                layout.offset(FrameOffset::centred, {room.width / 10, room.height / 10});
            RC_ASSERT(std::abs(tenth.x() + (room.width > 0 ? 0.2 : 0)) < 1e-12);
            RC_ASSERT(std::abs(tenth.y() + (room.height > 0 ? 0.2 : 0)) < 1e-12);
        }
    });
}

TEST(FramePreviewLayout, ThePictureFollowsTheFinger) {
    Tests::forAll([] {
        const Setting setting = anySetting();
        const double tenths = *rc::gen::inRange(-20, 21) / 10.0;
        for (const CameraFraming framing : allCases<CameraFraming>) {
            for (const bool isMirrored : {asSeen, mirrored}) {
                const FramePreviewLayout before(setting.sensor, framing, setting.offset,
                                                setting.pane, isMirrored);
                const Size drag{tenths * before.room().width, tenths * before.room().height};
                const FrameOffset offset = before.offset(setting.offset, drag);
                const FramePreviewLayout after(setting.sensor, framing, offset, setting.pane,
                                               isMirrored);
                const double slack = 1e-9 * (1 + before.picture().size.width);
                const bool stopped = std::abs(offset.x()) == 1 || std::abs(offset.y()) == 1;
                const double dx = after.picture().minX() - before.picture().minX();
                const double dy = after.picture().minY() - before.picture().minY();
                if (!stopped) {
                    RC_ASSERT(std::abs(dx - drag.width) < slack);
                    RC_ASSERT(std::abs(dy - drag.height) < slack);
                }
                RC_ASSERT(std::abs(dx) <= std::abs(drag.width) + slack);
            }
        }
    });
}

TEST(FramePreviewLayout, MirroringTwiceIsNothing) {
    Tests::forAll([] {
        const Setting setting = anySetting();
        const FrameOffset opposite(-setting.offset.x(), setting.offset.y());
        for (const CameraFraming framing : allCases<CameraFraming>) {
            const FramePreviewLayout plain(setting.sensor, framing, setting.offset, setting.pane,
                                           asSeen);
            const FramePreviewLayout twice(setting.sensor, framing, opposite, setting.pane,
                                           mirrored);
            const double slack = 1e-9 * (1 + plain.picture().size.width);
            // A crop on the other side, seen in a mirror, lies where it lay; one that is wider than
            // the picture, by its rounding, sticks out on the other side.
            const double excess = std::max(
                0.0, FrameSize::cropping(setting.sensor, framing).width - setting.sensor.width);
            const double s = plain.picture().size.width / setting.sensor.width;
            RC_ASSERT(std::abs(plain.picture().minX() - twice.picture().minX() - excess * -s) <
                      slack);
            RC_ASSERT(plain.window() == twice.window() && plain.room() == twice.room());
            const Size drag{13, 7}, mirroredDrag{-13, 7};
            RC_ASSERT(plain.offset(setting.offset, drag) ==
                      twice.offset(setting.offset, mirroredDrag));
            // Turning the layer over twice is nothing either.
            const Rectangle layer = plain.layerPicture(setting.pane.height);
            RC_ASSERT(std::abs(setting.pane.height - layer.maxY() - plain.picture().minY()) <
                      slack);
        }
    });
}

TEST(FramePreviewLayout, NeverAllocates) {
    EXPECT_EQ(Tests::allocationsDuring([] {
                  const auto layout = portraitLayout(FrameOffset::centred, mirrored);
                  static_cast<void>(layout.offset(FrameOffset::centred, {1, 1}));
                  static_cast<void>(layout.layerPicture(600));
              }),
              0);
    static_assert(noexcept(
        FramePreviewLayout(fullHd, portrait, FrameOffset::centred, pane, mirrored).canPan()));
}

}  // namespace
}  // namespace PrompterCore
