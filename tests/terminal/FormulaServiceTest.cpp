#include "tests/terminal/FormulaServiceFixture.h"
#include "tests/terminal/PricePrograms.h"

#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace terminal;
using namespace tests;

namespace {

class FormulaServiceTest : public tests::FormulaServiceFixture {};

} // namespace

TEST_F(FormulaServiceTest, HistoryOfThePriceHasPriceAndAverage) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    const Received &history = mReceived[0];
    EXPECT_EQ(history.id, "a");
    EXPECT_FALSE(history.keepRange);
    EXPECT_EQ(history.meta->mLineCount, 2);
    EXPECT_EQ(history.meta->mLineStyles, (std::vector<qint32>{0, 0}));
    EXPECT_EQ(history.result->mTimes, (std::vector<se::TimePosition>{{kOpen, 0}, {kOpen + kMinute, 0}}));
    EXPECT_EQ(history.result->mValid, (std::vector<qint32>{1, 1}));
    EXPECT_EQ(history.result->mValues, (std::vector<std::vector<double>>{{10.0, 10.2}, {10.0, 10.1}}));
}

TEST_F(FormulaServiceTest, VolumeTellsTheChangeOfThePriceThatColoursIt) {
    mFeed.setBars("SH600000", kToday,
                  {bar(kOpen, 10.0, 10.0, 100, 10.1), bar(kOpen + kMinute, 10.2, 10.1, 300),
                   bar(kOpen + 2 * kMinute, 10.2, 10.1, 0), bar(kOpen + 3 * kMinute, 10.1, 10.1, 70)});
    request({param("v", "REALTIMEVOL", 1)});
    ASSERT_TRUE(waitForResults(1));
    const Received &history = mReceived[0];
    EXPECT_EQ(history.meta->mLineStyles, (std::vector<qint32>{2}));
    EXPECT_EQ(history.result->mValues, (std::vector<std::vector<double>>{{100, 300, 0, 70}}));
    ASSERT_EQ(history.result->mExtra2.size(), 1u);
    const std::vector<double> changes = history.result->mExtra2[0];
    ASSERT_EQ(changes.size(), 4u);
    EXPECT_NEAR(changes[0], -0.1, 1e-9) << "the first minute against its own opening price";
    EXPECT_NEAR(changes[1], 0.2, 1e-9);
    EXPECT_EQ(changes[2], 0.0);
    EXPECT_NEAR(changes[3], -0.1, 1e-9);
}

TEST_F(FormulaServiceTest, TheStreamFollowsTheHistory) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen + kMinute, 10.3, 10.15, 400));
    ASSERT_TRUE(waitForResults(2));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    ASSERT_TRUE(waitForResults(3));
    ASSERT_EQ(mReceived[1].kind, Received::Point);
    EXPECT_EQ(mReceived[1].point->mTime, (se::TimePosition{kOpen + kMinute, 0}));
    EXPECT_EQ(mReceived[1].point->mValues, (std::vector<double>{10.3, 10.15}));
    ASSERT_EQ(mReceived[2].kind, Received::Point);
    EXPECT_EQ(mReceived[2].point->mTime, (se::TimePosition{kOpen + 2 * kMinute, 0}));
    EXPECT_EQ(mReceived[2].point->mValues, (std::vector<double>{10.4, 10.2}));
}

TEST_F(FormulaServiceTest, ChangesBeforeTheHistoryIsDeliveredComeBehindIt) {
    request({param("a")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == 1; }, 10000));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    ASSERT_TRUE(waitForResults(2));
    EXPECT_EQ(mReceived[0].kind, Received::History);
    EXPECT_EQ(mReceived[1].kind, Received::Point);
}

TEST_F(FormulaServiceTest, ARevisedOrLateMinuteBringsTheWholeSeriesAgain) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen, 9.9, 9.9, 100));
    ASSERT_TRUE(waitForResults(2));
    ASSERT_EQ(mReceived[1].kind, Received::History);
    EXPECT_TRUE(mReceived[1].keepRange);
    EXPECT_EQ(mReceived[1].result->mValues[0], (std::vector<double>{9.9, 10.2}));
    mFeed.change("SH600000", bar(kOpen + kMinute / 2, 9.8, 9.9, 1));
    ASSERT_TRUE(waitForResults(3));
    EXPECT_EQ(mReceived[2].result->mValues[0], (std::vector<double>{9.9, 9.8, 10.2}));
}

TEST_F(FormulaServiceTest, AnUnchangedMinuteSendsNothing) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen + kMinute, 10.2, 10.1, 300));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    ASSERT_TRUE(waitForResults(2));
    EXPECT_EQ(mReceived[1].point->mValues[0], 10.4);
    EXPECT_EQ(mReceived.size(), 2);
}

