#include "host/drawing/IndexBaseData.h"

#include "tests/fakehost/FakeHost.h"
#include "tests/support/Series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using TC::CFormulaKey;

/// Opens what derived classes fill.
class Data : public TC::IndexBaseData {
public:
    Data() : TC::IndexBaseData(nullptr, TC::EIndexDisplayType::Sub) {}
    using TC::IndexBaseData::mData;
    using TC::IndexBaseData::mDisplayType;
    using TC::IndexBaseData::mFormulas;
    using TC::IndexBaseData::mMaxMin;
    using TC::IndexBaseData::mReq;
};

class IndexBaseDataTest : public ::testing::Test {
protected:
    fakehost::FakeHost mHost;
    Data mData;
    const CFormulaKey mKey{QStringLiteral("SH600000"), QStringLiteral("REALTIME")};
};

TEST_F(IndexBaseDataTest, BeginsEmpty) {
    EXPECT_EQ(mData.mDisplayType, TC::EIndexDisplayType::Sub);
    EXPECT_FALSE(mData.hasData());
    EXPECT_TRUE(mData.getFormulas().isEmpty());
    EXPECT_TRUE(mData.getMaxMinMap().isEmpty());
    EXPECT_EQ(mData.getMainGraph(), QString());
    EXPECT_EQ(mData.getReqID(mKey), QString());
}

TEST_F(IndexBaseDataTest, AnswersWhatItHolds) {
    mData.mFormulas = QList<QString>{QStringLiteral("REALTIME")};
    mData.mMaxMin[mKey] = {11.0, 9.0};
    mData.mReq.add(mKey, QStringLiteral("17"));
    EXPECT_EQ(mData.getFormulas(), QList<QString>{QStringLiteral("REALTIME")});
    EXPECT_EQ(mData.getMaxMinMap().value(mKey), qMakePair(11.0, 9.0));
    EXPECT_EQ(mData.getReqID(mKey), QStringLiteral("17"));
    EXPECT_EQ(mData.reqIds(), QVector<QString>{QStringLiteral("17")});
}

TEST_F(IndexBaseDataTest, TheMainGraphIsTheFirstFormulaThatReplacesTheMainChart) {
    mHost.mCatalogue.add(QStringLiteral("MACD"), 0);
    mHost.mCatalogue.add(QStringLiteral("REALTIME"), 2);
    mHost.mCatalogue.add(QStringLiteral("OTHER"), 2);
    mData.mFormulas =
        QList<QString>{QStringLiteral("MACD"), QStringLiteral("REALTIME"), QStringLiteral("OTHER")};
    EXPECT_TRUE(mData.isMainGraph(QStringLiteral("REALTIME")));
    EXPECT_FALSE(mData.isMainGraph(QStringLiteral("MACD")));
    EXPECT_FALSE(mData.isMainGraph(QStringLiteral("UNKNOWN")));
    EXPECT_EQ(mData.getMainGraph(), QStringLiteral("REALTIME"));
}

TEST_F(IndexBaseDataTest, WithoutSuchAFormulaTheFirstIsTheMainGraph) {
    mHost.mCatalogue.add(QStringLiteral("MA"), 1);
    mData.mFormulas = QList<QString>{QStringLiteral("UNKNOWN"), QStringLiteral("MA")};
    EXPECT_EQ(mData.getMainGraph(), QStringLiteral("UNKNOWN"));
}

TEST_F(IndexBaseDataTest, ShowsTheNameOfTheRecord) {
    mHost.mCatalogue.add(QStringLiteral("MACD"))->mName = QStringLiteral("Macd指标");
    EXPECT_EQ(mData.getShowName(QStringLiteral("MACD")), QStringLiteral("Macd指标"));
    EXPECT_EQ(mData.getShowName(QStringLiteral("NONE")), QStringLiteral("NONE"));
}

TEST_F(IndexBaseDataTest, ASeriesWithoutPointsIsNoData) {
    mData.mData[mKey] = {};
    EXPECT_FALSE(mData.hasData());
    mData.mData[mKey].result.mTimes = tests::minuteTimes(tests::kDay, 571, 1);
    EXPECT_TRUE(mData.hasData());
}

TEST_F(IndexBaseDataTest, KnowsGroupAndScriptModels) {
    mHost.mCatalogue.add(QStringLiteral("MACD"));
    mHost.mCatalogue.add(QStringLiteral("GROUP"))->mStrParamNames = {QStringLiteral("group")};
    mHost.mCatalogue.add(QStringLiteral("PY"))->mLanguage = TC::EFormulaLanguage::Python;
    mData.mFormulas = QList<QString>{QStringLiteral("MACD")};
    EXPECT_FALSE(mData.hasGroupModelIndex());
    EXPECT_FALSE(mData.hasPythonIndex());
    mData.mFormulas.append(QStringLiteral("GROUP"));
    EXPECT_TRUE(mData.hasGroupModelIndex());
    EXPECT_FALSE(mData.hasPythonIndex());
    mData.mFormulas.append(QStringLiteral("PY"));
    EXPECT_TRUE(mData.hasPythonIndex());
}

