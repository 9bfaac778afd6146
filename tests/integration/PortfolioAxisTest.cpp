#include "tests/integration/TerminalFixture.h"

#include "containers/CRealtimeMainWidget.h"
#include "terminal/market/MarketWriter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <random>

using namespace terminal;

namespace {

constexpr int kFirstNumber = 1000; // of the portfolios of these tests

class PortfolioAxis : public tests::TerminalFixture {
protected:
    void addPortfolios(const QVector<Portfolio> &portfolios) {
        MarketWriter writer(mServices->store());
        for (const Portfolio &portfolio : portfolios) {
            ASSERT_TRUE(writer.addPortfolio(portfolio));
        }
        ASSERT_TRUE(writer.commit()) << qPrintable(writer.error());
    }
    /// Clock minutes of the chart's positions, from its sessions.
    std::vector<int> axisMinutes() {
        std::vector<int> minutes;
        for (const QPair<int, int> &session : view().uiParam()->mSessions) {
            for (int minute = session.first; minute <= session.second; ++minute) {
                minutes.push_back(minute % 1440);
            }
        }
        return minutes;
    }
    std::vector<int> seriesMinutes(const QString &number, const QDate &day) {
        TC::CFormulaParam param;
        param.mRequestId = "portfolio";
        param.mMarket = "TZZH";
        param.mCode = number;
        param.mStockKind = TC::ePortfolio;
        param.mFormulaName = "REALTIME";
        param.mDataMode = 1;
        param.mStart = {dayOf(day) * 1000LL, 0};
        param.mEnd = {timeOf(day, 900), 0};
        QVector<TC::CFormulaParam> params{param};
        std::vector<TC::FormulaMetaPtr> metas;
        std::vector<TC::FormulaResultPtr> results;
        mServices->formulas().requestFormulasSync(params, metas, results);
        std::vector<int> minutes;
        for (const se::TimePosition &position : results.at(0)->mTimes) {
            minutes.push_back(minuteAt(position.first));
        }
        return minutes;
    }
};

} // namespace

TEST_F(PortfolioAxis, TwoHundredRandomPortfoliosStandAtTheirMinutes) {
    constexpr int kCount = 200;
    const QStringList keys = mServices->store().catalogue()->instruments.keys();
    std::mt19937 random(20261120);
    QVector<Portfolio> portfolios;
    for (int i = 0; i < kCount; ++i) {
        Portfolio portfolio{kFirstNumber + i, QStringLiteral("P%1").arg(i), {}};
        QStringList left = keys;
        for (size_t n = 1 + random() % 6; n > 0; --n) {
            const QString key = left.takeAt(static_cast<int>(random() % static_cast<size_t>(left.size())));
            portfolio.positions.append({key, 1.0 + static_cast<double>(random() % 9)});
        }
        portfolios.append(portfolio);
    }
    addPortfolios(portfolios);
    const QDate day(2026, 11, 19);
    int nights = 0;
    int withPoints = 0;
    for (const Portfolio &portfolio : qAsConst(portfolios)) {
        const QString number = QString::number(portfolio.number);
        view().main()->setStock(number, false);
        view().main()->subPortfolioCallBack(mServices->portfolioDetailOf(portfolio.key()));
        const std::vector<int> axis = axisMinutes();
        const std::vector<int> series = seriesMinutes(number, day);
        ASSERT_LE(series.size(), axis.size()) << portfolio.number;
        for (size_t i = 0; i < series.size(); ++i) {
            ASSERT_EQ(series[i], axis[i]) << portfolio.number << " at " << i;
        }
        nights += axis.front() == 1260 ? 1 : 0;
        withPoints += series.empty() ? 0 : 1;
    }
    EXPECT_GT(nights, 20) << "some have a night session";
    EXPECT_LT(nights, 180) << "and some have none";
    EXPECT_GT(withPoints, 180);
}

TEST_F(PortfolioAxis, TheChartOfAFuturesPortfolioHasItsAxis) {
    addPortfolios({{kFirstNumber, QStringLiteral("金"), {{"SH600000", 100}, {"SHFEAU2612", 2}}}});
    ASSERT_TRUE(mWindow->showInstrument("TZZH1000"));
    ASSERT_TRUE(waitUntilComplete());
    const std::vector<int> axis = axisMinutes();
    ASSERT_EQ(axis.size(), 556u) << "21:00 to 02:30 and the day of a commodity";
    EXPECT_EQ(axis.front(), 1260);
    const auto series =
        view().data()->getData().value(TC::CFormulaKey("TZZH1000", view().uiParam()->getBasicFormula()));
    ASSERT_FALSE(series.result.mTimes.empty());
    for (size_t i = 0; i < series.result.mTimes.size(); ++i) {
        ASSERT_EQ(minuteAt(series.result.mTimes[i].first), axis[i]) << i;
    }
    EXPECT_EQ(series.result.mTimes.back().first, mNow - 15 * 60000LL)
        << "a commodity pauses from 10:15 to 10:30, whose first minute is 10:31";
}

TEST_F(PortfolioAxis, APortfolioOfSharesKeepsTheirAxis) {
    ASSERT_TRUE(mWindow->showInstrument("TZZH1"));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(axisMinutes().size(), 241u);
}

TEST_F(PortfolioAxis, ANightSessionIsKnownByTheShortWordOfItsExchange) {
    TC::CTradeOpenCloseTimeManager &times = TC::CSingletonT<TC::CTradeOpenCloseTimeManager>::instance();
    EXPECT_TRUE(times.hasNightQuoter("SF", "AU2612"));
    EXPECT_TRUE(times.hasNightQuoter("SHFE", "AU2612"));
    EXPECT_TRUE(times.hasNightQuoter("DF", "M2701"));
    EXPECT_FALSE(times.hasNightQuoter("DF", "JD2701"));
    EXPECT_FALSE(times.hasNightQuoter("IF", "IF2612"));
    EXPECT_FALSE(times.hasNightQuoter("ZF", "SM701"));
    EXPECT_FALSE(times.hasNightQuoter("XX", "AU2612"));
}
