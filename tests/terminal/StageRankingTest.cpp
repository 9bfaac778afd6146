#include "terminal/market/StageRanking.h"

#include "host/services/CHostClock.h"
#include "terminal/app/BackgroundJob.h"
#include "terminal/app/StageQuestion.h"
#include "terminal/app/StageRankingModel.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedExchange.h"
#include "tests/terminal/Samples.h"
#include "tests/terminal/StoreFixture.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>

using namespace terminal;
using tests::clockTime;
using tests::kFriday;

namespace {

MinuteBar stageBar(qint64 time, double price, double volume, double amount = 0.0) {
    MinuteBar made;
    made.time = time;
    made.price = price;
    made.volume = volume;
    made.amount = amount;
    return made;
}

/// 09:30 to 09:34, with 09:32 left out, since nothing was traded then.
const MinuteBars kBars = {
    stageBar(clockTime(kFriday, 9, 30), 10.0, 100, 1000), stageBar(clockTime(kFriday, 9, 31), 10.4, 200),
    stageBar(clockTime(kFriday, 9, 33), 9.8, 300, 2950), stageBar(clockTime(kFriday, 9, 34), 10.1, 50)};

StageFigures figuresOf(qint64 start, qint64 end) {
    StageFigures figures;
    EXPECT_TRUE(stageFigures(kBars, start, end, false, figures));
    return figures;
}

void expectFigures(const StageFigures &figures, double first, double last, double high, double low,
                   double average, double volume, double amount) {
    EXPECT_DOUBLE_EQ(figures.first, first);
    EXPECT_DOUBLE_EQ(figures.last, last);
    EXPECT_DOUBLE_EQ(figures.high, high);
    EXPECT_DOUBLE_EQ(figures.low, low);
    EXPECT_NEAR(figures.average, average, 1e-9);
    EXPECT_DOUBLE_EQ(figures.volume, volume);
    EXPECT_NEAR(figures.amount, amount, 1e-9);
}

TEST(StageFigures, MinutesOfTheSpanCountWithBothEnds) {
    expectFigures(figuresOf(clockTime(kFriday, 9, 31), clockTime(kFriday, 9, 33)), 10.4, 9.8, 10.4, 9.8, 10.1,
                  500, 10.4 * 200 + 2950);
}

TEST(StageFigures, SpanThatBeginsWithoutATradeBeginsAtThePriceBefore) {
    expectFigures(figuresOf(clockTime(kFriday, 9, 32), clockTime(kFriday, 9, 34)), 10.4, 10.1, 10.4, 9.8, 9.95,
                  350, 2950 + 10.1 * 50);
}

TEST(StageFigures, SpanInFrontOfTheDayBeginsAtItsFirstPrice) {
    expectFigures(figuresOf(clockTime(kFriday, 9, 0), clockTime(kFriday, 9, 30)), 10.0, 10.0, 10.0, 10.0, 10.0,
                  100, 1000);
}

TEST(StageFigures, SpanWithoutAMinuteHasNone) {
    StageFigures figures;
    EXPECT_FALSE(stageFigures(kBars, clockTime(kFriday, 9, 32), clockTime(kFriday, 9, 32), false, figures));
    EXPECT_FALSE(stageFigures(kBars, clockTime(kFriday, 9, 34), clockTime(kFriday, 9, 30), false, figures));
    EXPECT_FALSE(stageFigures({}, clockTime(kFriday, 9, 30), clockTime(kFriday, 15, 0), false, figures));
}

TEST(StageFigures, PriceOfAnIndexIsNoMoney) {
    StageFigures figures;
    EXPECT_TRUE(stageFigures(kBars, clockTime(kFriday, 9, 31), clockTime(kFriday, 9, 33), true, figures));
    EXPECT_DOUBLE_EQ(figures.amount, 2950); // what the source tells alone
}

TEST(StageFigures, EveryCriterionHasItsNumber) {
    const StageFigures figures = figuresOf(clockTime(kFriday, 9, 31), clockTime(kFriday, 9, 33));
    EXPECT_DOUBLE_EQ(figures.value(eStageHigh), 10.4);
    EXPECT_DOUBLE_EQ(figures.value(eStageLow), 9.8);
    EXPECT_DOUBLE_EQ(figures.value(eStageVolume), 500);
    EXPECT_NEAR(figures.value(eStageChange), -0.6, 1e-12);
    EXPECT_NEAR(figures.value(eStageChangeRatio), -0.6 / 10.4, 1e-12);
    EXPECT_DOUBLE_EQ(figures.value(eStageAmount), 5030);
    EXPECT_NEAR(figures.value(eStageAmplitude), 0.6 / 10.4, 1e-12);
    EXPECT_NEAR(figures.value(eStageAverage), 10.1, 1e-12);
    EXPECT_EQ(figures.value(8), 0.0);
    EXPECT_EQ(StageFigures().value(eStageChangeRatio), 0.0); // no price to divide by
}

TEST(StageQuestion, SixFieldsAreRead) {
    const auto read = readStageQuestion(QStringLiteral("1710466200,1710468000,0,0,4,阶段涨幅"));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->start, 1710466200);
    EXPECT_EQ(read->end, 1710468000);
    EXPECT_EQ(read->criterion, 4);
    EXPECT_EQ(read->words, QStringLiteral("阶段涨幅"));
}

