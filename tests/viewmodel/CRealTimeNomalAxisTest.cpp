#include "viewmodel/CRealTimeNomalAxis.h"

#include "tests/fakehost/FakeHost.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

class CRealTimeNomalAxisTest : public ::testing::Test {
protected:
    fakehost::FakeHost mHost;
    CRealTimeNomalAxis mAxis;
};

TEST_F(CRealTimeNomalAxisTest, MainChartIsPriceAndVolume) {
    EXPECT_EQ(mAxis.getMainFormula(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
    EXPECT_EQ(mAxis.getBasicFormula(), "REALTIME");
    EXPECT_EQ(mAxis.getVolFormula(), "REALTIMEVOL");
}

TEST_F(CRealTimeNomalAxisTest, BasicAndVolumeFormulaMatchInAnyLetterCaseTheMainChartExactly) {
    EXPECT_TRUE(mAxis.isBasicFormula("realtime"));
    EXPECT_FALSE(mAxis.isMainFormula("realtime"));
    EXPECT_TRUE(mAxis.isMainFormula("REALTIME"));
    EXPECT_TRUE(mAxis.isVolFormula("RealTimeVol"));
    EXPECT_FALSE(mAxis.isMainFormula("RealTimeVol"));
    EXPECT_FALSE(mAxis.isBasicFormula("REALTIMEVOL"));
    EXPECT_FALSE(mAxis.isVolFormula("REALTIME"));
    EXPECT_FALSE(mAxis.isMainFormula(""));
    EXPECT_FALSE(mAxis.isMainFormula("MA"));
}

TEST_F(CRealTimeNomalAxisTest, HasAContextMenu) {
    EXPECT_TRUE(mAxis.showContextMenu());
}

TEST_F(CRealTimeNomalAxisTest, PortfolioAnalysisChangesNothing) {
    mAxis.setPortfolioGraphType(1);
    EXPECT_EQ(mAxis.getMainFormula(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(CRealTimeNomalAxisTest, RequestIsAddressedByMarketAndCodeOfTheRecord) {
    mHost.mStocks.add("SH", "600000");
    CFormulaParam param;
    EXPECT_TRUE(mAxis.fillRequestParam(param, "SH600000", nullptr));
    EXPECT_EQ(param.mMarket, "SH");
    EXPECT_EQ(param.mCode, "600000");
}

TEST_F(CRealTimeNomalAxisTest, UnknownInstrumentLeavesTheRequestUnchanged) {
    CFormulaParam param;
    param.mMarket = "M";
    param.mCode = "C";
    EXPECT_FALSE(mAxis.fillRequestParam(param, "SH600000", nullptr));
    EXPECT_EQ(param.mMarket, "M");
    EXPECT_EQ(param.mCode, "C");
}

} // namespace