TEST_F(FormulaServiceTest, DemandOneIsHistoryOnly) {
    request({param("a", "REALTIME", 1)});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mFeed.listeners(), 0);
    EXPECT_EQ(mReceived[0].result->mTimes.size(), 2u);
}

TEST_F(FormulaServiceTest, APastDayGivesItsOwnBarsAndNoStream) {
    request({param("a", "REALTIME", 3, kYesterday)});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].result->mValues[0], (std::vector<double>{9.0}));
    EXPECT_EQ(mFeed.listeners(), 0);
}

TEST_F(FormulaServiceTest, AFixedPriceRequestGetsTheAfterHoursMinutes) {
    mFeed.setAfterHours("SH600000", kToday, {bar(kOpen + 335 * kMinute, 10.5, 10.2, 7)});
    TC::CFormulaParam made = param("f");
    made.mDataMode = 3;
    request({made});
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].result->mValues[0], (std::vector<double>{10.5}));
}

TEST_F(FormulaServiceTest, AnUnknownFormulaAndAnUnknownInstrumentGiveAnEmptySeries) {
    TC::CFormulaParam nowhere = param("b");
    nowhere.mCode = "999999";
    request({param("a", "NOSUCH"), nowhere});
    ASSERT_TRUE(waitForResults(2));
    for (const Received &received : mReceived) {
        EXPECT_TRUE(received.result->mTimes.empty());
    }
}

TEST_F(FormulaServiceTest, SyncAnswersOneResultPerParameterInOrder) {
    QVector<TC::CFormulaParam> params{param("a", "REALTIMEVOL"), param("b", "NOSUCH"), param("c")};
    std::vector<TC::FormulaMetaPtr> metas;
    std::vector<TC::FormulaResultPtr> results;
    mService->requestFormulasSync(params, metas, results);
    ASSERT_EQ(metas.size(), 3u);
    ASSERT_EQ(results.size(), 3u);
    EXPECT_EQ(results[0]->mValues, (std::vector<std::vector<double>>{{100, 300}}));
    EXPECT_TRUE(results[1]->mTimes.empty());
    EXPECT_EQ(results[2]->mValues[0], (std::vector<double>{10.0, 10.2}));
    EXPECT_EQ(mService->liveRequests(), 0);
}

TEST_F(FormulaServiceTest, AWithdrawnRequestIsNotCalledBackAnyMore) {
    request({param("a"), param("b")});
    ASSERT_TRUE(waitForResults(2));
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    mService->unrequestFormula("a");
    ASSERT_TRUE(waitForResults(3));
    QCoreApplication::processEvents();
    ASSERT_EQ(mReceived.size(), 3);
    EXPECT_EQ(mReceived[2].id, "b");
    ASSERT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == 1; }, 10000)) << "its subscription ends";
}

TEST_F(FormulaServiceTest, UnknownIdsAreHarmless) {
    mService->unrequestFormula("never");
    mService->unrequestFormulas({"", "x"});
    EXPECT_EQ(mService->liveRequests(), 0);
}

TEST_F(FormulaServiceTest, AnIdThatIsUsedAgainTakesOver) {
    request({param("a")});
    request({param("a", "REALTIMEVOL")});
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return !mReceived.isEmpty() && mReceived.last().meta->mLineCount == 1; }));
    EXPECT_EQ(mService->liveRequests(), 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == 1; }, 10000));
}

namespace {

/// Tells on which thread, and that no lock of the service was held, when it goes.
struct Tracer {
    FormulaService *service = nullptr;
    std::atomic<bool> *gone = nullptr;
    std::atomic<bool> *onUiThread = nullptr;
    ~Tracer() {
        service->liveRequests(); // would hang when the lock was held
        *onUiThread = QThread::currentThread() == qApp->thread();
        *gone = true;
    }
};

} // namespace

TEST_F(FormulaServiceTest, CallbacksAreReleasedOnTheUserInterfaceThreadWithoutLocks) {
    for (const bool fromOtherThread : {false, true}) {
        std::atomic<bool> gone{false};
        std::atomic<bool> onUiThread{false};
        {
            auto tracer = std::make_shared<Tracer>();
            tracer->service = mService.get();
            tracer->gone = &gone;
            tracer->onUiThread = &onUiThread;
            QVector<TC::CFormulaParam> params{param("a")};
            mService->requestFormulas(
                params,
                [tracer](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &, const QString &, int,
                         const QString &, bool) {},
                TC::FormulaRealtimeCallback());
        }
        EXPECT_FALSE(gone);
        if (fromOtherThread) {
            std::thread([this] { mService->unrequestFormula("a"); }).join();
        } else {
            mService->unrequestFormula("a");
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return gone.load(); }, 10000));
        EXPECT_TRUE(onUiThread);
    }
}

