// How far the events of a graph travel: each participant on the way hears of them once.

#include "tests/containers/MainWidgetFixture.h"

#include "host/drawing/CIndexTitleWidget.h"

using namespace TC;

namespace {

/// A view that keeps the numbers that reach it.
class HeardView : public CRealtimeMainWidget {
public:
    using CRealtimeMainWidget::CRealtimeMainWidget;
    bool handleEvent(int event, int first, int second, QString text, void *payload) override {
        mHeard.push_back({event, first, second, text, payload});
        return CRealtimeMainWidget::handleEvent(event, first, second, text, payload);
    }
    std::vector<tests::Event> of(int number) const {
        std::vector<tests::Event> found;
        std::copy_if(mHeard.begin(), mHeard.end(), std::back_inserter(found),
                     [number](const tests::Event &event) { return event.number == number; });
        return found;
    }
    std::vector<tests::Event> mHeard;
};

class EventTravel : public tests::MainWidgetFixture {
protected:
    std::unique_ptr<CRealtimeMainWidget> newView(EIndexViewType type) override {
        return std::make_unique<HeardView>(mKeeper.get(), type);
    }
    std::vector<tests::Event> heard(int number) const {
        return static_cast<HeardView *>(mMain.get())->of(number);
    }
    std::size_t hostHeard(int number) const { return mKeeper->of(number).size(); }
    void showDays(int days, int panes) {
        showView(panes);
        for (int day = 1; day < days; ++day) {
            mMain->scaleView(false);
        }
        settle();
        takeEvents();
        static_cast<HeardView *>(mMain.get())->mHeard.clear();
    }
    /// Days back of the graph that the title of a pane tells of.
    static int titleDay(const CRealtimeWidget *of) {
        const auto told = of->findChild<CIndexTitleWidget *>()->getIndexData();
        const QList<CRealtimeGraphWidget *> graphs = of->getGraphWidgets();
        for (int i = 0; i < graphs.size(); ++i) {
            if (graphs[i]->getData() == told) {
                return i;
            }
        }
        return -1;
    }
};

TEST_F(EventTravel, TitlesFollowTheMouseFromDayToDayWhileTheCrossLineIsShown) {
    showDays(3, 1);
    mUi->mCrossShown = true;
    moveTo(graph(pane(), 2), {100, 50});
    EXPECT_EQ(titleDay(pane()), 2);
    EXPECT_EQ(titleDay(sub(0)), 2);
    moveTo(graph(sub(0), 1), {100, 20});
    EXPECT_EQ(titleDay(pane()), 1);
    EXPECT_EQ(titleDay(sub(0)), 1);
    moveTo(graph(pane(), 0), {100, 50});
    EXPECT_EQ(titleDay(pane()), 0);
    EXPECT_EQ(titleDay(sub(0)), 0);
    EXPECT_EQ(heard(13).size(), 3u);
    EXPECT_EQ(hostHeard(13), 3u) << "once for each graph that was entered";
}

TEST_F(EventTravel, TitlesStayWhereTheyAreWithoutTheCrossLine) {
    showDays(2, 1);
    moveTo(graph(pane(), 1), {100, 50});
    EXPECT_EQ(titleDay(pane()), 0);
    EXPECT_EQ(hostHeard(13), 1u);
}

TEST_F(EventTravel, TitleOfTheKeyboardIsThatOfTheDayEnteredLast) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showDays(1, 1);
    fill();
    mMain->scaleView(false);
    settle();
    moveTo(graph(pane(), 1), {100, 50});
    key(Qt::Key_Left);
    EXPECT_EQ(titleDay(pane()), 1);
    mMain->scaleView(true);
    settle();
    mUnderMouse = nullptr;
    key(Qt::Key_Left);
    EXPECT_EQ(titleDay(pane()), 0) << "one day is left";
}

TEST_F(EventTravel, DaysThatAPaneWasMadeWithLeaveTheTitleAlone) {
    showDays(3, 0);
    mMain->addIndexWidget();
    sub(0)->addIndex("KDJ");
    settle();
    mUi->mCrossShown = true;
    moveTo(graph(sub(0), 2), {50, 20});
    EXPECT_EQ(titleDay(pane()), 0);
    EXPECT_EQ(titleDay(sub(0)), 0);
}

TEST_F(EventTravel, StatisticsOfAGraphReachTheViewOnceAndEndThere) {
    showDays(2, 1);
    graph(pane(), 1)->slotStatistic(true, 7, QStringLiteral("20,1,2"));
    EXPECT_EQ(heard(191), (std::vector<tests::Event>{{191, 7, 1, "20,1,2", nullptr}}));
    EXPECT_EQ(pane()->getCurrentGraphWidget(), graph(pane(), 1));
    graph(sub(0))->slotStatistic(true, 8, QStringLiteral("21,1,2"));
    EXPECT_EQ(heard(191).size(), 2u);
    EXPECT_EQ(hostHeard(191), 0u);
}

TEST_F(EventTravel, OutgrownScaleReachesTheViewOnceAndEndsThere) {
    showDays(1, 1);
    graph(pane())->deliverEvent(3151, 0, 0, QString(), nullptr);
    EXPECT_EQ(heard(3151).size(), 1u);
    graph(sub(0))->deliverEvent(3151, 0, 0, QString(), nullptr);
    EXPECT_EQ(heard(3151).size(), 2u);
    EXPECT_EQ(hostHeard(3151), 0u);
}

TEST_F(EventTravel, OfAPaneWithoutAViewTheHostHearsThemOnce) {
    showView();
    CRealtimeWidget lone(9, mUi, EIndexDisplayType::Sub, EIndexViewType::Ordinary, mKeeper.get());
    for (const int number : {13, 191, 3033, 3151}) {
        takeEvents();
        graph(&lone)->deliverEvent(number, 0, 0, QString(), nullptr);
        EXPECT_EQ(hostHeard(number), 1u) << number;
    }
}

TEST_F(EventTravel, WhatAViewTellsTheHostOfArrivesOnce) {
    showDays(1, 2);
    sub(0)->destorySubWidget();
    EXPECT_EQ(hostHeard(3020), 1u);
    sub(0)->handleEvent(5, 501, 0, QString(), nullptr);
    EXPECT_EQ(hostHeard(3230), 1u);
}

} // namespace
