// A whole view on the screen while the threads of a formula service deliver into its panes, which come and go.

#include "tests/containers/MainWidgetFixture.h"

#include <atomic>
#include <random>
#include <thread>

namespace tests {
namespace {

constexpr unsigned kViewThreads = 3;
constexpr int kViewRounds = 60; ///< of the user-interface thread
constexpr int kDeliveriesOfARound = 12; ///< of all threads: the view paints as fast as it is delivered to
constexpr int kViewPoints = 100; ///< minutes that the service knows

class PanesThread : public MainWidgetFixture {
protected:
    PanesThread() { mHost.mLog.setRecording(false); }
    ~PanesThread() override { stopService(); }

    void startService() {
        mStop = false;
        mAllowed = mDelivered.load();
        for (unsigned seed = 0; seed < kViewThreads; ++seed) {
            mService.emplace_back([this, seed] { serve(seed); });
        }
    }
    void stopService() {
        mStop = true;
        for (std::thread &thread : mService) {
            thread.join();
        }
        mService.clear();
    }
    /// One thread of the service: answers whatever is requested, histories and points mixed, until told.
    void serve(unsigned seed) {
        std::mt19937 random(seed);
        while (!mStop) {
            const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
            if (live.isEmpty() || mDelivered >= mAllowed) {
                std::this_thread::yield();
                continue;
            }
            ++mDelivered;
            deliver(live[static_cast<int>(random() % static_cast<unsigned>(live.size()))], random);
        }
    }
    static void deliver(const fakehost::LiveRequest &request, std::mt19937 &random) {
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        const double price = 9.0 + static_cast<double>(random() % 200) / 100.0;
        if (random() % 6 == 0) {
            const int count = static_cast<int>(random() % kViewPoints) + 1;
            const std::vector<double> values(static_cast<std::size_t>(count), price);
            request.onHistory(makeMeta(2), makeResult(minuteTimes(day, 570, count), values, values),
                              request.id(), 1, QString(), random() % 2 == 0);
        } else {
            const int minute = 570 + static_cast<int>(random() % kViewPoints);
            request.onRealtime(0, request.id(), makePoint(minuteTime(day, minute), {price, price}));
        }
    }
    /// Lets the service go on by a round, and handles what has come.
    void takeRound() {
        mAllowed += kDeliveriesOfARound;
        settle();
    }
    void takeRounds(int rounds) {
        const int wanted = mDelivered + rounds * kDeliveriesOfARound;
        while (mDelivered < wanted) {
            takeRound();
        }
    }
    /// Something that a user does with the view, which changes none of its parameters that results read.
    void use(int round) {
        const QVector<TC::CRealtimeWidget *> subs = mMain->getSubIndexWidgets();
        switch (round % 8) {
        case 0:
            mMain->addIndexWidget();
            mMain->getSubIndexWidgets().last()->addIndex(round % 16 ? "MACD" : "KDJ");
            mMain->getSubIndexWidgets().last()->request(corvane::ERunMode::Ordinary);
            break;
        case 1:
            mMain->delIndexWidget(subs[round % subs.size()]->getId());
            break;
        case 2:
            mMain->moveCursor(round % 3 == 0);
            break;
        case 3:
            mMain->updateIndex("MA", 0, TC::EFormulaLanguage::Native, corvane::ERunMode::Ordinary);
            break;
        case 4:
            subs.first()->clear();
            break;
        case 5:
            subs.last()->unrequest();
            subs.last()->updateIndex(round % 16 < 8 ? "VOL" : "RSI");
            subs.last()->request(corvane::ERunMode::Ordinary);
            break;
        default:
            moveTo(graph(round % 2 ? pane() : subs.first()), {10 + 7 * round % 400, 5 + round % 60});
        }
    }

    std::vector<std::thread> mService;
    std::atomic<int> mDelivered{0};
    std::atomic<int> mAllowed{0}; ///< how many deliveries there may be by now
    std::atomic<bool> mStop{false};
};

TEST_F(PanesThread, PanesComeAndGoWhileServiceThreadsDeliver) {
    showView(3);
    mMain->request(false);
    mUi->mCrossShown = true;
    startService();
    for (int round = 0; round < kViewRounds || mDelivered < kViewRounds * kDeliveriesOfARound; ++round) {
        mUnderMouse = nullptr; // it may have gone
        mAllowed += kDeliveriesOfARound;
        use(round);
        settle();
        ASSERT_FALSE(mMain->getSubIndexWidgets().isEmpty());
    }
    stopService();
    settle();
    for (TC::CRealtimeGraphWidget *shown : pane()->getGraphWidgets()) {
        for (const auto &entry : shown->getData()->getData()) {
            EXPECT_LE(entry.result.mTimes.size(), static_cast<std::size_t>(kViewPoints));
        }
    }
}

TEST_F(PanesThread, AViewGoesWhileServiceThreadsDeliver) {
    for (int round = 0; round < 6; ++round) {
        showView(2);
        mMain->request(false);
        startService();
        takeRounds(2);
        mAllowed += kDeliveriesOfARound; // which come while it goes
        mMain.reset();
        settle();
        EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty()) << "the view has withdrawn its requests";
        stopService();
    }
}

TEST_F(PanesThread, DaysChangeBetweenRequestsOfAServiceWithThreads) {
    showView(1);
    for (int round = 0; round < 6; ++round) {
        mMain->request(false);
        startService();
        takeRounds(3);
        mMain->unrequest();
        stopService(); // no result is on its way any more
        mMain->scaleView(round >= 3);
        settle();
        EXPECT_EQ(pane()->getGrapWidgetCount(), round < 3 ? round + 2 : 6 - round);
    }
}

} // namespace
} // namespace tests
