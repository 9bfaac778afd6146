#include "tests/chartdata/ProbeFixture.h"

#include "tests/support/Numbers.h"

using namespace tests;
using namespace TC;

namespace {

using Range = QPair<double, double>;

class Scale : public ProbeFixture {
protected:
    Range wanted(const CFormulaKey &key) const { return mData->mMaxMin.value(key, Range(-1.0, -1.0)); }
    static void expectNear(const Range &range, double max, double min) {
        EXPECT_NEAR(range.first, max, 1e-9);
        EXPECT_NEAR(range.second, min, 1e-9);
    }
    /// A strip whose axis has the given ranges, set on the data.
    CGraphAxisWidget &axis(const IndexBaseData::MaxMinMap &ranges) {
        mAxis = std::make_unique<CGraphAxisWidget>(mUiParam, mData, CGraphAxisWidget::eLeft);
        mAxis->setMaxMinMap(ranges);
        mData->setAxisWidget(mAxis.get());
        return *mAxis;
    }
    /// A view of an index whose last close is 11.50.
    void showIndex() {
        mHost.mIndexes.add(QStringLiteral("CDX"));
        mHost.mIndexes.mStored["CDX"] = 11.5;
        mUiParam->setStock(QStringLiteral("CDX"), false);
    }
    void TearDown() override {
        mData->setAxisWidget(nullptr);
        mUiParam->mLeftAxis = nullptr;
    }
    std::unique_ptr<CGraphAxisWidget> mAxis;
    const QRect kPane{0, 0, 400, 300};
};

} // namespace

// Wanted ranges

TEST_F(Scale, AKeyWithoutASeriesChangesNothing) {
    EXPECT_FALSE(mData->updateMaxMin({kStock, QStringLiteral("REALTIME")}, 0));
    EXPECT_TRUE(mData->getMaxMinMap().isEmpty());
}

TEST_F(Scale, APriceThatStaysAtThePreviousCloseGetsTenTicksToEachSide) {
    const CFormulaKey key = putPrice({10.0, 10.0, 10.0});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.1, 9.9);
}

TEST_F(Scale, TheFartherExtremeDecidesOnBothSides) {
    const CFormulaKey key = putPrice({10.0, 10.3, 9.5});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.5, 9.5);
    EXPECT_EQ(mData->getData()[key].max, 10.3);
    EXPECT_EQ(mData->getData()[key].min, 9.5);
}

TEST_F(Scale, WithoutATickTheRangeIsAtLeastAHundredthToEachSide) {
    for (const double tick : {kUnsetValue, kNaN, kInfinity}) {
        mHost.mStocks.add("SH", "600000", 10.0, tick);
        mUiParam->setStock(QString(), false);
        mUiParam->setStock(kStock, false);
        mData->clearData();
        const CFormulaKey key = putPrice({10.0});
        EXPECT_TRUE(mData->updateMaxMin(key, 0));
        expectNear(wanted(key), 10.01, 9.99);
    }
}

TEST_F(Scale, AUserDefinedIndexGetsAtLeastAHundredthToEachSide) {
    showIndex();
    const CFormulaKey key = put(QStringLiteral("CDX"), mUiParam->getBasicFormula(), {11.5, 11.5});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 11.51, 11.49);
}

TEST_F(Scale, APortfolioIsCentredOnItsOwnMiddle) {
    mHost.mStocks.mPortfolios.insert(QStringLiteral("7"));
    mUiParam->setStock(QStringLiteral("7"), false);
    const CFormulaKey key = put(mUiParam->getStock(), mUiParam->getBasicFormula(), {104.0, 100.0});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 104.0, 100.0);
}

TEST_F(Scale, AFormulaThatReplacesTheMainChartIsCentredOnItsOwnMiddle) {
    mHost.mCatalogue.add(QStringLiteral("TWICE"), 2);
    mData->addFormula(QStringLiteral("TWICE"));
    const CFormulaKey key = put(kStock, QStringLiteral("TWICE"), {50.0, 50.0});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 50.01, 49.99);
}

TEST_F(Scale, AnAttachedFormulaIsMeasuredFromThePreviousClose) {
    mHost.mCatalogue.add(QStringLiteral("BOLL"), 1);
    const CFormulaKey key = put(kStock, QStringLiteral("BOLL"), {10.4, 10.2});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.4, 9.6);
}

