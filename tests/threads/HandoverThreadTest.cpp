// A whole view that is used in every way, its instrument, days and overlays changed, while the threads of a formula service
// deliver through the handover: nothing is withdrawn first.

#include "host/services/ResultHandover.h"
#include "tests/containers/MainWidgetFixture.h"

#include <atomic>
#include <random>
#include <thread>

namespace tests {
namespace {

constexpr unsigned kHandoverThreads = 3;
constexpr int kHandoverRounds = 60; ///< of the user-interface thread
constexpr int kHandoverPoints = 100; ///< minutes that the service knows

class HandoverThread : public MainWidgetFixture {
protected:
    HandoverThread() {
        mHost.mLog.setRecording(false);
        mHost.mStocks.add("SH", "600001");
        mHost.mStocks.add("SZ", "000001");
        TC::CSingletonT<TC::CFormulaManager>::install(&mHandover);
    }
    ~HandoverThread() override {
        stop();
        mMain.reset();
        TC::CSingletonT<TC::CFormulaManager>::install(&mHost.mFormulas);
    }
    void start() {
        for (unsigned seed = 0; seed < kHandoverThreads; ++seed) {
            mService.emplace_back([this, seed] { serve(seed); });
        }
    }
    void stop() {
        mStop = true;
        for (std::thread &thread : mService) {
            thread.join();
        }
        mService.clear();
    }
    void serve(unsigned seed) {
        std::mt19937 random(seed);
        while (!mStop) {
            const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
            if (live.isEmpty() || mDelivered >= mAllowed) {
                std::this_thread::yield();
                continue;
            }
            ++mDelivered;
            const fakehost::LiveRequest &request = live[static_cast<int>(random() % unsigned(live.size()))];
            const int day = static_cast<int>(request.param.mStart.first / 1000);
            const double price = 9.0 + static_cast<double>(random() % 200) / 100.0;
            if (random() % 6 == 0) {
                deliver(request, static_cast<int>(random() % kHandoverPoints) + 1, price);
            } else {
                const int minute = 570 + static_cast<int>(random() % kHandoverPoints);
                request.onRealtime(0, request.id(), makePoint(minuteTime(day, minute), {price, price}));
            }
        }
    }
    static void deliver(const fakehost::LiveRequest &request, int points, double price) {
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        const std::vector<double> values(static_cast<std::size_t>(points), price);
        request.onHistory(makeMeta(2), makeResult(minuteTimes(day, 570, points), values, values), request.id(),
                          1, QString(), false);
    }
    /// What a host may do with a view, without a thought about results on their way.
    void use(int round) {
        switch (round % 6) {
        case 0:
            mMain->setStock(round % 12 == 0 ? "SH600001" : "SH600000", false);
            mMain->request(false);
            break;
        case 1:
            mMain->scaleView(round % 12 == 1);
            break;
        case 2:
            mMain->addSuperposedStock(mHost.mStocks.getInstrumentDetail("SZ000001"));
            break;
        case 3:
            mMain->delAllAddStock();
            break;
        case 4:
            mMain->addIndexWidget();
            mMain->handleDoubleClickedFormula("MACD");
            break;
        default:
            mMain->delIndexWidget(mMain->getSubIndexWidgets().first()->getId());
        }
    }

    TC::UiThreadFormulas mHandover{mHost.mFormulas};
    std::vector<std::thread> mService;
    std::atomic<int> mDelivered{0};
    std::atomic<int> mAllowed{0}; ///< how many deliveries there may be by now
    std::atomic<bool> mStop{false};
};

TEST_F(HandoverThread, AViewMayChangeInEveryWayWhileResultsAreOnTheirWay) {
    showView(2);
    mMain->request(false);
    start();
    for (int round = 0; round < kHandoverRounds; ++round) {
        mUnderMouse = nullptr; // it may have gone
        mAllowed += 20;
        use(round);
        settle();
    }
    while (mDelivered < mAllowed) {
        settle();
    }
    stop();

    // What is delivered last is what is shown.
    mMain->setStock("SH600000", false);
    mMain->request(false);
    for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
        deliver(request, 77, 10.0);
    }
    while (mHandover.pending() > 0) {
        settle();
    }
    EXPECT_EQ(mUi->dataCount(), 77);
    expectScreenComplete("after all");
}

} // namespace
} // namespace tests
