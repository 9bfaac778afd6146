#include "viewmodel/CRealTimePortfolioAxis.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

const QString kVolumePrice = QStringLiteral("量价分析");
const QString kVolumePart = QStringLiteral("量价分析-量");

QString codeOf(const QString &key) {
    CFormulaParam param;
    CRealTimePortfolioAxis axis;
    EXPECT_TRUE(axis.fillRequestParam(param, key, nullptr));
    EXPECT_EQ(param.mMarket, "TZZH");
    return param.mCode;
}

TEST(CRealTimePortfolioAxisTest, BeginsWithTheVolumePriceAnalysis) {
    const CRealTimePortfolioAxis axis;
    EXPECT_EQ(axis.getMainFormula(), (QList<QString>{kVolumePrice, kVolumePart}));
    EXPECT_EQ(axis.getBasicFormula(), kVolumePrice);
    EXPECT_EQ(axis.getVolFormula(), kVolumePart);
}

TEST(CRealTimePortfolioAxisTest, HasNoContextMenu) {
    EXPECT_FALSE(CRealTimePortfolioAxis().showContextMenu());
}

TEST(CRealTimePortfolioAxisTest, AnalysisDecidesTheMainChart) {
    CRealTimePortfolioAxis axis;
    axis.setPortfolioGraphType(1);
    EXPECT_EQ(axis.getMainFormula(), QList<QString>{QStringLiteral("偏离度分析")});
    for (const int type : {2, 3, -1, 100}) {
        axis.setPortfolioGraphType(type);
        EXPECT_EQ(axis.getMainFormula(), QList<QString>{QStringLiteral("预计下单")}) << type;
    }
    axis.setPortfolioGraphType(0);
    EXPECT_EQ(axis.getMainFormula(), (QList<QString>{kVolumePrice, kVolumePart}));
}

TEST(CRealTimePortfolioAxisTest, BasicFormulaDoesNotFollowTheAnalysis) {
    CRealTimePortfolioAxis axis;
    for (const int type : {1, 2}) {
        axis.setPortfolioGraphType(type);
        EXPECT_EQ(axis.getBasicFormula(), kVolumePrice);
        EXPECT_EQ(axis.getVolFormula(), kVolumePart);
        EXPECT_FALSE(axis.isMainFormula(kVolumePrice));
        EXPECT_TRUE(axis.isBasicFormula(kVolumePrice));
        EXPECT_TRUE(axis.isVolFormula(kVolumePart));
    }
}

TEST(CRealTimePortfolioAxisTest, CodeIsTheLastPartOfTheKey) {
    EXPECT_EQ(codeOf("TZZH123"), "123");
    EXPECT_EQ(codeOf("TZZHTZZH5"), "5");
    EXPECT_EQ(codeOf("123"), "123");
    EXPECT_EQ(codeOf("tzzh123"), "tzzh123");
    EXPECT_EQ(codeOf("12TZZH"), "");
    EXPECT_EQ(codeOf(""), "");
}

} // namespace
