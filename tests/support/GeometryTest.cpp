#include <concepts>

#include <gtest/gtest.h>

#include "PrompterCore/support/Geometry.h"

namespace PrompterCore {
namespace {

static_assert(std::copyable<Rectangle> && std::equality_comparable<Rectangle>);

TEST(Rectangle, DoesWhatItsManualShows) {
    const Rectangle window{.origin = {.x = 0, .y = 75}, .size = {.width = 800, .height = 450}};
    EXPECT_EQ(window.minX(), 0);
    EXPECT_EQ(window.minY(), 75);
    EXPECT_EQ(window.maxX(), 800);
    EXPECT_EQ(window.maxY(), 525);
}

TEST(Rectangle, DiffersInEachOfItsNumbers) {
    const Rectangle all{.origin = {.x = 1, .y = 2}, .size = {.width = 3, .height = 4}};
    EXPECT_NE(all, (Rectangle{.origin = {.x = 0, .y = 2}, .size = {.width = 3, .height = 4}}));
    EXPECT_NE(all, (Rectangle{.origin = {.x = 1, .y = 0}, .size = {.width = 3, .height = 4}}));
    EXPECT_NE(all, (Rectangle{.origin = {.x = 1, .y = 2}, .size = {.width = 0, .height = 4}}));
    EXPECT_NE(all, (Rectangle{.origin = {.x = 1, .y = 2}, .size = {.width = 3, .height = 0}}));
}

}  // namespace
}  // namespace PrompterCore
