#include "chartview/RegionLines.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

TEST(RegionLines, AreMovedWhetherOrNotTheyAreShown) {
    const DayAxis axis{482.0, 241};
    RegionLines lines;
    EXPECT_FALSE(lines.isVisible());
    lines.moveTo(MinuteSpan::ofColumns(10, 60, axis));
    EXPECT_FALSE(lines.isVisible());
    lines.show();
    EXPECT_TRUE(lines.isVisible());
    EXPECT_EQ(lines.span().left(axis), 10);
    EXPECT_EQ(lines.span().right(axis), 60);
    lines.hide();
    EXPECT_FALSE(lines.isVisible());
    EXPECT_EQ(lines.span().right(axis), 60);
}

} // namespace
