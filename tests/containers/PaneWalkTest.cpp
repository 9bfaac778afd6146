// A main pane and a sub pane of one view, driven by a host in any order and at any size.

#include "containers/Repaint.h"
#include "tests/containers/PaneFixture.h"

#include "host/toolkit/CWidgetList.h"

#include <QScreen>
#include <QWindow>

#include <limits>
#include <random>

namespace tests {
namespace {

constexpr int kSteps = 250;

class PaneWalk : public PaneFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    PaneWalk() : mRandom(GetParam()) {
        mHost.mStocks.add("SZ", "000001", 20.0);
        mHost.mStocks.add("SF", "rb2405", 3500.0, 1.0);
        mHost.mStocks.mPortfolios.insert(QStringLiteral("77"));
        mHost.mIndexes.add(QStringLiteral("CD01"));
        mHost.mSectors.mAOfH.insert(QStringLiteral("SZ000001"), QStringLiteral("SH600000"));
        mHost.mLog.setRecording(false);
    }
    ~PaneWalk() override { mSub.reset(); }

    int below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    template <class Value> Value oneOf(std::initializer_list<Value> values) {
        return *(values.begin() + below(static_cast<int>(values.size())));
    }
    OpenPane &anyPane() { return below(2) ? *mPane : *mSub; }
    QString anyStock() {
        return oneOf<QString>({"SH600000", "SZ000001", "SFrb2405", "77", "CD01", "unknown", ""});
    }
    QString anyFormula() { return oneOf<QString>({"REALTIME", "REALTIMEVOL", "MACD", "kdj", "nothing", ""}); }

    void makeView() {
        makeMainPane();
        mSub = std::make_unique<OpenPane>(kPaneId + 1, mUi, TC::EIndexDisplayType::Sub,
                                          TC::EIndexViewType::Ordinary, mKeeper.get());
        QObject::connect(mPane.get(), &OpenPane::pointCountChanged, mSub.get(), &OpenPane::repaintChanged);
        mSub->addIndex(QStringLiteral("MACD"));
        mKeeper->resize(600, 500);
        arrange(600, 300, 200);
        mKeeper->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(mKeeper.get()));
    }
    void arrange(int width, int main, int sub) {
        mPane->setGeometry(0, 0, width, main);
        mSub->setGeometry(0, main, width, sub);
    }
    void deliver() {
        const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
        if (live.isEmpty()) {
            return;
        }
        const fakehost::LiveRequest &request = live[below(live.size())];
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        const double value = 9.0 + below(2000) / 1000.0;
        if (below(3) == 0) {
            std::vector<double> values(static_cast<std::size_t>(below(240)), value);
            request.onHistory(makeMeta(1, {oneOf({0, 2})}),
                              makeResult(minuteTimes(day, 570, static_cast<int>(values.size())), values),
                              request.id(), 1, QString(), below(2));
        } else {
            const double any =
                oneOf({value, value, value, 0.0, TC::kUnsetValue, std::numeric_limits<double>::quiet_NaN(),
                       std::numeric_limits<double>::infinity()});
            request.onRealtime(0, request.id(), makePoint(minuteTime(day, 570 + below(240)), {any}));
        }
    }
    void scale(int step) {
        for (OpenPane *pane : {mPane.get(), mSub.get()}) { // the main pane first, as a view does
            if (step == 2) {
                pane->clearScaleView();
            } else {
                pane->scaleView(step == 1);
            }
        }
    }
    void step();
    void command(OpenPane &pane);
    void pointer(OpenPane &pane);
    void expectSound(OpenPane &pane) {
        const QList<TC::CRealtimeGraphWidget *> graphs = pane.getGraphWidgets();
        ASSERT_GE(graphs.size(), 1);
        ASSERT_LE(graphs.size(), 6);
        ASSERT_EQ(graphs.size(), pane.getGrapWidgetCount());
        ASSERT_TRUE(graphs.contains(pane.getCurrentGraphWidget()));
        ASSERT_EQ(pane.getGrapWidgetID(graphs.first()), 0);
        for (int i = 1; i < graphs.size(); ++i) {
            ASSERT_EQ(pane.getGrapWidgetID(graphs[i]), i);
        }
    }

    std::mt19937 mRandom;
    std::unique_ptr<OpenPane> mSub;
};

