// What reaches a view from its panes and from the host.

#include "tests/containers/MainWidgetFixture.h"

#include "host/windows/CIndexModelWidget.h"

#include <QTime>

#include <thread>

using namespace TC;

namespace {

class MainWidgetEvent : public tests::MainWidgetFixture {
protected:
    QList<int> heights() const {
        QList<int> found = {pane()->height()};
        for (const CRealtimeWidget *one : mMain->getSubIndexWidgets()) {
            found.append(one->height());
        }
        return found;
    }
    const TC::RegionLines &regionLines() { return graph(pane())->*peek(tests::Peek_mRegionLines()); }
    int regionLeft() { return regionLines().span().left(DayAxis::of(*mUi)); }
    int regionRight() { return regionLines().span().right(DayAxis::of(*mUi)); }
    bool regionShown() { return regionLines().isVisible(); }
    void showRegion() {
        graph(pane())->slotStatistic(true, 10, QStringLiteral("20,1,2"));
        ASSERT_TRUE(regionShown());
        takeEvents();
    }
};

TEST_F(MainWidgetEvent, OthersTravelOnWithTheirArguments) {
    showView();
    int payload = 0;
    for (const int number : {180, 189, 190, 263, 3072, 3159, 3183, 3199, 3226, 3254, 3262, 3265, 4001, 77777}) {
        EXPECT_TRUE(event(number, 3, 4, "text", &payload)) << number << ": the host has taken it";
        EXPECT_EQ(takeEvents(), (Events{{number, 3, 4, "text", &payload}}));
    }
}

TEST_F(MainWidgetEvent, PressOnAPaneSelectsIt) {
    showView(2);
    send(graph(sub(0)), QEvent::MouseButtonPress, {100, 20}, Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(frame()->geometry(), rectOf(sub(0)));
    send(graph(pane()), QEvent::MouseButtonPress, {100, 20}, Qt::LeftButton, Qt::LeftButton);
    EXPECT_EQ(frame()->geometry(), rectOf(pane()));
    EXPECT_TRUE(takeEvents().empty()) << "it ends here";
}

TEST_F(MainWidgetEvent, ClosedPaneGoesAndTheHostHearsOfIt) {
    showView(2);
    EXPECT_TRUE(event(3020, 1, 1, "KDJ"));
    EXPECT_EQ(ids(), (QList<int>{2}));
    EXPECT_EQ(takeEvents(), (Events{{3020, 1, 1, "KDJ", nullptr}}));
}

TEST_F(MainWidgetEvent, MainGraphOfAPaneAsksWithItsOwnIdSoThatThePaneStays) {
    showView(2);
    mMain->highlightWidget(1);
    EXPECT_TRUE(event(3020, 0, 0, ""));
    EXPECT_EQ(ids(), (QList<int>{1, 2}));
    EXPECT_EQ(frame()->geometry(), rectOf(sub(1))) << "the last one is selected";
    EXPECT_EQ(takeEvents(), (Events{{3020, 0, 0, "", nullptr}}));
}

TEST_F(MainWidgetEvent, AskedForAPaneItAddsOne) {
    showView();
    EXPECT_TRUE(event(3023));
    EXPECT_EQ(ids().size(), 1);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(MainWidgetEvent, ButtonOfAPaneGoesToTheHost) {
    showView(1);
    EXPECT_TRUE(event(3230, 1, 0, ""));
    EXPECT_EQ(takeEvents(), (Events{{3230, 1, 0, "", nullptr}}));
}

TEST_F(MainWidgetEvent, TitleFollowsTheDayOfAnActivatedGraph) {
    showView(1);
    mMain->scaleView(false);
    settle();
    takeEvents();
    CRealtimeGraphWidget *older = graph(pane(), 1);
    EXPECT_FALSE(event(13, 0, 0, "", &older));
    EXPECT_TRUE(takeEvents().empty()) << "it passes nothing on itself";
    pane()->deliverEvent(13, 0, 0, "", &older);
    EXPECT_EQ(takeEvents(), (Events{{13, 0, 0, "", &older}})) << "the bus carries it on";
    EXPECT_FALSE(event(13, 0, 0, "", nullptr));
    CRealtimeGraphWidget *none = nullptr;
    EXPECT_FALSE(event(13, 0, 0, "", &none));
}

// Maximising

TEST_F(MainWidgetEvent, DoubleClickOnTheOnlyFormulaPaneDoesNothing) {
    showView(1);
    const QList<int> before = heights();
    doubleClick(graph(sub(0)), {100, 20});
    settle();
    EXPECT_EQ(heights(), before);
    EXPECT_TRUE(list()->isDragEnable());
}

TEST_F(MainWidgetEvent, DoubleClickMaximisesAPaneAndASecondOneRestoresTheHeights) {
    showView(3);
    const QList<int> before = heights();
    doubleClick(graph(sub(1)), {100, 20});
    settle();
    EXPECT_FALSE(list()->isDragEnable());
    EXPECT_EQ(sub(0)->height(), 16);
    EXPECT_EQ(sub(2)->height(), 16);
    EXPECT_GT(sub(1)->height(), before[2]);
    EXPECT_NEAR(pane()->height(), before[0], 22) << "the main pane keeps about its height";
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2, 1, 1, 1})) << "those of before";
    doubleClick(graph(sub(1)), {100, 2});
    settle();
    EXPECT_EQ(heights(), before);
    EXPECT_TRUE(list()->isDragEnable());
    EXPECT_EQ(mMain->getStretchFactorList(), (std::vector<int>{2, 1, 1, 1}));
}

