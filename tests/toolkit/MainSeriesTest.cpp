#include "host/services/MainSeries.h"

#include "host/drawing/DrawStyles.h"

#include <gtest/gtest.h>

using namespace TC;

namespace {

const QString kMainPrice = QStringLiteral("REALTIME");
const QString kMainVolume = QStringLiteral("RealtimeVol"); // letter case does not count

/// Opens at 10, closes at 10.2, 10.1 and, without a trade, 10.1.
std::vector<MinuteBar> threeBars() {
    return {{60000, 10.0, 10.2, 100.0, 1010.0},
            {120000, 10.2, 10.1, 300.0, 3050.0},
            {180000, 10.1, 10.1, 0.0, 0.0}};
}

} // namespace

TEST(MainSeries, PriceAndMeanPriceOfTheDaySoFar) {
    const FormulaResultPtr result = MainSeries::result(kMainPrice, threeBars());
    ASSERT_TRUE(result);
    EXPECT_EQ(result->mTimes, (std::vector<se::TimePosition>{{60000, 0}, {120000, 0}, {180000, 0}}));
    ASSERT_EQ(result->mValues.size(), 2u);
    EXPECT_EQ(result->mValues[0], (std::vector<double>{10.2, 10.1, 10.1}));
    EXPECT_DOUBLE_EQ(result->mValues[1][0], 10.1); // 1010 / 100
    EXPECT_DOUBLE_EQ(result->mValues[1][1], 10.15); // 4060 / 400
    EXPECT_DOUBLE_EQ(result->mValues[1][2], 10.15);
}

TEST(MainSeries, BeforeTheFirstTradeTheMeanPriceIsTheClose) {
    const FormulaResultPtr result = MainSeries::result(kMainPrice, {{60000, 9.0, 9.5, 0.0, 0.0}});
    EXPECT_EQ(result->mValues[1], std::vector<double>{9.5});
}

TEST(MainSeries, VolumesAreColouredByTheChangeOfTheClose) {
    const FormulaResultPtr result = MainSeries::result(kMainVolume, threeBars());
    ASSERT_TRUE(result);
    EXPECT_EQ(result->mValues, (std::vector<std::vector<double>>{{100.0, 300.0, 0.0}}));
    ASSERT_EQ(result->mExtra2.size(), 1u);
    EXPECT_NEAR(result->mExtra2[0][0], 0.2, 1e-9) << "against its open";
    EXPECT_NEAR(result->mExtra2[0][1], -0.1, 1e-9) << "against the minute before";
    EXPECT_EQ(result->mExtra2[0][2], 0.0);
}

TEST(MainSeries, DescriptionAndPointsHaveTheShapesOfEachOther) {
    for (const QString &formula : {kMainPrice, kMainVolume}) {
        const FormulaMetaPtr meta = MainSeries::meta(formula);
        const FormulaResultPtr result = MainSeries::result(formula, threeBars());
        const auto lines = static_cast<std::size_t>(meta->mLineCount);
        EXPECT_EQ(meta->mLineNames.size(), lines);
        EXPECT_EQ(meta->mLineStyles.size(), lines);
        EXPECT_EQ(result->mValues.size(), lines);
        EXPECT_EQ(result->mExtra1.size(), lines);
        EXPECT_EQ(result->mTexts.size(), lines);
        EXPECT_EQ(result->mExtra2.size(), lines);
        EXPECT_EQ(result->mValid, std::vector<qint32>(3, 1));
    }
    EXPECT_EQ(MainSeries::meta(kMainVolume)->mLineStyles[0], eColorStickStyle);
}

TEST(MainSeries, TheLastPointIsThatOfTheWholeSeries) {
    const FormulaInstantPtr price = MainSeries::lastPoint(kMainPrice, threeBars());
    ASSERT_TRUE(price);
    EXPECT_EQ(price->mTime, (se::TimePosition{180000, 0}));
    ASSERT_EQ(price->mValues.size(), 2u);
    EXPECT_EQ(price->mValues[0], 10.1);
    EXPECT_DOUBLE_EQ(price->mValues[1], 10.15);
    const FormulaInstantPtr volume = MainSeries::lastPoint(
        kMainVolume, {{60000, 10.0, 10.2, 100.0, 1010.0}, {120000, 10.2, 10.1, 300.0, 3050.0}});
    EXPECT_EQ(volume->mValues, std::vector<double>{300.0});
    EXPECT_NEAR(volume->mExtra2[0], -0.1, 1e-9);
}

