// Formulas that read the instrument under their own.

#include "host/services/CStockManager.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/SimulatedDay.h"
#include "tests/terminal/FormulaBars.h"
#include "tests/terminal/FormulaServiceFixture.h"
#include "tests/terminal/StoreFixture.h"

#include <random>

using namespace terminal;
using namespace tests;

namespace {

FormulaInputs overUnderlying() {
    FormulaInputs inputs;
    inputs.underlying = "SH000300";
    inputs.underlyingClose = 4000.0;
    inputs.previousNetValue = 2.0;
    return inputs;
}

MinuteBars pricesAt(const std::vector<std::pair<int, double>> &prices) {
    MinuteBars bars;
    for (const auto &[minute, price] : prices) {
        bars.push_back(flatBar(minute, price));
    }
    return bars;
}

std::vector<double> firstLine(const FormulaProgram &program, const MinuteBars &bars) {
    return program.evaluate(bars).mValues.at(0);
}

} // namespace

TEST(Underlying, AMinuteHasTheUnderlyingsLastPriceUpToItsOwnEnd) {
    const auto program = makeLuaFormula(formulaOf("return UCLOSE"), overUnderlying());
    program->setUnderlying(pricesAt({{1, 4000}, {3, 4010}, {5, 4020}}));
    const MinuteBars own = pricesAt({{0, 10}, {1, 10}, {2, 10}, {4, 10}, {5, 10}, {7, 10}});
    EXPECT_EQ(firstLine(*program, own), (std::vector<double>{TC::kUnsetValue, 4000, 4000, 4010, 4020, 4020}));
}

TEST(Underlying, NumbersOfTheDayBeforeAreKnown) {
    const auto program = makeLuaFormula(formulaOf("return PREVNAV * UCLOSE / UPREVCLOSE"), overUnderlying());
    program->setUnderlying(pricesAt({{0, 4040}, {1, 3960}}));
    EXPECT_EQ(firstLine(*program, pricesAt({{0, 10}, {1, 10}})), (std::vector<double>{2.02, 1.98}));
}

TEST(Underlying, AnInstrumentWithoutOneHasNoValues) {
    ErrorLog log;
    const auto program = makeLuaFormula(formulaOf("return UCLOSE + UPREVCLOSE + PREVNAV"), {}, log.sink());
    EXPECT_EQ(program->underlying(), QString());
    EXPECT_EQ(firstLine(*program, pricesAt({{0, 10}})), (std::vector<double>{TC::kUnsetValue}));
    EXPECT_TRUE(log.errors.empty());
}

TEST(Underlying, OnlyAFormulaThatReadsItAsksForIt) {
    EXPECT_EQ(makeLuaFormula(formulaOf("return CLOSE"), overUnderlying())->underlying(), QString());
    EXPECT_EQ(makeLuaFormula(formulaOf("local unused = UCLOSE\nreturn #CLOSE"), overUnderlying())->underlying(),
              "SH000300");
    EXPECT_EQ(makeLuaFormula(formulaOf("return CLOSE / UCLOSE"), overUnderlying())->underlying(), "SH000300");
    EXPECT_EQ(makeLuaFormula(formulaOf("return #CLOSE"), overUnderlying())->underlying(), QString());
}

TEST(Underlying, SingleValuesOfItCanBeRead) {
    ErrorLog log;
    const auto program = makeLuaFormula(formulaOf("local out = {}\n"
                                                  "for i = 1, #CLOSE do out[i] = UCLOSE[i] * 2 end\n"
                                                  "return out"),
                                        overUnderlying(), log.sink());
    ASSERT_EQ(program->underlying(), "SH000300");
    program->setUnderlying(pricesAt({{0, 4000}, {1, 4010}}));
    EXPECT_EQ(firstLine(*program, pricesAt({{0, 10}, {1, 10}})), (std::vector<double>{8000, 8020}));
    EXPECT_TRUE(log.errors.empty());
}

TEST(Underlying, ItsTicksGiveWhatAWholeRunGives) {
    const LuaFormulaFile file = formulaOf("return EMA(UCLOSE, 5) - REF(UCLOSE, 2) + MA(CLOSE / UCLOSE, 3)");
    std::mt19937 draw(5);
    const auto program = makeLuaFormula(file, overUnderlying());
    MinuteBars own, index;
    for (int i = 0; i < 400; ++i) {
        MinuteBars &bars = draw() % 2 == 0 ? own : index;
        if (bars.empty() || draw() % 3 == 0) {
            bars.push_back(flatBar(static_cast<int>(bars.size()), 10.0));
        }
        // Now and then an earlier minute of the underlying is revised.
        const bool revised = &bars == &index && draw() % 10 == 0;
        MinuteBar &changed = revised ? bars[draw() % bars.size()] : bars.back();
        changed.price += 0.01 * static_cast<double>(draw() % 7);
        if (own.empty()) {
            continue;
        }
        program->setUnderlying(index);
        const auto anew = makeLuaFormula(file, overUnderlying());
        anew->setUnderlying(index);
        const se::RPCFormulaResult whole = anew->evaluate(own);
        ASSERT_EQ(program->evaluateLast(own).mValues[0], whole.mValues[0].back()) << i;
        ASSERT_EQ(program->evaluate(own).mValues, whole.mValues) << i;
    }
}