// Days

TEST_F(MainWidgetEvent, DaysGrowAndShrinkInAllPanes) {
    showView(1);
    EXPECT_TRUE(event(3228, 0, 0));
    EXPECT_EQ(mUi->mDayCount, 2);
    EXPECT_EQ(pane()->getGrapWidgetCount(), 2);
    EXPECT_EQ(sub(0)->getGrapWidgetCount(), 2);
    EXPECT_TRUE(event(3228, 0, 0));
    EXPECT_TRUE(event(3228, 0, 1));
    EXPECT_EQ(mUi->mDayCount, 2);
    EXPECT_FALSE(mHost.mFormulas.mOnProgress);
    EXPECT_TRUE(event(3228, 0, 2));
    EXPECT_EQ(mUi->mDayCount, 1);
    EXPECT_EQ(sub(0)->getGrapWidgetCount(), 1);
    EXPECT_TRUE(mHost.mFormulas.mOnProgress) << "back to one day downloads as well";
}

// Download

TEST_F(MainWidgetEvent, DownloadAsksForTheMinutesOfTheLastTradingDay) {
    showView();
    mMain->downloadData();
    const CHistoryDataParam &asked = mHost.mFormulas.mLastHistory;
    EXPECT_EQ(asked.mMarkets, (QList<QString>{"SH"}));
    EXPECT_EQ(asked.mCodes, (QList<QString>{"600000"}));
    EXPECT_EQ(asked.mPeriod, 60000);
    EXPECT_EQ(asked.mKind, 3001);
    EXPECT_EQ(asked.mStart, tests::kDay * 1000LL);
    EXPECT_EQ(asked.mEnd, tests::kDay * 1000LL + 54000000);
    EXPECT_EQ(mHost.mLog.of("CFormulaManager::suppleDataFromServer suppledata").size(), 1);
    mMain->setGetTradeDateFunc([] { return tests::kDay - 86400; });
    mMain->downloadData();
    EXPECT_EQ(mHost.mFormulas.mLastHistory.mStart, (tests::kDay - 86400) * 1000LL);
}

TEST_F(MainWidgetEvent, EachStepOfADownloadBeforeTheLastOneRequestsAnew) {
    showView();
    mMain->downloadData();
    const int round = mUi->mRequestId;
    const auto progress = mHost.mFormulas.mOnProgress;
    progress(0, 3, "SH", "600000");
    progress(2, 3, "SH", "600000");
    EXPECT_EQ(mUi->mRequestId, round + 2);
    progress(3, 3, "SH", "600000");
    progress(-1, 3, "SH", "600000");
    EXPECT_EQ(mUi->mRequestId, round + 2);
}

TEST_F(MainWidgetEvent, ProgressOnAThreadOfTheServiceReachesTheUserInterface) {
    showView();
    mMain->downloadData();
    const int round = mUi->mRequestId;
    std::thread service([progress = mHost.mFormulas.mOnProgress] { progress(1, 3, "SH", "600000"); });
    service.join();
    EXPECT_EQ(mUi->mRequestId, round);
    EXPECT_TRUE(QTest::qWaitFor([&] { return mUi->mRequestId == round + 1; }));
}

