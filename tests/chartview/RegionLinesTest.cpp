#include "chartview/RegionLines.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

TEST(RegionLines, AreMovedWhetherOrNotTheyAreShown) {
    RegionLines lines;
    EXPECT_FALSE(lines.isVisible());
    lines.moveTo(10, 60);
    EXPECT_FALSE(lines.isVisible());
    lines.show();
    EXPECT_TRUE(lines.isVisible());
    EXPECT_EQ(lines.left(), 10);
    EXPECT_EQ(lines.right(), 60);
    lines.hide();
    EXPECT_FALSE(lines.isVisible());
    EXPECT_EQ(lines.right(), 60);
}

} // namespace
