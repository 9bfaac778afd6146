#include "host/drawing/LineColor.h"

#include <gtest/gtest.h>

namespace {

TEST(LineColorTest, RedIsTheLowestByte) {
    EXPECT_EQ(TC::lineColor(QColor(0x12, 0x34, 0x56)), 0x563412);
    EXPECT_EQ(TC::lineColor(QColor(255, 0, 0, 7)), 255) << "how opaque it is, is not carried";
}

TEST(LineColorTest, ANumberIsAnOpaqueColour) {
    EXPECT_EQ(TC::colorOfLine(0x563412), qRgb(0x12, 0x34, 0x56));
    EXPECT_EQ(qAlpha(TC::colorOfLine(0)), 255);
    EXPECT_EQ(TC::colorOfLine(0x7f000001), qRgb(1, 0, 0)) << "higher bits are left out";
}

} // namespace