TEST_F(Scale, AllPriceSeriesOfOneInstrumentShareOneRange) {
    mHost.mCatalogue.add(QStringLiteral("BOLL"), 1);
    const CFormulaKey price = putPrice({10.1});
    const CFormulaKey band = put(kStock, QStringLiteral("BOLL"), {9.2});
    EXPECT_TRUE(mData->updateMaxMin(band, 0));
    expectNear(wanted(band), 10.8, 9.2);
    expectNear(wanted(price), 10.8, 9.2);
}

TEST_F(Scale, AVolumeStartsAtZeroAndTakesNoPartInThePriceRange) {
    const CFormulaKey volume = putVolume({5000.0, 3000.0});
    const CFormulaKey price = putPrice({10.2});
    EXPECT_TRUE(mData->updateMaxMin(volume, 0));
    EXPECT_TRUE(mData->updateMaxMin(price, 0));
    expectNear(wanted(volume), 5000.0, 0.0);
    expectNear(wanted(price), 10.2, 9.8);
}

TEST_F(Scale, ASubPaneTakesTheExtremesOfTheSeriesItself) {
    mData = makeData(EIndexDisplayType::Sub);
    const CFormulaKey key = put(kStock, QStringLiteral("MACD"), {0.5, -0.25, 0.125});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 0.5, -0.25);
}

TEST_F(Scale, ASeriesWithoutValuesChangesNothing) {
    for (const double value : {kUnsetValue, kNaN}) {
        const CFormulaKey key = putPrice({value, value});
        EXPECT_FALSE(mData->updateMaxMin(key, 0));
        const CFormulaKey other = put(kStock, QStringLiteral("BOLL"), {value});
        EXPECT_FALSE(mData->updateMaxMin(other, 0));
    }
    EXPECT_TRUE(mData->getMaxMinMap().isEmpty());
}

TEST_F(Scale, AnUnsetPreviousCloseGivesNoRangeButKeepsTheExtremes) {
    setClose(kStock, kUnsetValue);
    const CFormulaKey key = putPrice({10.2, 9.9});
    EXPECT_FALSE(mData->updateMaxMin(key, 0));
    EXPECT_TRUE(mData->getMaxMinMap().isEmpty());
    EXPECT_EQ(mData->getData()[key].max, 10.2);
    // The extremes are known now, so the same values change nothing even when a close turns up.
    setClose(kStock, 10.0);
    EXPECT_FALSE(mData->updateMaxMin(key, 0));
}

TEST_F(Scale, OnlyPointsFromTheFirstIndexOnAreLookedAt) {
    const CFormulaKey key = putPrice({12.0, 10.2});
    EXPECT_TRUE(mData->updateMaxMin(key, 1));
    expectNear(wanted(key), 10.2, 9.8);
}

TEST_F(Scale, ASeriesThatIsAllZeroAsksForNoRoom) {
    const CFormulaKey key = putPrice({0.0, 0.0});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.1, 9.9);
}

TEST_F(Scale, TheCloseIsThatOfTheTradingDayShown) {
    mHost.mStocks.mCloses[qMakePair(kStock, kDay - 86400)] = 20.0;
    mData->setTradeDate(kDay - 86400);
    const CFormulaKey key = putPrice({20.5});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 20.5, 19.5);
}

// Joint range

TEST_F(Scale, OverlaysOnTheCommonAxisShareTheLargestAmplitude) {
    overlay("SZ", "000001", 20.0, true);
    mUiParam->mGetTradeDateFunc = [] { return kDay; };
    const CFormulaKey other = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {22.0, 20.0});
    const CFormulaKey price = putPrice({10.0, 10.5});
    EXPECT_TRUE(mData->updateMaxMin(other, 0)); // 10 percent, for both
    EXPECT_FALSE(mData->updateMaxMin(price, 0)); // 5 percent lie within
    expectNear(wanted(other), 22.0, 18.0);
    expectNear(wanted(price), 11.0, 9.0);
}

TEST_F(Scale, AnOverlayWithAFreeAxisDoesNotWidenTheMainInstrumentNorTheReverse) {
    overlay("SZ", "000001", 20.0, false);
    mUiParam->mGetTradeDateFunc = [] { return kDay; };
    const CFormulaKey other = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {22.0, 20.0});
    const CFormulaKey price = putPrice({10.0, 10.5});
    EXPECT_TRUE(mData->updateMaxMin(other, 0));
    EXPECT_TRUE(mData->updateMaxMin(price, 0));
    expectNear(wanted(other), 22.0, 18.0);
    expectNear(wanted(price), 10.5, 9.5);
}

