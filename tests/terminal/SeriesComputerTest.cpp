#include "terminal/formula/SeriesComputer.h"

#include "tests/terminal/Samples.h"

#include <gtest/gtest.h>

using namespace terminal;
using tests::pricedMinute;

namespace {

/// One line: the price plus the price of another instrument at the same time.
class SumProgram : public FormulaProgram {
public:
    se::RPCFormulaMetaResult describe() const override {
        se::RPCFormulaMetaResult meta;
        meta.mLineCount = 1;
        return meta;
    }
    se::RPCFormulaResult evaluate(const MinuteBars &bars) const override {
        se::RPCFormulaResult result;
        result.mValues.resize(1);
        result.mExtra1.resize(1);
        result.mTexts.resize(1);
        result.mExtra2.resize(1);
        for (const MinuteBar &bar : bars) {
            double sum = bar.price;
            for (const MinuteBar &other : mOther) {
                sum += other.time == bar.time ? other.price : 0.0;
            }
            result.mTimes.emplace_back(bar.time, 0);
            result.mValid.push_back(1);
            result.mPointTags.push_back(0);
            result.mValues[0].push_back(sum);
            result.mExtra1[0].push_back(se::kDefaultColor);
            result.mTexts[0].emplace_back();
            result.mExtra2[0].push_back(0.0);
        }
        return result;
    }
    QString underlying() const override { return QStringLiteral("SH601009"); }
    void setUnderlying(const MinuteBars &bars) override { mOther = bars; }

private:
    MinuteBars mOther;
};

} // namespace

TEST(SeriesComputer, WithoutAProgramTheSeriesIsEmpty) {
    const SeriesComputer computer;
    EXPECT_FALSE(computer.hasProgram());
    EXPECT_TRUE(computer.underlying().isEmpty());
    EXPECT_TRUE(computer.series({{}, {pricedMinute(60, 1)}}).result.mTimes.empty());
}

TEST(SeriesComputer, APositionBeforeTheFirstBarHasAPointThatIsNotValid) {
    const SeriesComputer computer(std::make_unique<SumProgram>());
    const FormulaSeries series = computer.series({{60, 120}, {pricedMinute(180, 3)}});
    ASSERT_EQ(series.result.mTimes.size(), 3u);
    EXPECT_EQ(series.result.mTimes[0].first, 60);
    EXPECT_EQ(series.result.mTimes[2].first, 180);
    EXPECT_EQ(series.result.mValid[0], 0);
    EXPECT_EQ(series.result.mValid[1], 0);
    EXPECT_NE(series.result.mValid[2], 0);
    EXPECT_EQ(series.result.mValues[0][0], TC::kUnsetValue);
    EXPECT_EQ(series.result.mValues[0][2], 3.0);
}

TEST(SeriesComputer, AListThatALineDoesNotHaveIsNotPadded) {
    se::RPCFormulaResult series;
    series.mTimes = {{180, 0}};
    series.mValid = {1};
    series.mValues = {{3.0}};
    series.mTexts = {{}, {"x"}};
    padSeries(series, {60, 120});
    EXPECT_EQ(series.mTexts, (std::vector<std::vector<std::string>>{{}, {"", "", "x"}}));
    EXPECT_TRUE(series.mPointTags.empty());
}

TEST(SeriesComputer, AnEmptySeriesIsNotPadded) {
    const SeriesComputer computer(std::make_unique<SumProgram>());
    EXPECT_TRUE(computer.series({{60, 120}, {}}).result.mTimes.empty());
}

TEST(SeriesComputer, TheLastPointIsThatOfTheLastBar) {
    SeriesComputer computer(std::make_unique<SumProgram>());
    computer.setUnderlying({pricedMinute(120, 10)});
    const se::RPCFormulaInstantResult point =
        computer.lastPoint({{}, {pricedMinute(60, 1), pricedMinute(120, 2)}});
    EXPECT_EQ(point.mTime.first, 120);
    EXPECT_EQ(point.mValues, (std::vector<double>{12.0}));
}

TEST(SeriesComputer, AChangeOfTheOtherInstrumentConcernsTheMinutesFromItsOwnOn) {
    const MinuteBars placed{pricedMinute(60, 1), pricedMinute(120, 2), pricedMinute(180, 3)};
    SeriesComputer computer(std::make_unique<SumProgram>());
    computer.setUnderlying({pricedMinute(60, 10)});
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(240, 20), placed), SeriesChange::None) << "still to come";
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(180, 20), placed), SeriesChange::LastPoint);
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(180, 20), placed), SeriesChange::None) << "the same bar";
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(120, 20), placed), SeriesChange::Whole);
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(60, 30), {pricedMinute(60, 1)}), SeriesChange::LastPoint)
        << "the only one";
    EXPECT_EQ(computer.takeUnderlying(pricedMinute(60, 40), {}), SeriesChange::None);
    EXPECT_EQ(computer.series({{}, placed}).result.mValues[0], (std::vector<double>{41.0, 22.0, 23.0}));
}