TEST(StageQuestion, OtherTextsAreNone) {
    for (const char *text :
         {"", "1,2,0,0,4", "1,2,0,0,8,x", "1,2,0,0,-1,x", "a,2,0,0,4,x", "1,,0,0,4,x", "1,2,0,0,4,x,y"}) {
        EXPECT_FALSE(readStageQuestion(QString::fromUtf8(text))) << text;
    }
}

/// A day of instruments of which the exchange knows nothing, and the simulated ones at 10:30.
class StageRows : public StoreFixture {
protected:
    void SetUp() override {
        openFilledStore(clockTime(kFriday, 10, 30));
        mBefore = TC::CSingletonT<TC::CHostClock>::install(&mClock);
    }
    void TearDown() override { TC::CSingletonT<TC::CHostClock>::install(mBefore); }

    void put(const char *code, const MinuteBars &bars, InstrumentKind kind = InstrumentKind::Stock) {
        Instrument instrument;
        instrument.kind = kind;
        instrument.market = QStringLiteral("SH");
        instrument.code = QString::fromLatin1(code);
        instrument.name = QStringLiteral("名") + instrument.code;
        MarketWriter writer(mStore);
        const qint64 row = writer.putInstrument(instrument);
        ASSERT_TRUE(bars.empty() || writer.putDay(row, dayOf(kFriday), BarSource::Imported, bars))
            << qPrintable(writer.error());
        ASSERT_TRUE(writer.commit());
    }
    QVector<StageRow> rows(qint64 start, qint64 end) { return stageRows(mStore, mExchange, start, end); }
    static const StageRow *find(const QVector<StageRow> &rows, const QString &key) {
        for (const StageRow &row : rows) {
            if (row.key == key) {
                return &row;
            }
        }
        return nullptr;
    }

    SimulatedClock mClock{clockTime(kFriday, 10, 30), 1.0, [] { return qint64(0); }};
    SimulatedExchange mExchange{mStore, mClock};
    TC::CHostClock *mBefore = nullptr;
};

TEST_F(StageRows, StoredDayHasTheFiguresOfItsBars) {
    put("999001", kBars);
    put("999002", {});
    const QVector<QPair<qint64, qint64>> spans = {{clockTime(kFriday, 9, 31), clockTime(kFriday, 9, 33)},
                                                  {clockTime(kFriday, 9, 32), clockTime(kFriday, 9, 34)},
                                                  {clockTime(kFriday, 9, 0), clockTime(kFriday, 9, 30)},
                                                  {clockTime(kFriday, 9, 30), clockTime(kFriday, 15, 0)},
                                                  {clockTime(kFriday, 9, 34), clockTime(kFriday, 9, 34)}};
    for (const auto &[start, end] : spans) {
        const QVector<StageRow> all = rows(start, end);
        const StageRow *row = find(all, QStringLiteral("SH999001"));
        ASSERT_NE(row, nullptr);
        const StageFigures expected = figuresOf(start, end);
        expectFigures(row->figures, expected.first, expected.last, expected.high, expected.low,
                      expected.average, expected.volume, expected.amount);
        EXPECT_EQ(row->name, QStringLiteral("名999001"));
        EXPECT_EQ(find(all, QStringLiteral("SH999002")), nullptr);
    }
    EXPECT_EQ(find(rows(clockTime(kFriday, 9, 32), clockTime(kFriday, 9, 32)), QStringLiteral("SH999001")),
              nullptr);
}

TEST_F(StageRows, StoredIndexHasTheMoneyThatIsKnown) {
    put("999003", kBars, InstrumentKind::Index);
    const QVector<StageRow> all = rows(clockTime(kFriday, 9, 31), clockTime(kFriday, 9, 33));
    const StageRow *row = find(all, QStringLiteral("SH999003"));
    ASSERT_NE(row, nullptr);
    EXPECT_DOUBLE_EQ(row->figures.amount, 2950);
    EXPECT_DOUBLE_EQ(row->figures.volume, 500);
}

TEST_F(StageRows, RunningDayCountsUpToNow) {
    const QVector<StageRow> all = rows(clockTime(kFriday, 9, 30), clockTime(kFriday, 15, 0));
    const StageRow *row = find(all, QStringLiteral("SH600000"));
    ASSERT_NE(row, nullptr);
    const MinuteBars bars = mExchange.dayBars(QStringLiteral("SH600000"), dayOf(kFriday));
    EXPECT_LE(bars.back().time, clockTime(kFriday, 10, 31));
    EXPECT_DOUBLE_EQ(row->figures.last, bars.back().price);
    EXPECT_DOUBLE_EQ(row->figures.first, bars.front().price);
    EXPECT_TRUE(rows(clockTime(kFriday, 11, 0), clockTime(kFriday, 11, 10)).isEmpty());
}

