#include "chartdata/MarkPlacer.h"

#include "tests/chartdata/ProbeFixture.h"

#include <cmath>
#include <limits>

using namespace TC;

namespace {

class Placer : public tests::ProbeFixture {
protected:
    Placer() { mUiParam->resize(QRect(0, 0, 482, 200)); }
    /// 200 rows for prices from 9 to 11, around a close of 10.
    MarkPlacer placer() const { return MarkPlacer(*mUiParam, {11.0, 9.0}, 200, 10.0); }
};

TEST_F(Placer, EveryTimeOfTheDayHasTheIndexAndTheColumnOfTheAxis) {
    for (const bool night : {false, true}) {
        if (night) {
            mHost.mTimes.mNight.insert("SH600000");
            mUiParam->resetAxis("SH", "600000");
        }
        MarkPlacer marks = placer();
        for (int second = 0; second < 86400; second += 29) {
            const QTime time = QTime(0, 0).addSecs(second);
            const int index = mUiParam->getIndexByTime(time);
            QPoint at;
            ASSERT_TRUE(marks.place(time, 10.0, 10.0, at));
            ASSERT_EQ(marks.indexOf(time), index) << second;
            ASSERT_EQ(at.x(), mUiParam->getXAxisByIndex(index)) << second;
        }
        EXPECT_EQ(marks.indexOf(QTime()), mUiParam->getIndexByTime(QTime()));
    }
}

TEST_F(Placer, PricesLieAtTheirRelativeDistance) {
    QPoint at;
    EXPECT_TRUE(placer().place(QTime(10, 0), 10.5, 10.0, at));
    EXPECT_EQ(at, QPoint(61, 50));
    EXPECT_TRUE(placer().place(QTime(10, 0), 42.0, 40.0, at)); // 5 % above, too
    EXPECT_EQ(at, QPoint(61, 50));
}

TEST_F(Placer, WhatIsNoNumberHasNoPlace) {
    QPoint at(-7, -7);
    for (const double none : {std::nan(""), std::numeric_limits<double>::infinity(), kUnsetValue}) {
        EXPECT_FALSE(placer().place(QTime(10, 0), none, 10.0, at));
        EXPECT_FALSE(placer().place(QTime(10, 0), 10.5, none, at));
    }
    EXPECT_FALSE(placer().place(QTime(10, 0), 10.5, 0.0, at));
    EXPECT_EQ(at, QPoint(-7, -7));
}

TEST_F(Placer, PriceBelowTheRangeIsNotAmongThePrices) {
    QPoint at;
    mUiParam->mShowVolume = true;
    EXPECT_TRUE(placer().place(QTime(10, 0), 9.0, 10.0, at));
    EXPECT_EQ(at.y(), 200);
    EXPECT_TRUE(placer().isAmongPrices(at));
    EXPECT_TRUE(placer().place(QTime(10, 0), 8.5, 10.0, at));
    EXPECT_EQ(at.y(), 250);
    EXPECT_FALSE(placer().isAmongPrices(at));
    mUiParam->mShowVolume = false;
    EXPECT_TRUE(placer().isAmongPrices(at)) << "there is nothing else";
}

TEST_F(Placer, WithoutARangeTheRowIsAboveTheGraph) {
    MarkPlacer marks(*mUiParam, {0.0, 0.0}, 200, 10.0);
    QPoint at;
    EXPECT_TRUE(marks.place(QTime(10, 0), 10.5, 10.0, at));
    EXPECT_EQ(at, QPoint(61, -1));
}

} // namespace