TEST_F(Scale, OnALiveDayTheCloseOfAnOverlayIsTheCatalogues) {
    overlay("SZ", "000001", 20.0, true);
    ASSERT_EQ(mUiParam->getLastClose(QStringLiteral("SZ000001")), 0.0);
    const CFormulaKey other = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {21.0});
    EXPECT_TRUE(mData->updateMaxMin(other, 0));
    expectNear(wanted(other), 21.0, 19.0);
}

TEST_F(Scale, AZeroOrUnsetPreviousCloseLeavesAmplitudesUntouched) {
    for (const double close : {0.0, kUnsetValue}) {
        mData->clearData();
        mUiParam->delAllStock();
        setClose(kStock, close);
        overlay("SZ", "000001", 20.0, true);
        const CFormulaKey price = putPrice({100.0});
        const CFormulaKey other = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {21.0});
        mData->updateMaxMin(price, 0);
        mData->updateMaxMin(other, 0);
        expectNear(wanted(other), 21.0, 19.0); // not 100 / 0
    }
}

TEST_F(Scale, AnAllZeroSeriesSetsBackWhatEarlierSeriesGathered) {
    overlay("SZ", "000001", 20.0, true);
    overlay("SZ", "000002", 5.0, true);
    const CFormulaKey price = putPrice({11.0}); // 10 percent, first in key order
    const CFormulaKey zero = put(QStringLiteral("SZ000001"), QStringLiteral("REALTIME"), {0.0});
    const CFormulaKey last = put(QStringLiteral("SZ000002"), QStringLiteral("REALTIME"), {5.1}); // 2 percent
    for (const CFormulaKey &key : {price, zero, last}) {
        mData->mData[key].max = mData->mData[key].min = mData->mData[key].result.mValues[0][0];
    }
    mData->mData[last].max = mData->mData[last].min = kUnsetValue;
    EXPECT_TRUE(mData->updateMaxMin(last, 0));
    expectNear(wanted(price), 10.2, 9.8);
    expectNear(wanted(last), 5.1, 4.9);
}

TEST_F(Scale, LinkageMarksSwitchToTheJointRuleEvenWithoutAnOverlay) {
    mUiParam->mLinkageFlags = 4;
    mUiParam->mLinkageShow[0] = true;
    mUiParam->mLinkageShow[1] = true;
    mHost.mLinkage.mOrderAmplitude = 0.03;
    mHost.mLinkage.mDealAmplitude = 0.05;
    const CFormulaKey key = putPrice({10.1});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.5, 9.5);
}

TEST_F(Scale, AnOverlayWithFewerLinesThanTheMainSeriesIsMeasuredByItsOwn) {
    overlay("SZ", "000001", 20.0, true);
    mData->addFormula(QStringLiteral("REALTIME"));
    mData->request(corvane::ERunMode::Ordinary);
    const auto give = [&](const QString &stock, const FormulaMetaPtr &meta, const FormulaResultPtr &result) {
        mData->onHistoryCallback(meta, result, mData->getReqID({stock, QStringLiteral("REALTIME")}), 1,
                                 QString(), true);
    };
    const auto times = minuteTimes(kDay, 570, 2);
    give(kStock, makeMeta(2), makeResult(times, {10.0, 10.1}, std::vector<double>{10.0, 10.05}));
    give(QStringLiteral("SZ000001"), makeMeta(1), makeResult(times, {20.0, 20.4}));
    expectNear(wanted({QStringLiteral("SZ000001"), QStringLiteral("REALTIME")}), 20.4, 19.6);
}

TEST_F(Scale, RecordsThatAreNotShownDoNotWidenTheJointRange) {
    mUiParam->mLinkageFlags = 4;
    mUiParam->mLinkageShow[0] = true;
    mHost.mLinkage.mOrderAmplitude = 0.03;
    mHost.mLinkage.mDealAmplitude = 0.05;
    const CFormulaKey key = putPrice({10.1});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.3, 9.7);
}

TEST_F(Scale, TheAccountViewLeavesTheSingleRule) {
    mUiParam->mLinkageFlags = 2;
    mUiParam->mLinkageShow[0] = true;
    mHost.mLinkage.mOrderAmplitude = 0.03;
    const CFormulaKey key = putPrice({10.0});
    EXPECT_TRUE(mData->updateMaxMin(key, 0));
    expectNear(wanted(key), 10.1, 9.9);
}