TEST_F(IndexBaseDataTest, OnlyALineWithItsOwnAxisDoesNotNeedThatOfThePane) {
    se::RPCFormulaResultCache series;
    series.meta.mLineAxis = {se::eLineShared, se::eLineOwn, se::eLineHidden};
    EXPECT_TRUE(mData.isNeedYAxis(series, 0));
    EXPECT_FALSE(mData.isNeedYAxis(series, 1));
    EXPECT_TRUE(mData.isNeedYAxis(series, 2));
    EXPECT_TRUE(mData.isNeedYAxis(series, 3));
    EXPECT_TRUE(mData.isNeedYAxis(series, -1));
}

TEST_F(IndexBaseDataTest, BackTestSeriesAreRefreshedByTheService) {
    mData.updateStrategyBacktestData({});
    EXPECT_TRUE(mHost.mLog.of(QStringLiteral("CStrategyTradeManager")).isEmpty());
    mData.updateStrategyBacktestData({QStringLiteral("1"), QStringLiteral("2")});
    EXPECT_EQ(mHost.mLog.of(QStringLiteral("CStrategyTradeManager::updateBacktestData")).size(), 1);
}

using Lines = std::vector<std::vector<double>>;

/// A time position of the local zone, in which the text is written.
se::TimePosition at(int hour, int minute) {
    return {QDateTime(QDate(2024, 3, 15), QTime(hour, minute)).toMSecsSinceEpoch(), 0};
}

TEST(GetResultTxtStr, HasAHeadLineAndARowAPoint) {
    auto meta = tests::makeMeta(2, {}, {"price", "average"});
    auto result = tests::makeResult({at(9, 31), at(9, 32)}, Lines{{10.5, 10.6}, {0.1, 10.0}});
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(*result, *meta, true), "时间\tprice\taverage\n"
                                                                        "2024-03-15 09:31:00\t10.5\t0.1\n"
                                                                        "2024-03-15 09:32:00\t10.6\t10\n");
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(*result, *meta, false), "2024-03-15 09:31:00\t10.5\t0.1\n"
                                                                         "2024-03-15 09:32:00\t10.6\t10\n");
}

TEST(GetResultTxtStr, WhatIsNoValueIsAnEmptyCell) {
    auto meta = tests::makeMeta(1);
    auto result = tests::makeResult({at(9, 31), at(9, 32), at(9, 33), at(9, 34)},
                                    {1.0, TC::kUnsetValue, std::nan(""), 4.0});
    result->mValid[3] = 0;
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(*result, *meta, true), "时间\tL0\n"
                                                                        "2024-03-15 09:31:00\t1\n"
                                                                        "2024-03-15 09:32:00\t\n"
                                                                        "2024-03-15 09:33:00\t\n"
                                                                        "2024-03-15 09:34:00\t\n");
}

TEST(GetResultTxtStr, TextsOfPointsFollowTheValueAndKeepToTheirCell) {
    auto meta = tests::makeMeta(2, {}, {"a\tb", ""});
    auto result = tests::makeResult({at(9, 31)}, Lines{{1.0}, {TC::kUnsetValue}});
    result->mTexts = {{"buy\nnow"}, {"only"}};
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(*result, *meta, true),
              "时间\ta b\t线2\n"
              "2024-03-15 09:31:00\t1 buy now\tonly\n");
}

TEST(GetResultTxtStr, ShortVectorsAndWildLineCountsAreFine) {
    se::RPCFormulaMetaResult meta;
    se::RPCFormulaResult result;
    meta.mLineCount = 2147483647;
    result.mTimes = {at(9, 31), at(9, 32)};
    result.mValues = {{5.0}};
    result.mValid = {1};
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(result, meta, true), "时间\t线1\n"
                                                                      "2024-03-15 09:31:00\t5\n"
                                                                      "2024-03-15 09:32:00\t\n");
    meta.mLineCount = -5;
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(result, meta, false),
              "2024-03-15 09:31:00\n2024-03-15 09:32:00\n");
}

TEST(GetResultTxtStr, SeveralSeriesStandSideBySide) {
    std::vector<se::RPCFormulaMetaResult> metas{*tests::makeMeta(1, {}, {"a"}), *tests::makeMeta(1, {}, {"b"})};
    std::vector<se::RPCFormulaResult> results{*tests::makeResult({at(9, 31), at(9, 32)}, {1.0, 2.0}),
                                              *tests::makeResult({at(13, 1)}, {7.0})};
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(results, metas, true),
              "时间\ta\t时间\tb\n"
              "2024-03-15 09:31:00\t1\t2024-03-15 13:01:00\t7\n"
              "2024-03-15 09:32:00\t2\t\t\n");
}

TEST(GetResultTxtStr, NoSeriesIsNoText) {
    std::vector<se::RPCFormulaMetaResult> metas;
    std::vector<se::RPCFormulaResult> results;
    EXPECT_EQ(TC::IndexBaseData::getResultTxtStr(results, metas, true), "");
}

} // namespace
