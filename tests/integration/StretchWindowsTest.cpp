// What the statistics of a stretch open in the terminal: its quotes, and the ranking of instruments.

#include "host/services/CConfigService.h"
#include "host/services/CFormulaManager.h"
#include "host/toolkit/Events.h"
#include "terminal/app/StageRankingDialog.h"
#include "terminal/app/StageRankingModel.h"
#include "terminal/app/StretchQuotesDialog.h"
#include "tests/integration/TerminalFixture.h"

#include <QHeaderView>
#include <QTableView>
#include <QTableWidget>

using namespace terminal;

namespace {

class StretchWindowsTest : public tests::TerminalFixture {
protected:
    void SetUp() override {
        TerminalFixture::SetUp();
        ASSERT_TRUE(mWindow->showInstrument(QStringLiteral("SH600000")));
        ASSERT_TRUE(waitUntilComplete());
    }
    qint64 at(int hour, int minute) const { return timeOf(mToday, hour * 60 + minute) / 1000; }
    /// What the dialogs of the statistics deliver.
    void deliver(int event, qint64 first, qint64 second, const QString &text = {}) {
        view().handleEvent(event, static_cast<int>(first), static_cast<int>(second), text, nullptr);
    }
    void rank(int criterion, qint64 start, qint64 end) {
        deliver(TC::eStageRankingAsked, 0, 0,
                QStringLiteral("%1,%2,0,0,%3,阶段").arg(start).arg(end).arg(criterion));
    }
    StageRankingDialog *ranking() const { return mWindow->findChild<StageRankingDialog *>(); }
    QStringList rankedKeys() const {
        QStringList keys;
        const QAbstractItemModel &model = *ranking()->table()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            keys.append(model.index(row, 0).data().toString());
        }
        return keys;
    }
};

TEST_F(StretchWindowsTest, QuotesOfTheStretchAreItsMinutes) {
    deliver(TC::eRegionQuotesAsked, at(9, 40), at(9, 50));
    auto *quotes = mWindow->findChild<StretchQuotesDialog *>();
    ASSERT_NE(quotes, nullptr);
    EXPECT_TRUE(quotes->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !quotes->isReading(); }, 10000));
    const QTableWidget &table = *quotes->table();
    ASSERT_EQ(table.rowCount(), 11);
    EXPECT_EQ(table.item(0, 0)->text(), QStringLiteral("09:40"));
    EXPECT_EQ(table.item(10, 0)->text(), QStringLiteral("09:50"));
    const MinuteBars bars = mServices->exchange().dayBars(QStringLiteral("SH600000"), dayOf(mToday));
    const auto at940 = std::find_if(bars.begin(), bars.end(),
                                    [this](const MinuteBar &bar) { return bar.time == at(9, 40) * 1000; });
    ASSERT_NE(at940, bars.end());
    EXPECT_EQ(table.item(0, 4)->text(), QString::number(at940->price, 'f', 2));
    EXPECT_EQ(table.item(0, 5)->text(), QString::number(at940->price - std::prev(at940)->price, 'f', 2));
    EXPECT_EQ(quotes->windowTitle(), QStringLiteral("时段行情 SH600000 浦发银行 2026-11-20 09:40 - 09:50"));

    deliver(TC::eRegionQuotesAsked, at(14, 0), at(14, 30)); // not traded yet
    ASSERT_TRUE(QTest::qWaitFor([&] { return !quotes->isReading(); }, 10000));
    EXPECT_EQ(table.rowCount(), 0);
    EXPECT_EQ(quotes->message(), QStringLiteral("该时段没有行情"));
}

TEST_F(StretchWindowsTest, RankingHasAllInstrumentsByEachCriterion) {
    for (int criterion = 0; criterion < 8; ++criterion) {
        rank(criterion, at(9, 30), at(10, 0));
        ASSERT_NE(ranking(), nullptr);
        EXPECT_TRUE(ranking()->isRanking()); // in the background
        ASSERT_TRUE(QTest::qWaitFor([&] { return !ranking()->isRanking(); }, 20000));
        QVector<StageRow> rows =
            stageRows(mServices->store(), mServices->exchange(), at(9, 30) * 1000, at(10, 0) * 1000);
        std::sort(rows.begin(), rows.end(), [criterion](const StageRow &a, const StageRow &b) {
            const double first = a.figures.value(criterion);
            const double second = b.figures.value(criterion);
            return first != second ? first > second : a.key < b.key;
        });
        QStringList expected;
        for (const StageRow &row : rows) {
            expected.append(row.key);
        }
        EXPECT_GT(expected.size(), 20);
        EXPECT_EQ(rankedKeys(), expected) << criterion;
    }
}