TEST_F(Scale, ASeriesOfNoShownInstrumentTakesNoPartInTheJointRange) {
    overlay("SZ", "000001", 20.0, true);
    const CFormulaKey stranger = put(QStringLiteral("HK09999"), QStringLiteral("REALTIME"), {99.0});
    EXPECT_FALSE(mData->updateMaxMin(stranger, 0));
    EXPECT_TRUE(mData->getMaxMinMap().isEmpty());
}

// Drawn ranges

TEST_F(Scale, ARangeThatWasNeverDrawnIsOutgrown) {
    EXPECT_FALSE(mData->isRangeOutgrown());
    const CFormulaKey key = putPrice({10.0});
    mData->updateMaxMin(key, 0);
    EXPECT_TRUE(mData->isRangeOutgrown());
    mData->adoptMaxMin(mData->getMaxMinMap(), false);
    EXPECT_FALSE(mData->isRangeOutgrown());
}

TEST_F(Scale, InsideTheDrawnRangeNothingIsOutgrown) {
    CFormulaKey key = putPrice({10.0, 10.5});
    mData->updateMaxMin(key, 0);
    mData->adoptMaxMin(mData->getMaxMinMap(), false);
    for (const double value : {9.5, 10.5, 9.7, 10.49}) {
        mData->mData[key].result.mValues[0][1] = value;
        mData->updateMaxMin(key, 1);
        EXPECT_FALSE(mData->isRangeOutgrown());
    }
    mData->mData[key].result.mValues[0][1] = 9.4;
    EXPECT_TRUE(mData->updateMaxMin(key, 1));
    EXPECT_TRUE(mData->isRangeOutgrown());
}

// Rows

TEST_F(Scale, ThePriceChartIsTwoThirdsOfAMainPaneWithVolume) {
    EXPECT_EQ(mData->mainChartHeight(QRect(0, 0, 10, 301)), 200);
    mUiParam->mShowVolume = false;
    EXPECT_EQ(mData->mainChartHeight(QRect(0, 0, 10, 301)), 301);
    mUiParam->mShowVolume = true;
    EXPECT_EQ(makeData(EIndexDisplayType::Sub)->mainChartHeight(QRect(0, 0, 10, 301)), 301);
}

TEST_F(Scale, WithoutAnAxisStripLookUpsFindNothing) {
    putPrice({10.0});
    bool valid = true;
    EXPECT_EQ(mData->valueAtY(10, kPane, &valid), 0.0);
    EXPECT_TRUE(valid);
    EXPECT_EQ(mData->yOfValue(10.0, kPane), -1);
    EXPECT_EQ(mData->valueAtIndex(0), 0.0);
}

TEST_F(Scale, ValueAtIndexIsThatOfTheFirstMainLineOnTheAxis) {
    const CFormulaKey price = putPrice({10.0, 10.5});
    put(QStringLiteral("HK00001"), QStringLiteral("REALTIME"), {77.0, 78.0, 79.0});
    axis({{price, {11.0, 9.0}}, {{QStringLiteral("HK00001"), QStringLiteral("REALTIME")}, {80.0, 70.0}}});
    EXPECT_EQ(mData->valueAtIndex(1), 10.5);
    EXPECT_EQ(mData->valueAtIndex(2), 0.0); // the other instrument is foreign
    EXPECT_EQ(mData->valueAtIndex(-1), 0.0);
}

TEST_F(Scale, ValueAtIndexGoesOnWhenTheFirstSeriesIsTooShort) {
    mHost.mCatalogue.add(QStringLiteral("BAND"), 2);
    const CFormulaKey band = put(kStock, QStringLiteral("BAND"), {9.0});
    const CFormulaKey price = putPrice({10.0, 10.5});
    axis({{band, {11.0, 9.0}}, {price, {11.0, 9.0}}});
    EXPECT_EQ(mData->valueAtIndex(0), 9.0);
    EXPECT_EQ(mData->valueAtIndex(1), 10.5);
}

TEST_F(Scale, YOfValueMeasuresInTheGivenRectangle) {
    const CFormulaKey price = putPrice({10.0});
    axis({{price, {11.0, 9.0}}});
    EXPECT_EQ(mData->yOfValue(10.5, QRect(0, 0, 400, 200)), 50);
    EXPECT_EQ(mData->yOfValue(11.0, QRect(0, 0, 400, 200)), 0);
    EXPECT_EQ(mData->yOfValue(kNaN, QRect(0, 0, 400, 200)), -1);
}

