// Two sources of data in one process, each with a view, a clock and service threads of its own. One hands its results over,
// so that its view may change meanwhile; the other calls back on its threads, and its view is painted and moved over.

#include "host/services/ResultHandover.h"
#include "tests/containers/TwoSources.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <random>
#include <thread>

namespace tests {
namespace {

constexpr int kSourceRounds = 60; ///< of the user-interface thread
constexpr int kSourcePoints = 100; ///< minutes that a source knows

/// A source whose threads answer its requests with prices from `low` on, less than 2 above it.
class ServedSource : public Source {
public:
    ServedSource(const std::string &name, double low) : Source(name, low), mLow(low) {
        mHost.mLog.setRecording(false);
        mHost.mStocks.add("SH", "600001", low);
    }
    ~ServedSource() { stop(); }
    void start() {
        for (unsigned seed = 0; seed < 2; ++seed) {
            mThreads.emplace_back([this, seed] { serve(seed); });
        }
    }
    void stop() {
        mStop = true;
        for (std::thread &thread : mThreads) {
            thread.join();
        }
        mThreads.clear();
    }
    void allow(int deliveries) { mAllowed += deliveries; }
    bool isServed() const { return mDelivered >= mAllowed; }
    bool hasOwnPricesOnly() const {
        const std::vector<double> shown = prices();
        return !shown.empty() && std::all_of(shown.begin(), shown.end(), [this](double price) {
            return price >= mLow && price < mLow + 2.0;
        });
    }

private:
    void serve(unsigned seed) {
        std::mt19937 random(seed);
        while (!mStop) {
            const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
            if (live.isEmpty() || isServed()) {
                std::this_thread::yield();
                continue;
            }
            ++mDelivered;
            const fakehost::LiveRequest &request = live[static_cast<int>(random() % unsigned(live.size()))];
            const double price = mLow + static_cast<double>(random() % 200) / 100.0;
            const int points = static_cast<int>(random() % kSourcePoints) + 1;
            if (random() % 4 == 0) {
                const std::vector<double> values(static_cast<std::size_t>(points), price);
                request.onHistory(makeMeta(2), makeResult(minuteTimes(kDay, 570, points), values, values),
                                  request.id(), 1, QString(), false);
            } else {
                request.onRealtime(0, request.id(), makePoint(minuteTime(kDay, 570 + points), {price, price}));
            }
        }
    }

    const double mLow;
    std::vector<std::thread> mThreads;
    std::atomic<int> mDelivered{0};
    std::atomic<int> mAllowed{0}; ///< how many deliveries there may be by now
    std::atomic<bool> mStop{false};
};

class TwoSourcesThread : public testing::Test {
protected:
    TwoSourcesThread() { mEast.mContext.install<TC::CFormulaManager>(&mHandover); }
    ~TwoSourcesThread() override {
        for (ServedSource *source : {&mEast, &mWest}) {
            source->stop();
            source->mView.reset();
        }
    }
    /// What a user does with the view whose results are handed over.
    void change(int round) {
        switch (round % 4) {
        case 0:
            mEast.mView->setStock(round % 8 == 0 ? "SH600001" : "SH600000", false);
            mEast.mView->request(false);
            break;
        case 1:
            mEast.mView->scaleView(round % 8 == 1);
            break;
        case 2:
            mEast.mView->addIndexWidget();
            break;
        default:
            mEast.mView->delIndexWidget(mEast.mView->getSubIndexWidgets().last()->getId());
        }
    }

    QWidget mWindow;
    ServedSource mEast{"east", 10.0};
    ServedSource mWest{"west", 20.0};
    TC::UiThreadFormulas mHandover{mEast.mHost.mFormulas};
};

TEST_F(TwoSourcesThread, EachViewHasTheResultsOfItsOwn) {
    mWindow.resize(1800, 500);
    for (ServedSource *source : {&mEast, &mWest}) {
        source->makeView(&mWindow);
        source->mView->resize(900, 500);
    }
    mWest.mView->move(900, 0);
    mWindow.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&mWindow));
    mEast.start();
    mWest.start();
    for (int round = 0; round < kSourceRounds; ++round) {
        mEast.allow(20);
        mWest.allow(20);
        change(round);
        mWest.mView->update();
        takeTurns();
    }
    while (!mEast.isServed() || !mWest.isServed() || mHandover.pending() > 0) {
        takeTurns();
    }
    mEast.stop();
    mWest.stop();
    mEast.mView->setStock("SH600000", false);
    mEast.mView->request(false);
    mEast.answer("REALTIME", 77, 11.0);
    mWest.answer("REALTIME", 33, 21.0);
    while (mHandover.pending() > 0) {
        takeTurns();
    }
    EXPECT_EQ(mEast.mView->getUiParam()->dataCount(), 77);
    EXPECT_EQ(mWest.mView->getUiParam()->dataCount(), 33);
    EXPECT_TRUE(mEast.hasOwnPricesOnly());
    EXPECT_TRUE(mWest.hasOwnPricesOnly());
    EXPECT_DOUBLE_EQ(mEast.mView->getUiParam()->getLastClose(), 10.0);
    EXPECT_DOUBLE_EQ(mWest.mView->getUiParam()->getLastClose(), 20.0);
}

} // namespace
} // namespace tests
