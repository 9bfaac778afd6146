// A whole view on the screen while the threads of a formula service deliver into its panes, which come and go.

#include "tests/threads/ServedView.h"

namespace tests {
namespace {

constexpr int kViewRounds = 60; ///< of the user-interface thread
constexpr int kDeliveriesOfARound = 12; ///< of all threads: the view paints as fast as it is delivered to

class PanesThread : public ServedView {
protected:
    /// Lets the service go on by a round, and handles what has come.
    void takeRound() {
        allow(kDeliveriesOfARound);
        settle();
    }
    void takeRounds(int rounds) {
        const int wanted = delivered() + rounds * kDeliveriesOfARound;
        while (delivered() < wanted) {
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
};

TEST_F(PanesThread, PanesComeAndGoWhileServiceThreadsDeliver) {
    showView(3);
    mMain->request(false);
    mUi->mCrossShown = true;
    startService();
    for (int round = 0; round < kViewRounds || delivered() < kViewRounds * kDeliveriesOfARound; ++round) {
        mUnderMouse = nullptr; // it may have gone
        allow(kDeliveriesOfARound);
        use(round);
        settle();
        ASSERT_FALSE(mMain->getSubIndexWidgets().isEmpty());
    }
    stopService();
    settle();
    for (TC::CRealtimeGraphWidget *shown : pane()->getGraphWidgets()) {
        for (const auto &entry : shown->getData()->getData()) {
            EXPECT_LE(entry.result.mTimes.size(), static_cast<std::size_t>(kServedPoints));
        }
    }
}

TEST_F(PanesThread, AViewGoesWhileServiceThreadsDeliver) {
    for (int round = 0; round < 6; ++round) {
        showView(2);
        mMain->request(false);
        startService();
        takeRounds(2);
        allow(kDeliveriesOfARound); // which come while it goes
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