TEST_F(Scale, YAtIndexMeasuresInThePriceChart) {
    const CFormulaKey price = putPrice({10.0, 10.5});
    mUiParam->mLeftAxis = &axis({{price, {11.0, 9.0}}});
    EXPECT_EQ(mData->yAtIndex(1, kPane), 50); // 200 rows of 300
    EXPECT_EQ(mData->yAtIndex(2, kPane), -1);
    EXPECT_EQ(mData->yAtIndex(-1, kPane), -1);
}

TEST_F(Scale, YAtIndexReplacesTheWantedRangesByThoseOfTheSharedStrip) {
    const CFormulaKey price = putPrice({10.0, 10.5});
    mData->updateMaxMin(price, 0);
    mData->mMaxMin.insert({kStock, QStringLiteral("GONE")}, {2.0, 1.0});
    mUiParam->mLeftAxis = &axis({{price, {12.0, 8.0}}});
    mData->yAtIndex(0, kPane);
    EXPECT_EQ(mData->getMaxMinMap(), (IndexBaseData::MaxMinMap{{price, {12.0, 8.0}}}));
}

TEST_F(Scale, YAtIndexWithoutASharedStripTakesTheWantedRanges) {
    const CFormulaKey price = putPrice({10.0, 10.5});
    mData->updateMaxMin(price, 0); // 10.5 to 9.5
    EXPECT_EQ(mData->yAtIndex(0, kPane), 100);
}

TEST_F(Scale, AFlatRangeHasNoRows) {
    const CFormulaKey price = putPrice({10.0});
    mUiParam->mLeftAxis = &axis({{price, {10.0, 10.0}}});
    EXPECT_EQ(mData->yOfValue(10.0, kPane), -1);
    EXPECT_EQ(mData->yAtIndex(0, kPane), -1);
    EXPECT_EQ(mData->valueAtY(10, kPane, nullptr), 10.0);
}

TEST_F(Scale, ValueAtYReadsThePriceAboveAndTheVolumeBelow) {
    const CFormulaKey price = putPrice({10.0});
    const CFormulaKey volume = putVolume({5000.0});
    axis({{price, {11.0, 9.0}}, {volume, {5000.0, 0.0}}});
    bool valid = true;
    EXPECT_DOUBLE_EQ(mData->valueAtY(50, kPane, &valid), 10.5);
    EXPECT_TRUE(valid);
    EXPECT_DOUBLE_EQ(mData->valueAtY(200, kPane, &valid), 9.0); // the last price row
    EXPECT_TRUE(valid);
    EXPECT_DOUBLE_EQ(mData->valueAtY(225, kPane, &valid), 3750.0); // row 25 of 100
    EXPECT_FALSE(valid);
}

TEST_F(Scale, ValueAtYOfASubPaneIsNotAPercentage) {
    mData = makeData(EIndexDisplayType::Sub);
    const CFormulaKey key = put(kStock, QStringLiteral("MACD"), {0.5});
    axis({{key, {1.0, -1.0}}});
    bool valid = true;
    EXPECT_DOUBLE_EQ(mData->valueAtY(75, kPane, &valid), 0.5);
    EXPECT_FALSE(valid);
    EXPECT_DOUBLE_EQ(mData->valueAtY(75, kPane, nullptr), 0.5);
}

TEST_F(Scale, ValueAtYWithoutADecidingSeriesIsZero) {
    const CFormulaKey price = putPrice({10.0});
    axis({{price, {11.0, 9.0}}});
    bool valid = true;
    EXPECT_EQ(mData->valueAtY(250, kPane, &valid), 0.0);
    EXPECT_FALSE(valid);
    EXPECT_EQ(mData->valueAtY(0, QRect(0, 0, 10, 0), &valid), 0.0);
}

TEST_F(Scale, AnIndexViewKnowsNoForeignInstruments) {
    showIndex();
    const CFormulaKey key = put(QStringLiteral("HK00001"), mUiParam->getBasicFormula(), {77.0});
    axis({{key, {80.0, 70.0}}});
    EXPECT_EQ(mData->yOfValue(75.0, QRect(0, 0, 400, 200)), 100);
}
