#include "host/drawing/DrawStyles.h"

#include <gtest/gtest.h>

// The numbers stand in series and in formula files: a name may change, a number never.

using namespace TC;

namespace {

TEST(DrawStylesTest, EveryStyleKeepsItsNumber) {
    EXPECT_EQ(eLineStyle, 0);
    EXPECT_EQ(eDotStyle, 1);
    EXPECT_EQ(eColorStickStyle, 2);
    EXPECT_EQ(eNoStyle, 3);
    EXPECT_EQ(eDottedLineStyle, 4);
    EXPECT_EQ(eDashDotLineStyle, 5);
    EXPECT_EQ(eSecondDottedLineStyle, 6);
    EXPECT_EQ(eThirdDottedLineStyle, 8);
    EXPECT_EQ(eVolStickStyle, 10);
    EXPECT_EQ(eKLineStyle, 12);
    EXPECT_EQ(eTextStyle, 13);
    EXPECT_EQ(eVertLineStyle, 14);
    EXPECT_EQ(eVertDotStyle, 15);
    EXPECT_EQ(eSecondVertDotStyle, 16);
    EXPECT_EQ(eVertDashDotStyle, 17);
    EXPECT_EQ(eVertDashDotDotStyle, 18);
    EXPECT_EQ(eSecondVertLineStyle, 19);
    EXPECT_EQ(eIconStyle, 26);
    EXPECT_EQ(ePlainLineStyle, 27);
    EXPECT_EQ(eNumberStyle, 28);
    EXPECT_EQ(eTextExStyle, 31);
    EXPECT_EQ(eStickKlineStyle, 36);
    EXPECT_EQ(eBoolLineStyle, 37);
    EXPECT_EQ(eWideVolStickStyle, 40);
    EXPECT_EQ(eSegmentLineStyle, 41);
    EXPECT_EQ(eStackVolStickStyle, 42);
}

} // namespace
