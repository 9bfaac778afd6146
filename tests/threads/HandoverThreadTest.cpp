// A whole view that is used in every way, its instrument, days and overlays changed, while the threads of a formula service
// deliver through the handover: nothing is withdrawn first.

#include "host/services/ResultHandover.h"
#include "tests/threads/ServedView.h"

namespace tests {
namespace {

constexpr int kHandoverRounds = 60; ///< of the user-interface thread

class HandoverThread : public ServedView {
protected:
    HandoverThread() {
        mHost.mStocks.add("SH", "600001");
        mHost.mStocks.add("SZ", "000001");
        TC::CSingletonT<TC::CFormulaManager>::install(&mHandover);
    }
    ~HandoverThread() override {
        stopService();
        mMain.reset();
        TC::CSingletonT<TC::CFormulaManager>::install(&mHost.mFormulas);
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
};

TEST_F(HandoverThread, AViewMayChangeInEveryWayWhileResultsAreOnTheirWay) {
    showView(2);
    mMain->request(false);
    startService();
    for (int round = 0; round < kHandoverRounds; ++round) {
        mUnderMouse = nullptr; // it may have gone
        allow(20);
        use(round);
        settle();
    }
    while (!hasDeliveredAll()) {
        settle();
    }
    stopService();

    // What is delivered last is what is shown.
    mMain->setStock("SH600000", false);
    mMain->request(false);
    for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
        deliver(request, 77, 10.0, false);
    }
    while (mHandover.pending() > 0) {
        settle();
    }
    EXPECT_EQ(mUi->dataCount(), 77);
    expectScreenComplete("after all");
}

} // namespace
} // namespace tests
