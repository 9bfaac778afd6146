// A whole view under a trader's hands: mouse, keys, tips, tools and trades in any order, while data arrives, panes and
// days come and go, and the host acts on what it hears.

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "tests/containers/MainWidgetFixture.h"

#include <QHelpEvent>
#include <QPointer>
#include <QTime>
#include <QWheelEvent>

#include <limits>
#include <random>

using namespace TC;

namespace {

constexpr int kSteps = 400;
constexpr int kMostPanes = 3;

class InteractionWalk : public tests::MainWidgetFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    InteractionWalk() : mRandom(GetParam()) {
        mHost.mConfig.mClientType = EClientType::Trading;
        mHost.mLinkage.mEnabled = true;
        mHost.mStocks.add("SZ", "000001", 20.0);
        mHost.mStocks.add("SF", "rb2405", 3500.0, 1.0);
        mHost.mLog.setRecording(false);
    }

    int below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    bool oncePer(int times) { return below(times) == 0; }
    template <class Value> Value oneOf(std::initializer_list<Value> values) {
        return *(values.begin() + below(static_cast<int>(values.size())));
    }
    CRealtimeWidget *anyPane() {
        const int at = below(mMain->getSubIndexWidgets().size() + 1);
        return at == 0 ? pane() : sub(at - 1);
    }
    CRealtimeGraphWidget *anyGraph() {
        CRealtimeWidget *of = anyPane();
        return of->getGraphWidgets()[below(of->getGrapWidgetCount())];
    }
    Qt::MouseButton anyButton() {
        return oneOf({Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::RightButton, Qt::MiddleButton});
    }
    /// In the graph as a rule, about and far from it now and then.
    QPoint anyPoint(const QWidget *of) {
        if (oncePer(20)) {
            return {oneOf({-30000, -1, 0, 30000}), oneOf({-30000, -1, 0, 30000})};
        }
        return {below(of->width() + 40) - 20, below(of->height() + 40) - 20};
    }

    void pointer();
    void help();
    void keyboard();
    void view();
    void trades();
    void data();
    /// What a host may do at once when it hears of something.
    void act(int number);
    void step();

    std::mt19937 mRandom;
    QPointer<CRealtimeGraphWidget> mOn; ///< under the mouse
    QTime mTime{10, 30};
    bool mActing = false;
};

void InteractionWalk::pointer() {
    QPointer<CRealtimeGraphWidget> on = mOn && below(4) ? mOn.data() : anyGraph();
    if (on != mOn) {
        if (mOn) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(mOn, &leave);
        }
        QEnterEvent enter{QPointF(), QPointF(), QPointF()};
        QCoreApplication::sendEvent(on, &enter);
        mOn = on;
    }
    const QPoint at = anyPoint(on);
    const Qt::MouseButton button = anyButton();
    switch (below(12)) {
    case 0:
    case 1:
        return send(on, QEvent::MouseButtonPress, at, button, button);
    case 2:
    case 3:
        return send(on, QEvent::MouseButtonRelease, at, button);
    case 4:
        return send(on, QEvent::MouseButtonDblClick, at, button, button);
    case 5: {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(oncePer(3) ? static_cast<QWidget *>(mMain.get()) : on.data(), &leave);
        return;
    }
    case 6: {
        QWheelEvent wheel(at, on->mapToGlobal(at), {}, {0, oneOf({120, -120})}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(on, &wheel);
        return;
    }
    default:
        return send(on, QEvent::MouseMove, at, Qt::NoButton, oneOf({Qt::NoButton, button}));
    }
}

void InteractionWalk::help() {
    CRealtimeGraphWidget *on = anyGraph();
    const QPoint at = oneOf({anyPoint(on), QPoint(80, 80)});
    QHelpEvent tip(QEvent::ToolTip, at, on->mapToGlobal(at));
    EXPECT_TRUE(QCoreApplication::sendEvent(on, &tip));
}

void InteractionWalk::keyboard() {
    key(oneOf<int>({Qt::Key_Left, Qt::Key_Right, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End,
                    Qt::Key_Up, Qt::Key_Escape, Qt::Key_A}));
}

void InteractionWalk::view() {
    switch (below(14)) {
    case 0:
        if (mMain->getSubIndexWidgets().size() < kMostPanes) {
            mMain->addIndexWidget();
        }
        return;
    case 1:
        if (!mMain->getSubIndexWidgets().isEmpty()) {
            mMain->delIndexWidget(sub(below(mMain->getSubIndexWidgets().size()))->getId());
        }
        return;
    case 2:
        return mMain->scaleView(below(2));
    case 3:
        event(3228, 0, 2);
        return;
    case 4:
        return mMain->resize(oneOf({0, 1, 100, 101, 160, 640, 1102}), oneOf({0, 1, 30, 200, 600}));
    case 5:
        return mMain->setStock(oneOf<QString>({"SH600000", "SZ000001", "SFrb2405", "unknown"}), below(2));
    case 6:
        return mMain->request(oncePer(3));
    case 7:
        return mMain->setGraphType(oneOf({EVmGraphType::Segment, EVmGraphType::HorizontalLine,
                                          EVmGraphType::Rectangle, EVmGraphType::None}));
    case 8:
        mMain->deleteCurrGraph();
        return;
    case 9:
        return mMain->beReplay(below(2));
    case 10:
        return anyGraph()->slotStatistic(false, below(260) - 5, oneOf<QString>({"66,1,2", "3,0,0", "-1", ""}));
    case 11:
        event(3239, below(2), 0, {}, &mTime);
        return;
    case 12:
        return mMain->setVisible(below(4));
    default:
        return mMain->switchCrossline();
    }
}