void PaneWalk::command(OpenPane &pane) {
    switch (below(16)) {
    case 0:
        return pane.request(oneOf({kOrdinary, corvane::ERunMode::HandOver}));
    case 1:
        return pane.syncRequest(kOrdinary);
    case 2:
        return pane.unrequest();
    case 3:
        return pane.clear();
    case 4:
        return pane.addIndex(anyFormula());
    case 5:
        return pane.delIndex(anyFormula());
    case 6:
        return pane.updateIndex(below(3), anyFormula());
    case 7:
        return pane.updateOverlay(oneOf({0, 1, 2, 11, 5}), anyStock());
    case 8:
        return pane.setTitleData(below(8) - 1);
    case 9:
        return pane.updateIndexId(below(260) - 2);
    case 10:
        return pane.updateAxis(below(2));
    case 11:
        return pane.setAutoIndex(below(2));
    case 12:
        return pane.setIsLoginInit(below(2));
    case 13:
        return pane.beReplay(below(8) == 0);
    case 14:
        return pane.updateLinkageData(oneOf<QString>({"a", "b", "a,b", ""}), below(2));
    default: {
        const QString key = anyStock();
        mUi->setStock(key, false);
        pane.setStock(key, below(2));
    }
    }
}

void PaneWalk::pointer(OpenPane &pane) {
    TC::CRealtimeGraphWidget *graph = pane.getGraphWidgets()[below(pane.getGrapWidgetCount())];
    mUi->mCrossShown = below(2);
    mUi->mCursorByKey = below(2);
    mUi->mCrossIndex = below(260) - 5;
    if (below(3) == 0) {
        leave(*graph);
    } else {
        moveOver(*graph, {below(400) - 50, below(400) - 50});
    }
    pane.getCrossLineWidget()->setVisible(below(2));
    pane.getCrossLineWidget()->setX(pane.getGraphWidgetMouseX());
    pane.getCrossLineWidget()->setY(pane.getGraphWidgetMouseY());
    pane.getSubGraphWidgetMouseX();
    pane.getSubGraphWidgetMouseY();
    pane.getMouseInWidgetData();
}

void PaneWalk::step() {
    switch (below(8)) {
    case 0:
        return scale(below(10) == 0 ? 2 : below(2));
    case 1:
        return pointer(anyPane());
    case 2:
        return arrange(oneOf({0, 1, 99, 100, 101, 150, 600, 1500}), oneOf({0, 1, 17, 40, 300}),
                       oneOf({0, 16, 200}));
    case 3: {
        const int number = oneOf({5, 191, 206, 207, 208, 209, 3029, 3032, 3151, 3228, 3033, 4711});
        anyPane().handleEvent(number, oneOf({100, 501, 502, 503, 504, 1024, 7}), below(4), anyFormula(),
                              nullptr);
        return;
    }
    case 4:
        return command(anyPane());
    case 5:
        QCoreApplication::processEvents();
        return;
    default:
        return deliver();
    }
}

TEST_P(PaneWalk, AnyOrderOfCallsLeavesAPaneSound) {
    makeView();
    for (int i = 0; i < kSteps; ++i) {
        step();
        expectSound(*mPane);
        expectSound(*mSub);
        ASSERT_FALSE(HasFatalFailure()) << "step " << i;
        // A sub pane is never without the days of the view, in whatever order they came.
        ASSERT_EQ(mPane->getGrapWidgetCount(), mUi->mDayCount);
    }
}

TEST_P(PaneWalk, RepaintingWhatChangedShowsWhatAWholeRepaintShows) {
    makeView();
    mPane->request(kOrdinary);
    mSub->request(kOrdinary);
    for (int i = 0; i < kSteps; ++i) {
        if (below(20) == 0) {
            scale(below(2));
        } else if (below(20) == 0) {
            mPane->updateAxis(true);
            TC::updateWithChildren(mPane.get());
        } else {
            deliver();
        }
        if (below(8) == 0) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QImage shown =
        mKeeper->screen()->grabWindow(mKeeper->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    const QImage whole = mKeeper->grab().toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(shown.size(), whole.size());
    EXPECT_EQ(shown, whole);
}

INSTANTIATE_TEST_SUITE_P(Random, PaneWalk, ::testing::Range(0u, 30u));
INSTANTIATE_TEST_SUITE_P(PaneAheadOfTheMainOne, PaneWalk, ::testing::Values(371u));

} // namespace
} // namespace tests
