// A wall of views of a market from a server, in a flood of changes.

#ifdef TIMESHARE_WITH_NATS
#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/WallWindow.h"
#include "terminal/feed/WireSubject.h"
#include "terminal/feeder/InstrumentTape.h"
#include "terminal/feeder/NatsSink.h"
#include "terminal/market/MarketDate.h"
#include "tests/feed/NatsServer.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>

using namespace terminal;

namespace {

const QDate kDay(2026, 11, 20);
constexpr int kViews = 16;
constexpr int kChanges = 20000;
constexpr double kSeconds = 1.0; ///< in which they come
constexpr int kMostWaiting = 2000; ///< results; 60 000 are computed where nothing is merged
constexpr int kMostTold = kChanges / 4;

double priceOf(int change) {
    return 10.0 + change * 0.0001;
}

/// Publishes the beats of a market and, once it is told to, changes of instruments in turn, all of one minute.
class Flood {
public:
    explicit Flood(const QString &url) : mThread([this, url] { run(url); }) {}
    ~Flood() {
        mIsEnding = true;
        mThread.join();
    }
    void begin(const QStringList &keys) {
        mKeys = keys;
        mIsBegun = true;
    }
    bool isOver() const { return mIsOver; }

private:
    void run(const QString &url) {
        FeedAddress address;
        LineFailure failure;
        readAddress(url, address);
        mSink = NatsSink::open(address, failure);
        while (mSink && !mIsEnding) {
            beat();
            if (mIsBegun && !mIsOver) {
                changeAll();
                mIsOver = mSink->confirm();
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20)); // its pace
        }
    }
    void beat() { mSink->send(clockSubject(), encodeWire(WireClock{7, ++mBeat, 1, timeOf(kDay, 600), 1.0})); }
    void changeAll() {
        std::map<QString, std::unique_ptr<InstrumentTape>> tapes;
        for (const QString &key : mKeys) {
            tapes[key] = std::make_unique<InstrumentTape>(7);
            tapes[key]->beginDay(dayOf(kDay), {}, 0);
        }
        const auto begun = std::chrono::steady_clock::now();
        for (int i = 0; i < kChanges; ++i) {
            const QString &key = mKeys[i % mKeys.size()];
            const double price = priceOf(i);
            const MinuteBar bar{timeOf(kDay, 601), price, price, price, price, price, 100.0 * i, 1000.0 * i};
            mSink->send(changeSubject(key), encodeWire(tapes[key]->change(bar)));
            if (i % 100 == 0) {
                beat();
                std::this_thread::sleep_until(begun + std::chrono::duration<double>(kSeconds * i / kChanges));
            }
        }
    }

    std::unique_ptr<NatsSink> mSink;
    quint64 mBeat = 0;
    QStringList mKeys;
    std::atomic<bool> mIsBegun{false};
    std::atomic<bool> mIsOver{false};
    std::atomic<bool> mIsEnding{false};
    std::thread mThread;
};

} // namespace

TEST(ServedWallTest, AFloodIsMergedOnItsWayToTheViews) {
    TIMESHARE_NEEDS_NATS();
    tests::NatsServer server;
    ASSERT_TRUE(server.start());
    Flood flood(server.url());
    const QTemporaryDir folder;
    TerminalSettings settings;
    settings.store = folder.filePath("market.db");
    settings.feed = server.url();
    settings.start = timeOf(kDay, 600);
    QString error;
    const auto services = TerminalServices::open(settings, error);
    ASSERT_NE(services, nullptr) << qPrintable(error);
    WallWindow wall(*services, kViews);
    wall.resize(1600, 900);
    wall.show();
    wall.showFrom("SH600000");
    QStringList keys;
    int told = 0;
    for (const ChartView *view : wall.views()) {
        keys.append(view->instrument());
        QObject::connect(view, &ChartView::changed, &wall, [&told] { ++told; });
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return services->trouble().isEmpty(); }, 20000))
        << qPrintable(services->trouble());
    int waiting = 0;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout,
                     [&] { waiting = std::max(waiting, services->formulas().pendingResults()); });
    look.start(0);
    flood.begin(keys);
    const auto shows = [&](int view) {
        const MinuteBars bars = services->feed().dayBars(keys[view], dayOf(kDay));
        return !bars.empty() && bars.back().price == priceOf(kChanges - kViews + view);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return flood.isOver() && shows(0) && shows(kViews - 1); }, 20000));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return wall.views().last()->pointCount() > 0 && services->formulas().pendingResults() == 0; },
        20000));
    EXPECT_LT(waiting, kMostWaiting);
    EXPECT_LT(told, kMostTold);
    EXPECT_GT(told, kViews);
}
#endif