TEST_F(MainWidgetEvent, ProgressAfterTheViewHasGoneIsHarmless) {
    showView();
    mMain->downloadData();
    auto progress = mHost.mFormulas.mOnProgress;
    std::thread service([progress] { progress(1, 3, "SH", "600000"); });
    service.join();
    mMain.reset();
    settle();
    progress(1, 3, "SH", "600000");
    std::thread last([progress = std::move(progress)] { progress(1, 3, "SH", "600000"); });
    last.join();
    settle();
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
}

// Regions

TEST_F(MainWidgetEvent, EmptyRegionHidesTheRegionLines) {
    showView();
    fill();
    showRegion();
    mMain->statisticSelectRegion(10, "20,1,2");
    EXPECT_TRUE(regionShown());
    mMain->statisticSelectRegion(21, "20,1,2");
    EXPECT_FALSE(regionShown());
    showRegion();
    mMain->statisticSelectRegion(-5, "-1,1,2");
    EXPECT_FALSE(regionShown());
    showRegion();
    EXPECT_TRUE(event(3240));
    EXPECT_FALSE(regionShown());
}

TEST_F(MainWidgetEvent, UnreadableRegionCountsAsIndexZero) {
    showView();
    showRegion();
    mMain->statisticSelectRegion(0, "nonsense");
    EXPECT_TRUE(regionShown());
    mMain->statisticSelectRegion(1, "nonsense");
    EXPECT_FALSE(regionShown());
    mMain->statisticSelectRegion(nullptr);
}

TEST_F(MainWidgetEvent, BoundOfTheRegionIsTakenFromATime) {
    showView();
    fill();
    showRegion();
    mMain->statisticSelectRegion(10, "20,1,2");
    QTime time(9, 45);
    EXPECT_TRUE(event(3239, 0, 0, "", &time));
    EXPECT_EQ(regionLeft(), mUi->getXAxisByIndex(15));
    EXPECT_EQ(regionRight(), mUi->getXAxisByIndex(20));
    time = QTime(10, 0);
    EXPECT_TRUE(event(3239, 1, 0, "", &time));
    EXPECT_EQ(regionLeft(), mUi->getXAxisByIndex(15));
    EXPECT_EQ(regionRight(), mUi->getXAxisByIndex(30));
    EXPECT_TRUE(event(3239, 1, 0, "", nullptr));
    EXPECT_TRUE(event(3239, 2, 0, "", &time));
    EXPECT_EQ(regionRight(), mUi->getXAxisByIndex(30));
    time = QTime(9, 30);
    EXPECT_TRUE(event(3239, 1, 0, "", &time));
    EXPECT_FALSE(regionShown()) << "it ends before it starts";
}

TEST_F(MainWidgetEvent, StatisticsAskedOfAGraphEndHere) {
    showView(1);
    graph(pane())->slotStatistic(true, 10, QStringLiteral("20,1,2"));
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(regionShown());
    EXPECT_TRUE(event(3151));
    EXPECT_TRUE(takeEvents().empty());
}

// Trade linkage

TEST_F(MainWidgetEvent, SelectedDataViewIsSwitchedOnAndOff) {
    showView();
    EXPECT_EQ(mUi->mLinkageFlags, 1);
    EXPECT_TRUE(event(3160));
    EXPECT_EQ(mUi->mLinkageFlags, 1 | 4);
    EXPECT_TRUE(event(3163));
    EXPECT_TRUE(event(3162));
    EXPECT_EQ(mUi->mLinkageFlags, 1);
    mMain->showLinkageDataFromKey();
    EXPECT_EQ(mUi->mLinkageFlags, 1 | 4);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(MainWidgetEvent, ChangedAccountsRedrawTheMainPaneUnlessNoTradesAreShown) {
    showView();
    fill();
    tests::PaintWatch watch(graph(pane()));
    event(3163);
    settle();
    EXPECT_TRUE(watch.mRegions.isEmpty());
    mUi->mLinkageFlags = 2;
    event(3163);
    settle();
    EXPECT_FALSE(watch.mRegions.isEmpty());
}

TEST_F(MainWidgetEvent, HostCanAskForAnUpdateOfAllWidgets) {
    showView(1);
    tests::PaintWatch watch(timeScale());
    EXPECT_TRUE(event(3225));
    settle();
    EXPECT_FALSE(watch.mRegions.isEmpty());
}

TEST_F(MainWidgetEvent, WithoutATemplateBarItsEventsDoNothing) {
    showView(1);
    EXPECT_TRUE(event(3039, 0, 0, "MACD"));
    EXPECT_TRUE(event(3039, 0, 1, "T"));
    EXPECT_TRUE(event(3233));
    EXPECT_EQ(ids().size(), 1);
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
}

} // namespace
