#include "terminal/formula/FormulaService.h"

#include "tests/terminal/BuiltInFormulas.h"
#include "tests/terminal/ScriptedFeed.h"

#include <QCoreApplication>
#include <QQueue>
#include <QSet>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace terminal;
using tests::ScriptedFeed;

namespace {

constexpr int kToday = 1763654400; // 2025-11-21 00:00 at UTC+8
constexpr qint64 kOpen = kToday * 1000LL + 34200000; // 09:30
constexpr qint64 kMinute = 60000;
constexpr int kThreads = 4;
constexpr int kPairs = 2500; // of each thread
constexpr int kKept = 40; // requests of a thread that live on

MinuteBar bar(int minute, double price) {
    MinuteBar made;
    made.time = kOpen + minute * kMinute;
    made.open = made.high = made.low = made.price = made.average = price;
    made.volume = 100;
    return made;
}

TC::CFormulaParam param(const QString &id, bool volume, int demand) {
    TC::CFormulaParam made;
    made.mRequestId = id.toStdString();
    made.mMarket = QStringLiteral("SH");
    made.mCode = QStringLiteral("600000");
    made.mFormulaName = volume ? QStringLiteral("REALTIMEVOL") : QStringLiteral("REALTIME");
    made.mDataMode = 1;
    made.mDataDemand = demand;
    made.mStart = {kToday * 1000LL, 0};
    return made;
}

std::unique_ptr<FormulaService> makeService(MarketFeed &feed, int workers) {
    return std::make_unique<FormulaService>(
        feed, tests::makeBuiltInFormula,
        [](const TC::CFormulaParam &request) { return static_cast<int>(request.mStart.first / 1000); },
        DayPositions(), workers);
}

} // namespace

TEST(FormulaServiceThreads, TenThousandRequestsComeAndGoFromFourThreadsWhileTheMarketMoves) {
    ScriptedFeed feed;
    feed.setRunningDay(kToday);
    feed.setBars(QStringLiteral("SH600000"), kToday, {bar(0, 10.0), bar(1, 10.2)});
    const std::unique_ptr<FormulaService> service = makeService(feed, 2);

    std::atomic<int> running{kThreads};
    std::atomic<int> results{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            QQueue<QString> kept;
            for (int i = 0; i < kPairs; ++i) {
                const QString id = QStringLiteral("%1/%2").arg(t).arg(i);
                QVector<TC::CFormulaParam> params{param(id, i % 2 == 0, i % 3 == 0 ? 1 : 3)};
                service->requestFormulas(
                    params,
                    [&results](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &, const QString &, int,
                               const QString &, bool) { ++results; },
                    [&results](int, const QString &, const TC::FormulaInstantPtr &) { ++results; });
                if (i % 2 == 0) {
                    service->unrequestFormula(id); // before its history, mostly
                } else {
                    kept.enqueue(id); // lives on for a while, so that the stream meets the withdrawal
                }
                if (kept.size() > kKept || i == kPairs - 1) {
                    service->unrequestFormulas(kept.toVector());
                    kept.clear();
                }
            }
            --running;
        });
    }
    for (int i = 0; running > 0; ++i) {
        feed.change(QStringLiteral("SH600000"), bar(2 + i % 200, 10.0 + i % 7));
        QCoreApplication::processEvents();
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(service->liveRequests(), 0);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return feed.listeners() == 0 && service->pendingResults() == 0; }, 60000));
}

TEST(FormulaServiceThreads, RequestsOfFourThreadsThatStayGetTheirHistory) {
    ScriptedFeed feed;
    feed.setRunningDay(kToday);
    feed.setBars(QStringLiteral("SH600000"), kToday, {bar(0, 10.0), bar(1, 10.2)});
    const std::unique_ptr<FormulaService> service = makeService(feed, 2);

    constexpr int kEach = 50;
    QSet<QString> served; // results come on this thread; a stream that is quiet may say its own once more
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < kEach; ++i) {
                QVector<TC::CFormulaParam> params{
                    param(QStringLiteral("%1/%2").arg(t).arg(i), i % 2 == 0, i % 2 == 0 ? 1 : 3)};
                service->requestFormulas(
                    params,
                    [&served](const TC::FormulaMetaPtr &, const TC::FormulaResultPtr &result, const QString &id,
                              int, const QString &, bool) {
                        EXPECT_EQ(result->mTimes.size(), 2u);
                        served.insert(id);
                    },
                    TC::FormulaRealtimeCallback());
            }
        });
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return served.size() == kThreads * kEach; }, 60000));
    for (std::thread &thread : threads) {
        thread.join();
    }
    // Every other one stays open; one that is finished, without hidden lines, goes at some time.
    EXPECT_GE(service->liveRequests(), kThreads * kEach / 2);
    EXPECT_LE(service->liveRequests(), kThreads * kEach);
}