namespace {

void expectSamePoint(const FormulaInstantPtr &point, const FormulaResultPtr &whole, std::size_t index) {
    ASSERT_TRUE(point);
    EXPECT_EQ(point->mTime, whole->mTimes[index]);
    ASSERT_EQ(point->mValues.size(), whole->mValues.size());
    ASSERT_EQ(point->mExtra1.size(), whole->mExtra1.size());
    ASSERT_EQ(point->mTexts.size(), whole->mTexts.size());
    ASSERT_EQ(point->mExtra2.size(), whole->mExtra2.size());
    for (std::size_t line = 0; line < whole->mValues.size(); ++line) {
        EXPECT_DOUBLE_EQ(point->mValues[line], whole->mValues[line][index]);
        EXPECT_EQ(point->mExtra1[line], whole->mExtra1[line][index]);
        EXPECT_EQ(point->mTexts[line], whole->mTexts[line][index]);
        EXPECT_DOUBLE_EQ(point->mExtra2[line], whole->mExtra2[line][index]);
    }
}

} // namespace

TEST(MainDay, EachPointIsThatOfTheWholeSeries) {
    MainDay day;
    for (std::size_t i = 0; i < threeBars().size(); ++i) {
        ASSERT_TRUE(day.add(threeBars()[i]));
        for (const QString &formula : {kMainPrice, kMainVolume}) {
            expectSamePoint(day.lastPoint(formula), MainSeries::result(formula, threeBars()), i);
            EXPECT_EQ(day.result(formula)->mTimes.size(), i + 1);
        }
    }
}

TEST(MainDay, ABarOfTheSameMinuteStandsInThePlaceOfTheLast) {
    MainDay day;
    day.add({60000, 10.0, 10.0, 100.0, 1000.0});
    day.add({120000, 10.0, 11.0, 100.0, 1100.0});
    day.add({120000, 10.0, 12.0, 300.0, 3600.0}); // the minute has gone on
    ASSERT_EQ(day.bars().size(), 2u);
    const FormulaInstantPtr price = day.lastPoint(kMainPrice);
    EXPECT_EQ(price->mValues[0], 12.0);
    EXPECT_DOUBLE_EQ(price->mValues[1], 11.5); // 4600 / 400
    EXPECT_EQ(day.lastPoint(kMainVolume)->mExtra2[0], 2.0) << "against the minute before";
}

TEST(MainDay, ABarOfAnEarlierMinuteIsLeftOut) {
    MainDay day;
    day.add({120000, 10.0, 11.0, 100.0, 1100.0});
    EXPECT_FALSE(day.add({60000, 9.0, 9.0, 900.0, 8100.0}));
    EXPECT_EQ(day.bars().size(), 1u);
    EXPECT_DOUBLE_EQ(day.lastPoint(kMainPrice)->mValues[1], 11.0);
}

TEST(MainDay, NothingIsMadeOfNothing) {
    MainDay day;
    EXPECT_FALSE(day.lastPoint(kMainPrice));
    ASSERT_TRUE(day.result(kMainPrice));
    EXPECT_TRUE(day.result(kMainPrice)->mTimes.empty());
    day.add(threeBars()[0]);
    EXPECT_FALSE(day.lastPoint(QStringLiteral("MACD")));
}

TEST(MainSeries, NothingIsMadeOfNothing) {
    EXPECT_FALSE(MainSeries::lastPoint(kMainPrice, {}));
    ASSERT_TRUE(MainSeries::result(kMainPrice, {}));
    EXPECT_TRUE(MainSeries::result(kMainPrice, {})->mTimes.empty());
    const QString other = QStringLiteral("MACD");
    EXPECT_FALSE(MainSeries::isMain(other));
    EXPECT_FALSE(MainSeries::meta(other));
    EXPECT_FALSE(MainSeries::result(other, threeBars()));
    EXPECT_FALSE(MainSeries::lastPoint(other, threeBars()));
}
