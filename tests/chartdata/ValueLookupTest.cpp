// Between values, indices and rows: a range of 9 to 11 over 200 rows has a hundredth a row, 11 at the top.

#include "chartdata/ValueLookup.h"
#include "tests/chartdata/PartsFixture.h"

using namespace TC;

namespace tests {
namespace {

class Lookup : public PartsFixture {
protected:
    Lookup() {
        mView.mShowVolume = false;
        store(kPriceKey, {10.0, 10.5, 9.6});
        mAxis.set(mScale);
    }
    void onAxis(const IndexBaseData::MaxMinMap &ranges) {
        AxisShown shown;
        shown.ranges = ranges;
        mScale->show(shown);
    }
    double valueAt(int index) {
        return mLookup.valueAtIndex(index, [](const QString &) { return true; });
    }

    const CFormulaKey kPriceKey = key("SH600000");
    const CFormulaKey kVolumeKey = key("SH600000", "REALTIMEVOL");
    const CFormulaKey kOtherKey = key("SZ000001");
    const QRect kWholePane{0, 0, 300, 200};
    const QRect kPaneWithVolume{0, 0, 300, 300}; ///< 200 rows of prices, 100 of volumes
    std::shared_ptr<AxisScale> mScale = std::make_shared<AxisScale>();
    ValueLookup mLookup{mView, EIndexDisplayType::Main, mShown, mAxis, mWanted};
};

TEST_F(Lookup, WithoutAnAxisThereIsNothing) {
    mScale.reset();
    bool valid = true;
    EXPECT_EQ(valueAt(1), 0.0);
    EXPECT_EQ(mLookup.valueAtY(50, kWholePane, &valid), 0.0);
    EXPECT_TRUE(valid);
    EXPECT_EQ(mLookup.priceRange(), ValueRange(0.0, 0.0));
    EXPECT_EQ(mLookup.yOfValue(10.0, kWholePane), -1);
}

TEST_F(Lookup, ValueAtAnIndexIsThatOfASeriesOnTheAxis) {
    EXPECT_EQ(valueAt(1), 0.0) << "not on the axis";
    onAxis({{kPriceKey, {11.0, 9.0}}});
    EXPECT_EQ(valueAt(0), 10.0);
    EXPECT_EQ(valueAt(2), 9.6);
    EXPECT_EQ(valueAt(3), 0.0) << "behind the newest point";
    EXPECT_EQ(valueAt(-1), 0.0);
    EXPECT_EQ(mLookup.valueAtIndex(1, [](const QString &) { return false; }), 0.0) << "no main graph";
}

TEST_F(Lookup, SubPaneAsksForNoMainGraph) {
    onAxis({{kPriceKey, {11.0, 9.0}}});
    const ValueLookup below(mView, EIndexDisplayType::Sub, mShown, mAxis, mWanted);
    EXPECT_EQ(below.valueAtIndex(1, [](const QString &) { return false; }), 10.5);
}

TEST_F(Lookup, AnotherInstrumentHasNeitherValueNorRange) {
    store(kOtherKey, {20.0, 20.4});
    mShown.remove(kPriceKey);
    onAxis({{kOtherKey, {21.0, 19.0}}});
    EXPECT_EQ(valueAt(1), 0.0);
    EXPECT_EQ(mLookup.priceRange(), ValueRange(0.0, 0.0));
    EXPECT_EQ(mLookup.valueAtY(50, kWholePane, nullptr), 0.0);
}

TEST_F(Lookup, RowsOfValuesAndValuesOfRows) {
    onAxis({{kPriceKey, {11.0, 9.0}}});
    EXPECT_EQ(mLookup.priceRange(), ValueRange(11.0, 9.0));
    EXPECT_EQ(mLookup.yOfValue(11.0, kWholePane), 0);
    EXPECT_EQ(mLookup.yOfValue(10.5, kWholePane), 50);
    EXPECT_EQ(mLookup.yOfValue(9.0, kWholePane), 200);
    bool valid = true;
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(50, kWholePane, &valid), 10.5);
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(150, kWholePane, nullptr), 9.5);
    EXPECT_TRUE(valid);
}

TEST_F(Lookup, RowsBeneathThePricesAreThoseOfTheVolume) {
    mView.mShowVolume = true;
    EXPECT_EQ(mLookup.mainChartHeight(kPaneWithVolume), 200);
    onAxis({{kPriceKey, {11.0, 9.0}}});
    bool valid = true;
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(50, kPaneWithVolume, &valid), 10.5);
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(200, kPaneWithVolume, &valid), 9.0) << "the last row of prices";
    EXPECT_TRUE(valid);
    EXPECT_EQ(mLookup.valueAtY(250, kPaneWithVolume, &valid), 0.0) << "no volume has come";
    EXPECT_FALSE(valid);
    store(kVolumeKey, {500.0, 1000.0});
    onAxis({{kPriceKey, {11.0, 9.0}}, {kVolumeKey, {1000.0, 0.0}}});
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(250, kPaneWithVolume, nullptr), 500.0);
    EXPECT_DOUBLE_EQ(mLookup.valueAtY(225, kPaneWithVolume, nullptr), 750.0);
}

TEST_F(Lookup, ValueOfASubPaneTakesAllItsRowsAndSaysLittle) {
    const CFormulaKey macd = key("SH600000", "MACD");
    mShown.clear();
    store(macd, {1.0});
    onAxis({{macd, {4.0, -4.0}}});
    const ValueLookup below(mView, EIndexDisplayType::Sub, mShown, mAxis, mWanted);
    bool valid = true;
    EXPECT_DOUBLE_EQ(below.valueAtY(50, kWholePane, &valid), 2.0);
    EXPECT_FALSE(valid);
}

TEST_F(Lookup, RowAtAnIndexGoesByTheRangeOfTheLeftStrip) {
    EXPECT_EQ(mLookup.yAtIndex(1, kWholePane), -1) << "no range is wanted";
    mWanted = {{kPriceKey, {11.0, 9.0}}};
    EXPECT_EQ(mLookup.yAtIndex(1, kWholePane), 50);
    EXPECT_EQ(mLookup.yAtIndex(3, kWholePane), -1);
    EXPECT_EQ(mLookup.yAtIndex(-1, kWholePane), -1);
    const int place = 0; // its address stands for a strip, which nobody looks into
    mView.mLeftAxis = reinterpret_cast<CGraphAxisWidget *>(const_cast<int *>(&place));
    mView.mStripScales.enter(mView.mLeftAxis, mScale);
    onAxis({{kPriceKey, {12.0, 8.0}}});
    EXPECT_EQ(mLookup.yAtIndex(1, kWholePane), 75);
    EXPECT_EQ(mWanted, (IndexBaseData::MaxMinMap{{kPriceKey, {12.0, 8.0}}})) << "wanted from then on";
    mView.mLeftAxis = nullptr;
}

} // namespace
} // namespace tests