TEST_F(FormulaServiceTest, ACallbackMayWithdrawAndRequest) {
    QVector<TC::CFormulaParam> params{param("a")};
    mService->requestFormulas(
        params,
        [this](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &, const QString &id, int,
               const QString &, bool) {
            mService->unrequestFormula(id);
            request({param("b")});
        },
        TC::FormulaRealtimeCallback());
    ASSERT_TRUE(waitForResults(1));
    EXPECT_EQ(mReceived[0].id, "b");
    EXPECT_EQ(mService->liveRequests(), 1);
}

TEST_F(FormulaServiceTest, AThousandRequestsComeAndGoFromFourThreadsWhileTheMarketMoves) {
    constexpr int kPairs = 1000;
    std::atomic<int> running{4};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, t, &running] {
            for (int i = 0; i < kPairs; ++i) {
                const QString id = QStringLiteral("%1/%2").arg(t).arg(i);
                request({param(id, i % 2 ? "REALTIME" : "REALTIMEVOL", i % 3 ? 3 : 1)});
                mService->unrequestFormula(id);
            }
            --running;
        });
    }
    for (int i = 0; running > 0; ++i) {
        mFeed.change("SH600000", bar(kOpen + (2 + i % 200) * kMinute, 10.0 + i % 7, 10.0, i));
        QCoreApplication::processEvents();
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(mService->liveRequests(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return mFeed.listeners() == 0; }, 10000));
}

TEST_F(FormulaServiceTest, EndsWithRequestsAndResultsUnderWay) {
    for (int i = 0; i < 50; ++i) {
        request({param(QString::number(i))});
    }
    mFeed.change("SH600000", bar(kOpen + 2 * kMinute, 10.4, 10.2, 20));
    mService.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(mFeed.listeners(), 0);
    EXPECT_TRUE(mReceived.isEmpty()) << "nothing was handed over: the event loop never turned";
}

TEST_F(FormulaServiceTest, AFloodOfChangesEndsInTheNewestState) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    for (int i = 0; i < 3000; ++i) {
        mFeed.change("SH600000", bar(kOpen + kMinute, 10.0 + i, 10.0, i));
    }
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return mReceived.size() > 1 && mReceived.last().point->mValues[0] == 10.0 + 2999; }, 20000));
    EXPECT_LE(mReceived.size(), 3001);
    for (int i = 2; i < mReceived.size(); ++i) {
        ASSERT_LT(mReceived[i - 1].point->mValues[0], mReceived[i].point->mValues[0]) << "in order, none twice";
    }
}

namespace {

class PlacedFormulaServiceTest : public FormulaServiceTest {
protected:
    PlacedFormulaServiceTest() {
        mService = std::make_unique<FormulaService>(
            mFeed, makeBuiltInFormula,
            [](const TC::CFormulaParam &request) { return static_cast<int>(request.mStart.first / 1000); },
            [](const QString &, int) {
                std::vector<qint64> times;
                for (int i = 0; i < 10; ++i) {
                    times.push_back(kOpen + i * kMinute);
                }
                return times;
            });
        mFeed.setBars("SH600000", kToday,
                      {bar(kOpen + kMinute, 10.0, 10.0, 100), bar(kOpen + 3 * kMinute, 10.2, 10.1, 300)});
    }
};

} // namespace

TEST_F(PlacedFormulaServiceTest, ADayThatStartsAMinuteLateKeepsItsFirstPositionFree) {
    request({param("a"), param("v", "REALTIMEVOL")});
    ASSERT_TRUE(waitForResults(2));
    const se::RPCFormulaResult &price = *mReceived[0].result;
    EXPECT_EQ(price.mTimes,
              (std::vector<se::TimePosition>{
                  {kOpen, 0}, {kOpen + kMinute, 0}, {kOpen + 2 * kMinute, 0}, {kOpen + 3 * kMinute, 0}}));
    EXPECT_EQ(price.mValid, (std::vector<qint32>{0, 1, 1, 1}));
    EXPECT_EQ(price.mValues[0], (std::vector<double>{TC::kUnsetValue, 10.0, 10.0, 10.2}));
    EXPECT_EQ(mReceived[1].result->mValues[0], (std::vector<double>{TC::kUnsetValue, 100, 0, 300}));
}

TEST_F(PlacedFormulaServiceTest, MinutesWithoutATradeInTheStreamBringTheWholeSeries) {
    request({param("a")});
    ASSERT_TRUE(waitForResults(1));
    mFeed.change("SH600000", bar(kOpen + 4 * kMinute, 10.3, 10.1, 1)); // the next position
    ASSERT_TRUE(waitForResults(2));
    mFeed.change("SH600000", bar(kOpen + 6 * kMinute, 10.4, 10.1, 1)); // one left out
    ASSERT_TRUE(waitForResults(3));
    EXPECT_EQ(mReceived[1].kind, Received::Point);
    ASSERT_EQ(mReceived[2].kind, Received::History);
    EXPECT_TRUE(mReceived[2].keepRange);
    EXPECT_EQ(mReceived[2].result->mValues[0],
              (std::vector<double>{TC::kUnsetValue, 10.0, 10.0, 10.2, 10.3, 10.3, 10.4}));
}