TEST_F(StageRows, ProgressIsToldAndStops) {
    QVector<int> told;
    const int total = mStore.catalogue()->instruments.size();
    stageRows(mStore, mExchange, clockTime(kFriday, 9, 30), clockTime(kFriday, 10, 0), [&](int done, int all) {
        EXPECT_EQ(all, total);
        told.append(done);
        return true;
    });
    EXPECT_EQ(told.value(0), 0);
    int calls = 0;
    EXPECT_TRUE(
        stageRows(mStore, mExchange, clockTime(kFriday, 9, 30), clockTime(kFriday, 10, 0), [&](int, int) {
            return ++calls < 1;
        }).isEmpty());
    EXPECT_EQ(calls, 1);
}

StageRow rankingRow(const char *key, double change, double volume) {
    StageRow row;
    row.key = QString::fromLatin1(key);
    row.name = row.key;
    row.figures.first = 10.0;
    row.figures.last = 10.0 + change;
    row.figures.volume = volume;
    return row;
}

QStringList keysOf(const StageRankingModel &model) {
    QStringList keys;
    for (int i = 0; i < model.rowCount(); ++i) {
        keys.append(model.row(i).key);
    }
    return keys;
}

TEST(StageRankingModel, LargestNumberIsFirstAndAHeadingRanksAnew) {
    StageRankingModel model;
    model.setRows({rankingRow("b", 0.1, 300), rankingRow("a", 0.1, 100), rankingRow("c", -0.2, 200)});
    model.sort(StageRankingModel::eFirstNumber + eStageChangeRatio, Qt::DescendingOrder);
    EXPECT_EQ(keysOf(model), (QStringList{"a", "b", "c"})); // equal ones by key
    const QPersistentModelIndex selected = model.index(2, 0);
    model.sort(StageRankingModel::eFirstNumber + eStageVolume, Qt::DescendingOrder);
    EXPECT_EQ(keysOf(model), (QStringList{"b", "c", "a"}));
    EXPECT_EQ(selected.row(), 1); // the same instrument
    model.sort(StageRankingModel::eFirstNumber + eStageVolume, Qt::AscendingOrder);
    EXPECT_EQ(keysOf(model), (QStringList{"a", "c", "b"}));
    model.sort(StageRankingModel::eKey, Qt::AscendingOrder);
    EXPECT_EQ(keysOf(model), (QStringList{"a", "b", "c"}));
    model.sort(-1, Qt::AscendingOrder);
    EXPECT_EQ(keysOf(model), (QStringList{"a", "b", "c"}));
}

TEST(StageRankingModel, NumbersAreWrittenAsTheyAreRead) {
    StageRankingModel model;
    model.setRows({rankingRow("a", 0.123, 25000), rankingRow("b", -0.5, 100), rankingRow("c", 0.0, 100)});
    const auto text = [&](int criterion, int row = 0) {
        return model.data(model.index(row, StageRankingModel::eFirstNumber + criterion), Qt::DisplayRole)
            .toString();
    };
    EXPECT_EQ(text(eStageVolume), QStringLiteral("2.50万"));
    EXPECT_EQ(text(eStageChange), QStringLiteral("▲ +0.12"));
    EXPECT_EQ(text(eStageChangeRatio), QStringLiteral("▲ +1.23%"));
    EXPECT_EQ(text(eStageChange, 1), QStringLiteral("▼ -0.50"));
    EXPECT_EQ(text(eStageChange, 2), QStringLiteral("0.00")) << "neither rise nor fall";
}

TEST(BackgroundJob, WorkRunsElsewhereAndItsEndIsToldHere) {
    BackgroundJob job;
    QSignalSpy finished(&job, &BackgroundJob::finished);
    QThread *thread = nullptr;
    job.start([&](BackgroundJob &) { thread = QThread::currentThread(); });
    ASSERT_TRUE(finished.wait(10000));
    EXPECT_NE(thread, QThread::currentThread());
    EXPECT_NE(thread, nullptr);
    EXPECT_FALSE(job.isRunning());
}

TEST(BackgroundJob, OtherWorkStopsTheOneBeforeWhoseEndIsNotTold) {
    BackgroundJob job;
    QSignalSpy finished(&job, &BackgroundJob::finished);
    std::atomic<bool> first{false};
    job.start([&](BackgroundJob &self) {
        while (!self.isStopped()) {
            QThread::yieldCurrentThread();
        }
        first = true;
    });
    job.start([&](BackgroundJob &self) { self.tell(3, 4); });
    EXPECT_TRUE(first);
    ASSERT_TRUE(finished.wait(10000));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(job.done(), 3);
    EXPECT_EQ(job.total(), 4);
}

TEST(BackgroundJob, ItEndsWithItsOwner) {
    std::atomic<bool> ended{false};
    {
        BackgroundJob job;
        job.start([&](BackgroundJob &self) {
            while (!self.isStopped()) {
                self.tell(1, 2);
            }
            ended = true;
        });
    }
    EXPECT_TRUE(ended);
}

} // namespace