namespace {

/// A service whose formula "U" is the underlying's price, and "C" the price.
class UnderlyingStreamTest : public FormulaServiceFixture {
protected:
    UnderlyingStreamTest() {
        mFeed.setBars("SH000300", kToday, {bar(kOpen, 4000, 4000, 1), bar(kOpen + kMinute, 4010, 4000, 1)});
        const auto file = [](const TC::CFormulaParam &param) -> std::optional<LuaFormulaFile> {
            return formulaOf(param.mFormulaName == "U" ? "return UCLOSE" : "return CLOSE");
        };
        mService = std::make_unique<FormulaService>(
            mFeed, luaFormulaMaker(file, [](const TC::CFormulaParam &) { return overUnderlying(); }),
            [](const TC::CFormulaParam &request) { return static_cast<int>(request.mStart.first / 1000); });
    }
    std::vector<double> lastSeries() const { return mReceived.last().result->mValues.at(0); }
};

} // namespace

TEST_F(UnderlyingStreamTest, ATickOfTheUnderlyingMovesTheLastPoint) {
    request({param("a", "U")});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(lastSeries(), (std::vector<double>{4000, 4010}));
    mFeed.change("SH000300", bar(kOpen + kMinute, 4011, 4000, 2));
    ASSERT_TRUE(waitForResults(2));
    ASSERT_EQ(mReceived[1].kind, Received::Point);
    EXPECT_EQ(mReceived[1].point->mTime, (se::TimePosition{kOpen + kMinute, 0}));
    EXPECT_EQ(mReceived[1].point->mValues, (std::vector<double>{4011}));
}

