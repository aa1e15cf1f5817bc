#include <algorithm>
#include <cmath>
#include <concepts>

#include "PrompterCore/camera/FrameOffset.h"
#include "PrompterCore/camera/LensMarker.h"
#include "tests/support/Extremes.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using Tests::infinity;
using Tests::nan;

static_assert(std::copyable<FrameOffset> && std::equality_comparable<FrameOffset>);
static_assert(std::copyable<LensMarker> && std::equality_comparable<LensMarker>);

TEST(FrameOffset, DoesWhatItsManualShows) {
    FrameOffset offset = FrameOffset::centred;
    offset = offset.moved(-0.25, 0);
    EXPECT_EQ(offset, FrameOffset(-0.25, 0));
    offset = offset.moved(-3, 0);
    EXPECT_EQ(offset, FrameOffset(-1, 0));
}

TEST(FrameOffset, ClampsAndTakesNoNumberForTheMiddle) {
    EXPECT_EQ(FrameOffset(3, nan), FrameOffset(1, 0));
    EXPECT_EQ(FrameOffset(nan, -3), FrameOffset(0, -1));
    EXPECT_EQ(FrameOffset(infinity, -infinity), FrameOffset(1, -1));
    EXPECT_EQ(FrameOffset(0.3, -0.7).x(), 0.3);
    EXPECT_EQ(FrameOffset(0.3, -0.7).y(), -0.7);
    EXPECT_EQ(FrameOffset(0.5, 0.5).moved(infinity, nan), FrameOffset(1, 0));
}

TEST(FrameOffset, IsCentredInBothDirectionsOnly) {
    EXPECT_TRUE(FrameOffset::centred.isCentred());
    EXPECT_TRUE(FrameOffset(-0.0, 0).isCentred());
    EXPECT_FALSE(FrameOffset(0, 1e-300).isCentred());
    EXPECT_FALSE(FrameOffset(-1e-300, 0).isCentred());
}

TEST(FrameOffset, NeverLeavesItsBounds) {
    Tests::forAll([](double x, double y, double dx, double dy) {
        const FrameOffset moved = FrameOffset(x, y).moved(dx, dy);
        RC_ASSERT(-1 <= moved.x() && moved.x() <= 1 && -1 <= moved.y() && moved.y() <= 1);
        RC_ASSERT(moved.x() == std::clamp(FrameOffset(x, y).x() + dx, -1.0, 1.0));
        RC_ASSERT(moved.moved(0, 0) == moved);
    });
}

TEST(LensMarker, DoesWhatItsManualShows) {
    LensMarker marker = LensMarker::default_;
    EXPECT_EQ(marker, LensMarker(0.5, 0.32));
    marker = marker.offset(50, 0, 500, 400);
    EXPECT_EQ(marker, LensMarker(0.6, 0.32));
}

TEST(LensMarker, ClampsAndTakesNoNumberForTheMiddle) {
    EXPECT_EQ(LensMarker(-0.2, nan), LensMarker(0, 0.5));
    EXPECT_EQ(LensMarker(nan, 7), LensMarker(0.5, 1));
    EXPECT_EQ(LensMarker(0.25, 0.75).x(), 0.25);
    EXPECT_EQ(LensMarker(0.25, 0.75).y(), 0.75);
}

TEST(LensMarker, IsDefaultInBothDirectionsOnly) {
    EXPECT_TRUE(LensMarker::default_.isDefault());
    EXPECT_FALSE(LensMarker(0.5, 0.33).isDefault());
    EXPECT_FALSE(LensMarker(0.51, 0.32).isDefault());
}

TEST(LensMarker, StaysAlongASideThatIsNone) {
    const LensMarker marker = LensMarker::default_;
    EXPECT_EQ(marker.offset(50, 0, 0, 400).x(), 0.5);
    EXPECT_EQ(marker.offset(50, 40, -100, 400), LensMarker(0.5, 0.32 + 0.1));
    EXPECT_EQ(marker.offset(50, 40, 100, nan), LensMarker(1, 0.32));
    EXPECT_EQ(marker.offset(nan, 40, 100, 0), LensMarker(0.5, 0.32));
    EXPECT_EQ(marker.offset(0, nan, 100, 100), LensMarker(0.5, 0.5));
    EXPECT_EQ(marker.offset(-infinity, infinity, 100, 100), LensMarker(0, 1));
}

TEST(LensMarker, DraggedThereAndBackIsNothingWithinItsBounds) {
    Tests::forAll([] {
        const auto percent = rc::gen::inRange(0, 101);
        const LensMarker marker(*percent / 100.0, *percent / 100.0);
        const LensMarker target(*percent / 100.0, *percent / 100.0);
        const double width = *rc::gen::inRange(1, 2000), height = *rc::gen::inRange(1, 2000);
        const double dx = (target.x() - marker.x()) * width;
        const double dy = (target.y() - marker.y()) * height;
        const LensMarker dragged = marker.offset(dx, dy, width, height);
        RC_ASSERT(std::abs(dragged.x() - target.x()) < 1e-12);
        RC_ASSERT(std::abs(dragged.y() - target.y()) < 1e-12);
    });
}

}  // namespace
}  // namespace PrompterCore