TEST_F(StretchWindowsTest, DoubleClickShowsTheInstrumentOnItsDay) {
    rank(4, at(9, 30), at(10, 0));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ranking()->isRanking(); }, 20000));
    const int row = rankedKeys().indexOf(QStringLiteral("SZ000001"));
    ASSERT_GE(row, 0);
    emit ranking()->table()->activated(ranking()->table()->model()->index(row, 0));
    EXPECT_EQ(view().instrument(), QStringLiteral("SZ000001"));
    EXPECT_EQ(view().day(), mToday);
}

TEST_F(StretchWindowsTest, SpanThatEndsBeforeItBeginsIsToldSo) {
    rank(4, at(10, 0), at(9, 30));
    EXPECT_FALSE(ranking()->isRanking());
    EXPECT_EQ(ranking()->message(), QStringLiteral("起始时间晚于终止时间，请重新选择时段"));
}

TEST_F(StretchWindowsTest, TextThatIsNoRankingOpensNothing) {
    deliver(TC::eStageRankingAsked, 0, 0, QStringLiteral("x"));
    EXPECT_EQ(ranking(), nullptr);
}

TEST_F(StretchWindowsTest, WindowMayCloseWhileItRanks) {
    rank(4, at(9, 30), at(10, 0));
    mWindow.reset();
}

TEST_F(StretchWindowsTest, TransactionsOfTheStretchComeThroughTheService) {
    quoter::TSMetaInfo meta;
    meta.mMarket = "SH";
    meta.mCode = "600000";
    meta.mDataKind = 1806;
    quoter::TRegionInfo region;
    region.mStart = at(9, 40) * 1000;
    region.mEnd = at(9, 50) * 1000;
    std::vector<std::shared_ptr<quoter::QuoterBase>> records;
    TC::CSingletonT<TC::CFormulaManager>::instance().requestHistoryQuote(
        meta, region,
        [&](int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &got, const QString &) {
            records = got;
        });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !records.empty(); }, 10000));
    EXPECT_GT(records.size(), 11u); // more than the bars
    EXPECT_GE(records.front()->mTime, region.mStart);
    EXPECT_LE(records.back()->mTime, region.mEnd);
}

/// The night of Friday, 2026-11-20, was that of Thursday, 21:00 to 22:00, while the chart dates it with Friday.
TEST_F(StretchWindowsTest, NightOfAFutureIsThatOfTheEveningBefore) {
    quoter::TSMetaInfo meta;
    meta.mMarket = "SHFE";
    meta.mCode = "AU2612";
    meta.mDataKind = 1806;
    quoter::TRegionInfo region;
    region.mStart = 1795179600000;
    region.mEnd = 1795183200000;
    std::vector<std::shared_ptr<quoter::QuoterBase>> records;
    TC::CSingletonT<TC::CFormulaManager>::instance().requestHistoryQuote(
        meta, region,
        [&](int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &got, const QString &) {
            records = got;
        });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !records.empty(); }, 10000));
    EXPECT_GT(records.size(), 61u); // more than the bars
    EXPECT_GE(records.front()->mTime, 1795093200000);
    EXPECT_LE(records.back()->mTime, 1795096800000);

    ASSERT_TRUE(mWindow->showInstrument(QStringLiteral("SHFEAU2612")));
    ASSERT_TRUE(waitUntilComplete());
    deliver(TC::eRegionQuotesAsked, 1795179600, 1795183200);
    auto *quotes = mWindow->findChild<StretchQuotesDialog *>();
    ASSERT_NE(quotes, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !quotes->isReading(); }, 10000));
    ASSERT_EQ(quotes->table()->rowCount(), 61);
    EXPECT_EQ(quotes->table()->item(0, 0)->text(), QStringLiteral("21:00"));
    EXPECT_EQ(quotes->table()->item(60, 0)->text(), QStringLiteral("22:00"));
}

TEST_F(StretchWindowsTest, RankingOfANightHasTheFuturesThatTradedInIt) {
    rank(4, 1795179600, 1795183200);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ranking()->isRanking(); }, 20000));
    EXPECT_TRUE(rankedKeys().contains(QStringLiteral("SHFEAU2612")));
    EXPECT_FALSE(rankedKeys().contains(QStringLiteral("SH600000")));
}

TEST_F(StretchWindowsTest, AccountsOfTheUserAreThoseOfTheTradeService) {
    QStringList keys;
    for (const auto &account : TC::getUserConfig()->accounts()) {
        keys.append(QString::fromStdString(account->key()));
    }
    QStringList known;
    for (const auto &account : mServices->trade().getAccounts()) {
        known.append(QString::fromStdString(account->mAccountId));
    }
    EXPECT_FALSE(known.isEmpty());
    EXPECT_EQ(keys, known);
}

} // namespace