TEST_F(UnderlyingStreamTest, AMinuteOfTheUnderlyingThatIsAheadCountsFromTheOwnOneOn) {
    request({param("a", "U")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH000300", bar(kOpen + 2 * kMinute, 4022, 4000, 2));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    ASSERT_TRUE(waitForResults(2));
    ASSERT_EQ(mReceived[1].kind, Received::Point);
    EXPECT_EQ(mReceived[1].point->mTime, (se::TimePosition{kOpen + 2 * kMinute, 0}));
    EXPECT_EQ(mReceived[1].point->mValues, (std::vector<double>{4022}));
}

TEST_F(UnderlyingStreamTest, ARevisedMinuteOfTheUnderlyingBringsTheWholeSeries) {
    request({param("a", "U")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH000300", bar(kOpen, 3999, 4000, 2));
    ASSERT_TRUE(waitForResults(2));
    ASSERT_EQ(mReceived[1].kind, Received::History);
    EXPECT_EQ(lastSeries(), (std::vector<double>{3999, 4010}));
}

TEST_F(UnderlyingStreamTest, ListenersComeWithTheFormulasThatReadItAndGoWithTheirRequests) {
    request({param("c", "C")});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mFeed.listeners(), 1);
    request({param("u", "U")});
    ASSERT_TRUE(waitForResults(2));
    EXPECT_EQ(mFeed.listeners(), 3);
    mService->unrequestFormulas({"u", "c"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == 0; }, 10000));
}

TEST_F(UnderlyingStreamTest, HistoryAloneAndSynchronousRequestsKnowItToo) {
    request({param("a", "U", 1)});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(lastSeries(), (std::vector<double>{4000, 4010}));
    EXPECT_EQ(mFeed.listeners(), 0);
    QVector<TC::CFormulaParam> params{param("b", "U")};
    std::vector<TC::FormulaMetaPtr> metas;
    std::vector<TC::FormulaResultPtr> results;
    mService->requestFormulasSync(params, metas, results);
    EXPECT_EQ(results.at(0)->mValues.at(0), (std::vector<double>{4000, 4010}));
}

TEST(SimulatedNetValue, LiesNearTheCloseOfTheDayBeforeAndIsFixedForAFundAndADay) {
    bool differs = false;
    for (int day = kYesterday; day < kYesterday + 50 * 86400; day += 86400) {
        const double value = simulatedNetValue("SH510300", day, 4.0);
        EXPECT_NEAR(value, 4.0, 4.0 * 0.00201 + 0.00005);
        EXPECT_NEAR(value * 10000, std::round(value * 10000), 1e-6) << "four decimals";
        EXPECT_EQ(value, simulatedNetValue("SH510300", day, 4.0));
        differs = differs || value != simulatedNetValue("SZ159915", day, 4.0);
    }
    EXPECT_TRUE(differs);
}

namespace {

/// The terminal's own services in the middle of a trading day.
class FundNetValueTest : public StoreFixture {
protected:
    void SetUp() override {
        openFilledStore(timeOf(mToday, 630));
        TerminalSettings settings;
        settings.store = storePath();
        settings.start = timeOf(mToday, 630);
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mServices->clock().pause();
    }
    TC::CFormulaParam param(const QString &formula, const QString &market, const QString &code) const {
        TC::CFormulaParam made;
        made.mRequestId = (formula + code).toStdString();
        made.mMarket = market;
        made.mCode = code;
        made.mFormulaName = formula;
        made.mPeriod = 60000;
        made.mDataMode = 1;
        made.mDataDemand = 3;
        int day = dayOf(mToday);
        auto &stocks = TC::CSingletonT<TC::CStockManager>::instance();
        const auto bounds = stocks.getStartEndTime(stocks.getInstrumentDetail(market + code), day);
        made.mStart = {bounds.first, 0};
        made.mEnd = {bounds.second, 0};
        return made;
    }
    double closeBefore(const QString &key) const {
        auto &stocks = TC::CSingletonT<TC::CStockManager>::instance();
        return stocks.getCurrentDateLastClose(stocks.getInstrumentDetail(key), dayOf(mToday));
    }

    const QDate mToday{2026, 11, 20};
    std::unique_ptr<TerminalServices> mServices;
};

} // namespace

TEST_F(FundNetValueTest, AFundsNetValueMovesWithItsIndexOnARunningDay) {
    std::vector<double> series, indexes;
    std::map<qint64, double> points;
    QVector<TC::CFormulaParam> wanted{param("IOPV", "SH", "510300")};
    mServices->formulas().requestFormulas(
        wanted,
        [&](const auto &, const TC::FormulaResultPtr &result, const QString &, int, const QString &, bool) {
            series = series.empty() ? result->mValues.at(0) : series;
        },
        [&](int, const QString &, const TC::FormulaInstantPtr &point) {
            points[point->mTime.first] = point->mValues.at(0);
        });
    ASSERT_TRUE(QTest::qWaitFor([&] { return series.size() > 30; }, 20000));

    QVector<TC::CFormulaParam> index{param("REALTIME", "SH", "000300")};
    std::vector<TC::FormulaMetaPtr> metas;
    std::vector<TC::FormulaResultPtr> results;
    mServices->formulas().requestFormulasSync(index, metas, results);
    indexes = results.at(0)->mValues.at(0);
    const double close = closeBefore("SH000300");
    const double netValue = simulatedNetValue("SH510300", dayOf(mToday), closeBefore("SH510300"));
    ASSERT_GE(indexes.size(), series.size());
    for (size_t i = 0; i < series.size(); ++i) {
        EXPECT_NEAR(series[i], netValue * indexes[i] / close, 1e-9) << i;
    }

    mServices->clock().setPace(600.0);
    mServices->clock().resume();
    ASSERT_TRUE(QTest::qWaitFor([&] { return points.size() > 3; }, 30000));
    mServices->clock().pause();
    // A minute that is over has the index at its end.
    mServices->formulas().requestFormulasSync(wanted, metas, results);
    const std::vector<double> after = results.at(0)->mValues.at(0);
    mServices->formulas().requestFormulasSync(index, metas, results);
    indexes = results.at(0)->mValues.at(0);
    ASSERT_GT(after.size(), series.size());
    EXPECT_NEAR(after[series.size()], netValue * indexes[series.size()] / close, 1e-9);
    EXPECT_NE(points.begin()->second, points.rbegin()->second);
    mServices->formulas().unrequestFormula(QString::fromStdString(wanted[0].mRequestId));
}

TEST_F(FundNetValueTest, AShareAndAnOrdinaryIndexHaveNone) {
    QVector<TC::CFormulaParam> params{param("IOPV", "SH", "600000"), param("IOPV", "SH", "000300")};
    std::vector<TC::FormulaMetaPtr> metas;
    std::vector<TC::FormulaResultPtr> results;
    mServices->formulas().requestFormulasSync(params, metas, results);
    for (const TC::FormulaResultPtr &result : results) {
        ASSERT_GT(result->mTimes.size(), 30u);
        for (const double value : result->mValues.at(0)) {
            EXPECT_EQ(value, TC::kUnsetValue);
        }
    }
}

TEST_F(FundNetValueTest, AFundKeepsTheTradingHoursOfItsOwn) {
    const auto detail = mServices->detailOf("SH510300");
    ASSERT_TRUE(detail);
    EXPECT_FALSE(detail->mUnderlying) << "a chart takes the hours of what it finds there";
}