TEST_F(FormulaServiceTest, QuotesOfARangeComeThroughTheCallback) {
    quoter::TSMetaInfo meta;
    meta.mMarket = "SH";
    meta.mCode = "600000";
    quoter::TRegionInfo region;
    region.mStart = kOpen + kMinute;
    region.mEnd = kOpen + 10 * kMinute;
    std::vector<std::pair<qint64, double>> quotes;
    bool called = false;
    mService->requestHistoryQuote(
        meta, region,
        [&](int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &records, const QString &) {
            for (const auto &record : records) {
                quotes.emplace_back(record->mTime, record->mPrice);
            }
            called = true;
        });
    ASSERT_TRUE(QTest::qWaitFor([&] { return called; }, 10000));
    EXPECT_EQ(quotes, (std::vector<std::pair<qint64, double>>{{kOpen + kMinute, 10.2}}));
}

TEST_F(FormulaServiceTest, TransactionsAreThoseOfTheirSource) {
    mService->setTransactions([](const QString &key, qint64 start, qint64 end, qint64 limit) {
        EXPECT_EQ(key, "SH600000");
        EXPECT_EQ(limit, 2147483647);
        return terminal::Ticks{{start, 10.1, 100, 1010}, {end, 10.2, 200, 0}};
    });
    quoter::TSMetaInfo meta;
    meta.mMarket = "SH";
    meta.mCode = "600000";
    meta.mDataKind = 1806;
    quoter::TRegionInfo region;
    region.mStart = kOpen;
    region.mEnd = kOpen + kMinute;
    std::vector<std::shared_ptr<quoter::QuoterBase>> records;
    bool called = false;
    mService->requestHistoryQuote(
        meta, region,
        [&](int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &got, const QString &) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            records = got;
            called = true;
        });
    EXPECT_FALSE(called); // not from within the call
    ASSERT_TRUE(QTest::qWaitFor([&] { return called; }, 10000));
    ASSERT_EQ(records.size(), 2u);
    const auto *last = dynamic_cast<const quoter::QuoterTransaction *>(records[1].get());
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->mTime, kOpen + kMinute);
    EXPECT_EQ(last->mPrice, 10.2);
    EXPECT_EQ(last->mVolume, 200.0);
    EXPECT_EQ(last->mAmount, 0.0);
}

TEST_F(FormulaServiceTest, WithoutASourceThereAreNoTransactions) {
    quoter::TSMetaInfo meta;
    meta.mMarket = "SH";
    meta.mCode = "600000";
    meta.mDataKind = 1806;
    quoter::TRegionInfo region;
    region.mStart = kOpen;
    region.mEnd = kOpen + kMinute;
    size_t count = 99;
    mService->requestHistoryQuote(meta, region,
                                  [&](int, int, const std::vector<std::shared_ptr<quoter::QuoterBase>> &got,
                                      const QString &) { count = got.size(); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return count != 99; }, 10000));
    EXPECT_EQ(count, 0u); // bars are no transactions
}

TEST_F(FormulaServiceTest, ADownloadTellsItsProgressInstrumentByInstrument) {
    TC::CHistoryDataParam history;
    history.mMarkets = {"SH", "SZ"};
    history.mCodes = {"600000", "000001"};
    QStringList steps;
    mService->suppleDataFromServer("suppledata", history,
                                   [&](int done, int total, const QString &market, const QString &code) {
                                       steps << QString("%1/%2 %3%4").arg(done).arg(total).arg(market, code);
                                   });
    EXPECT_TRUE(steps.isEmpty()); // not from within the call
    ASSERT_TRUE(QTest::qWaitFor([&] { return steps.size() == 2; }, 10000));
    EXPECT_EQ(steps, (QStringList{"1/2 SH600000", "2/2 SZ000001"}));
}

TEST_F(FormulaServiceTest, ADownloadOfNothingOrWithoutACallbackTellsNobody) {
    TC::CHistoryDataParam history;
    bool called = false;
    mService->suppleDataFromServer("suppledata", history,
                                   [&](int, int, const QString &, const QString &) { called = true; });
    history.mMarkets = {"SH"};
    history.mCodes = {"600000"};
    mService->suppleDataFromServer("suppledata", history, {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return mService->pendingResults() == 0; }, 10000));
    EXPECT_FALSE(called);
}