void InteractionWalk::trades() {
    mUi->mLinkageFlags = oneOf({1, 2, 3, 4, 6, 7});
    for (int i = 0; i < 3; ++i) {
        mUi->mLinkageShow[i] = below(2);
    }
    mUi->mLinkageAccounts = {"A"};
    mUi->mLinkageStocks = {"SH600000"};
    mUi->mStockAccounts = {"A"};
    auto &deals = mHost.mLinkage.mDeals["SH600000"]["A"];
    auto &orders = mHost.mLinkage.mOrders["SH600000"]["A"];
    if (oncePer(4)) {
        deals.clear();
        orders.clear();
    } else {
        const std::string name = std::to_string(below(50));
        const auto deal = boost::make_shared<kvservice::CDealDetail>();
        deal->mDealKey = name;
        deal->mTime = oneOf<const char *>({"09:50:00", "101500", "14:59:59", "never"});
        deal->mPrice = 10.0 + below(40) * 0.01;
        deals[name] = deal;
        const auto order = boost::make_shared<kvservice::COrderDetail>();
        order->mOrderKey = name;
        order->mTime = deal->mTime;
        order->mPrice = deal->mPrice;
        orders[name] = order;
    }
    mMain->updateLinkageDatas();
}

void InteractionWalk::data() {
    const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
    if (live.isEmpty()) {
        return;
    }
    const fakehost::LiveRequest &request = live[below(live.size())];
    const int day = static_cast<int>(request.param.mStart.first / 1000);
    const double value = 9.5 + below(1000) / 1000.0;
    if (oncePer(3)) {
        const std::vector<double> values(static_cast<std::size_t>(below(240)), value);
        request.onHistory(
            tests::makeMeta(1, {oneOf({0, 2})}),
            tests::makeResult(tests::minuteTimes(day, 570, static_cast<int>(values.size())), values),
            request.id(), 1, QString(), below(2));
    } else {
        const double any =
            oneOf({value, value, value, 0.0, kUnsetValue, std::numeric_limits<double>::quiet_NaN()});
        request.onRealtime(0, request.id(), tests::makePoint(tests::minuteTime(day, 570 + below(240)), {any}));
    }
}

void InteractionWalk::act(int number) {
    // A press is told of every time: it is left to the others that are not.
    if (mActing || number == 3033 || number == 13 || !oncePer(3)) {
        return;
    }
    mActing = true;
    view();
    mActing = false;
}

void InteractionWalk::step() {
    switch (below(10)) {
    case 0:
        return view();
    case 1:
        return help();
    case 2:
        return keyboard();
    case 3:
        return data();
    case 4:
        return oncePer(3) ? trades() : data();
    case 5:
        return oncePer(3) ? settle() : QCoreApplication::processEvents();
    default:
        return pointer();
    }
}

TEST_P(InteractionWalk, LeavesAViewSoundAndItsScreenUpToDate) {
    showView(2);
    fill();
    mKeeper->mOnEvent = [this](int number) { act(number); };
    for (int i = 0; i < kSteps; ++i) {
        step();
        ASSERT_FALSE(HasFailure()) << "step " << i;
        ASSERT_GE(pane()->getGrapWidgetCount(), 1);
        ASSERT_GE(mUi->mCrossIndex, -1) << "step " << i;
        pane()->getGraphWidgetMouseX();
        pane()->getGraphWidgetMouseY();
        if (oncePer(40)) {
            mKeeper->grab(); // whatever state it is in can be painted
        }
    }
    mKeeper->mOnEvent = nullptr;
    mMain->show();
    mMain->resize(1102, 600);
    mMain->setStock("SH600000", false);
    mMain->request(false);
    // What a press or a narrow drag left behind is painted with the next repaint, and leaving is one.
    for (CRealtimeWidget *of : QList<CRealtimeWidget *>{pane()} + mMain->getSubIndexWidgets().toList()) {
        for (CRealtimeGraphWidget *each : of->getGraphWidgets()) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(each, &leave);
        }
    }
    settle();
    for (int i = 0; i < 20; ++i) {
        data();
    }
    settle();
    const QImage shown = tests::onScreen(*mKeeper);
    for (QWidget *widget : mKeeper->findChildren<QWidget *>()) {
        widget->update();
    }
    settle();
    EXPECT_EQ(shown, tests::onScreen(*mKeeper));
}

INSTANTIATE_TEST_SUITE_P(Random, InteractionWalk, ::testing::Range(0u, 12u));

} // namespace
