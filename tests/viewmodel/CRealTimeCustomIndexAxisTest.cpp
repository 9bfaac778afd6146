#include "viewmodel/CRealTimeCustomIndexAxis.h"

#include "tests/fakehost/FakeHost.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

class CRealTimeCustomIndexAxisTest : public ::testing::Test {
protected:
    CRealTimeCustomIndexAxisTest() {
        mHost.mStocks.add("SH", "600000");
        mHost.mStocks.add("SZ", "000001");
        mIndex->mMembers << "SH600000";
    }
    bool fill() { return mAxis.fillRequestParam(mParam, "MYINDEX", nullptr); }

    fakehost::FakeHost mHost;
    CIndexDetail *mIndex = mHost.mIndexes.add("MYINDEX");
    CRealTimeCustomIndexAxis mAxis;
    CFormulaParam mParam;
};

TEST_F(CRealTimeCustomIndexAxisTest, MainChartIsPriceAndVolumeWithAContextMenu) {
    EXPECT_EQ(mAxis.getMainFormula(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
    EXPECT_EQ(mAxis.getBasicFormula(), "REALTIME");
    EXPECT_EQ(mAxis.getVolFormula(), "REALTIMEVOL");
    EXPECT_TRUE(mAxis.isBasicFormula("realtime"));
    EXPECT_TRUE(mAxis.isVolFormula("realtimevol"));
    EXPECT_FALSE(mAxis.isMainFormula("realtime"));
    EXPECT_TRUE(mAxis.showContextMenu());
    mAxis.setPortfolioGraphType(2);
    EXPECT_TRUE(mAxis.isMainFormula("REALTIME"));
}

TEST_F(CRealTimeCustomIndexAxisTest, UnknownIndexLeavesTheRequestUnchanged) {
    mParam.mMarket = "M";
    EXPECT_FALSE(mAxis.fillRequestParam(mParam, "other", nullptr));
    EXPECT_EQ(mParam.mMarket, "M");
    EXPECT_EQ(mParam.mIndexKey, QString());
}

TEST_F(CRealTimeCustomIndexAxisTest, ValuesThatAreSetPassThroughUnchanged) {
    mIndex->mOption1 = 11;
    mIndex->mStartTime = 1710432000123;
    mIndex->mBaseValue = -0.5;
    mIndex->mOption2 = -1;
    mIndex->mOption3 = 33;
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mIndexName, "MYINDEX");
    EXPECT_EQ(mParam.mIndexKey, "MYINDEX");
    EXPECT_EQ(mParam.mCode, "MYINDEX");
    EXPECT_EQ(mParam.mMarket, "CD");
    EXPECT_EQ(mParam.mIndexOption1, 11);
    EXPECT_EQ(mParam.mIndexStartTime, 1710432000123);
    EXPECT_EQ(mParam.mIndexBaseValue, -0.5);
    EXPECT_EQ(mParam.mIndexOption2, -1);
    EXPECT_EQ(mParam.mIndexOption3, 33);
}

TEST_F(CRealTimeCustomIndexAxisTest, ZeroStartTimeIsTheCurrentTimeInMilliseconds) {
    mHost.mClock.mNow = QDateTime::fromMSecsSinceEpoch(1710468000789);
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mIndexStartTime, 1710468000000);
}

TEST_F(CRealTimeCustomIndexAxisTest, ZeroBaseValueAndSecondOptionAreAHundred) {
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mIndexBaseValue, 100.0);
    EXPECT_EQ(mParam.mIndexOption2, 100);
    EXPECT_EQ(mParam.mIndexOption1, 0);
    EXPECT_EQ(mParam.mIndexOption3, 0);
    mIndex->mBaseValue = 1e-5;
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mIndexBaseValue, 100.0);
    mIndex->mBaseValue = 1.1e-5;
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mIndexBaseValue, 1.1e-5);
}

TEST_F(CRealTimeCustomIndexAxisTest, IndexWithoutMembersFailsWithTheRequestPartlyFilled) {
    mIndex->mMembers.clear();
    EXPECT_FALSE(fill());
    EXPECT_EQ(mParam.mIndexName, "MYINDEX");
    EXPECT_EQ(mParam.mIndexKey, "MYINDEX");
    EXPECT_EQ(mParam.mMarket, "CD");
    EXPECT_EQ(mParam.mCode, "MYINDEX");
    EXPECT_TRUE(mParam.mMembers.isEmpty());
}

TEST_F(CRealTimeCustomIndexAxisTest, MembersKeepTheirOrderAndUnknownOnesAreSkipped) {
    mIndex->mMembers = {"SZ000001", "unknown", "SH600000"};
    EXPECT_TRUE(fill());
    EXPECT_EQ(mParam.mMembers, (QList<QPair<QString, QString>>{{"SZ", "000001"}, {"SH", "600000"}}));
}

TEST_F(CRealTimeCustomIndexAxisTest, IndexWhoseMembersAreAllUnknownIsStillRequested) {
    mIndex->mMembers = {"unknown", ""};
    EXPECT_TRUE(fill());
    EXPECT_TRUE(mParam.mMembers.isEmpty());
}

} // namespace
