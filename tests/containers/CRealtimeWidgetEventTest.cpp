// Days that come and go, where the cross line stands, and the events of a pane.

#include "tests/containers/PaneFixture.h"

namespace tests {
namespace {

class PaneDaysTest : public PaneFixture {
protected:
    void grow(int times) {
        for (int i = 0; i < times; ++i) {
            mPane->scaleView(false);
        }
    }
    void shrink(int times) {
        for (int i = 0; i < times; ++i) {
            mPane->scaleView(true);
        }
    }
};

TEST_F(PaneDaysTest, OlderDaysComeAtTheLeftWithIdsOfTheirOwn) {
    makeMainPane();
    grow(2);
    EXPECT_EQ(mUi->mDayCount, 3);
    EXPECT_EQ(dates().mid(1), (QList<int>{kDay - kDayLength, kDay - 2 * kDayLength}));
    EXPECT_EQ(ids(), (QList<int>{0, 1, 2}));
    EXPECT_EQ(mPane->getGraphWidget(0), graph(2));
    EXPECT_EQ(mPane->getGraphWidget(2), newest());
}

TEST_F(PaneDaysTest, SixDaysAreTheLimit) {
    makeMainPane();
    grow(5);
    const int before = requests();
    grow(1);
    EXPECT_EQ(mPane->getGrapWidgetCount(), 6);
    EXPECT_EQ(mUi->mDayCount, 6);
    EXPECT_EQ(requests(), before);
}

TEST_F(PaneDaysTest, OneDayIsLeftWhateverIsAsked) {
    makeMainPane();
    shrink(3);
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1);
    EXPECT_EQ(mUi->mDayCount, 1);
}

TEST_F(PaneDaysTest, ShrinkingOneDayTakesTheTitleToTheNewest) {
    makeMainPane();
    grow(1);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10});
    answerDay("REALTIME", kDay - kDayLength, {10.20});
    mPane->setTitleData(1);
    shrink(1);
    shrink(1);
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.10")));
}

TEST_F(PaneDaysTest, ANewDayHasTheFormulasAndAsksForItselfAlone) {
    makeMainPane();
    mPane->addIndex(QStringLiteral("MACD"));
    mPane->request(kOrdinary);
    mHost.mLog.clear();
    grow(1);
    EXPECT_EQ(graph(1)->getIndexes(), mPane->getIndexes());
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(mHost.mFormulas.mLastParams.value(0).mStart.first, (kDay - kDayLength) * 1000LL);
}

TEST_F(PaneDaysTest, TheDateOfANewDayIsTakenAsItIs) {
    makeMainPane();
    mUi->mGetTradeDateFunc = [] { return kDay + 1; };
    grow(1);
    EXPECT_EQ(graph(1)->getData()->getTradeDate(), kDay + 1 - kDayLength);
}

TEST_F(PaneDaysTest, TheOldestDayGoesFirstAndItsRequestsAreWithdrawn) {
    makeMainPane();
    grow(2);
    const QPointer<TC::CRealtimeGraphWidget> oldest = graph(2);
    const QVector<QString> asked = oldest->getData()->reqIds();
    ASSERT_FALSE(asked.isEmpty());
    shrink(1);
    EXPECT_EQ(mPane->getGrapWidgetCount(), 2);
    EXPECT_EQ(ids(), (QList<int>{0, 1}));
    EXPECT_TRUE(oldest->isHidden());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(oldest.isNull());
    for (const fakehost::LiveRequest &live : mHost.mFormulas.mLive.all()) {
        EXPECT_FALSE(asked.contains(live.id()));
    }
}

TEST_F(PaneDaysTest, IdsOfDaysThatWentAreGivenOutAgain) {
    makeMainPane();
    grow(2);
    shrink(1);
    grow(1);
    EXPECT_EQ(ids(), (QList<int>{0, 1, 2}));
}

TEST_F(PaneDaysTest, DaysThatASubPaneWasMadeWithDoNotGiveIdsBack) {
    mUi->mDayCount = 2;
    makeSubPane();
    shrink(1); // the day that it was made with has none
    mUi->mDayCount = 2;
    grow(1);
    EXPECT_EQ(ids(), (QList<int>{0, 1}));
}

TEST_F(PaneDaysTest, ASubPaneFollowsTheDayCountOfTheMainPane) {
    makeSubPane();
    mUi->mDayCount = 4; // as the main pane has just written
    grow(1);
    EXPECT_EQ(mUi->mDayCount, 4);
    EXPECT_EQ(graph(1)->getData()->getTradeDate(), kDay - 3 * kDayLength);
    mPane->clearScaleView();
    EXPECT_EQ(mUi->mDayCount, 4);
}

TEST_F(PaneDaysTest, BackToOneDay) {
    makeMainPane();
    showPane();
    grow(4);
    mPane->clearScaleView();
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1);
    EXPECT_EQ(mUi->mDayCount, 1);
    EXPECT_EQ(ids(), QList<int>{0});
    EXPECT_DOUBLE_EQ(mUi->mDayWidth, 600.0);
    EXPECT_EQ(newest()->size(), QSize(600, 300));
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->getTimeLines().value(0), mUi->getXAxisByIndex(30));
    mPane->clearScaleView();
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1);
}

TEST_F(PaneDaysTest, ASelectedDayThatGoesGivesWayToTheNewest) {
    makeMainPane();
    grow(1);
    event(191, 0, 1);
    EXPECT_EQ(mPane->getCurrentGraphWidget(), graph(1));
    shrink(1);
    EXPECT_EQ(mPane->getCurrentGraphWidget(), newest());
}

TEST_F(PaneDaysTest, TheTitleOfADayThatGoesTellsTheNewest) {
    makeMainPane();
    grow(1);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10});
    answerDay("REALTIME", kDay - kDayLength, {10.20});
    mPane->setTitleData(1);
    shrink(1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    title()->updateView();
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.10")));
}

// Where the cross line stands

class PanePointerTest : public PaneFixture {
protected:
    void SetUp() override {
        makeMainPane();
        showPane(700, 316); // a day of 600, later of 300 pixels, of 241 points
    }
    void twoDays() {
        mPane->scaleView(false);
        mPane->request(kOrdinary);
        answerDay("REALTIME", kDay, {10.0, 10.5, 9.5});
        answerDay("REALTIME", kDay - kDayLength, {10.0, 9.0});
    }
};

TEST_F(PanePointerTest, NowhereWithoutTheMouse) {
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), -1);
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), -1);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseX(), -1);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseY(), -1);
    EXPECT_FALSE(mPane->getMouseInWidgetData());
}

TEST_F(PanePointerTest, TheColumnOfAGraphIsCountedFromTheLeftEndOfTheRow) {
    twoDays();
    moveOver(*newest(), {40, 70});
    mUi->mCrossIndex = 1;
    const int column = mUi->getXAxisByIndex(1);
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), column + 300);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseX(), column + 300);
    leave(*newest());
    moveOver(*graph(1), {40, 70});
    mUi->mCrossIndex = 1;
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), column);
}

TEST_F(PanePointerTest, TheRowOfTheMouseLiesBeneathTheTitle) {
    moveOver(*newest(), {40, 70});
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), 70 + 16);
    mPane->setConciseStyle(true); // a title of 26 pixels
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), 70 + 26);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseY(), 70 + 16); // whatever the title
}

TEST_F(PanePointerTest, ByKeyboardTheRowIsThatOfTheValue) {
    twoDays();
    mUi->mCursorByKey = true;
    mUi->mCrossIndex = 1;
    // The range is 10.0 +- 1.0 over 200 rows: the newest day has 10.5, 150 rows above its foot.
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), 200 - 150 + 16);
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), mUi->getXAxisByIndex(1) + 300);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseX(), -1);
    EXPECT_EQ(mPane->getSubGraphWidgetMouseY(), -1);
    EXPECT_FALSE(mPane->getMouseInWidgetData());
}

TEST_F(PanePointerTest, ByKeyboardTheGraphUnderTheMouseIsTheOneTold) {
    twoDays();
    moveOver(*graph(1), {40, 70});
    mUi->mCursorByKey = true;
    mUi->mCrossIndex = 1;
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), 200 + 16); // 9.0 is the foot
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), mUi->getXAxisByIndex(1));
    EXPECT_EQ(mPane->getSubGraphWidgetMouseY(), -1);
    EXPECT_EQ(mPane->getMouseInWidgetData(), graph(1)->getData());
}

TEST_F(PanePointerTest, ByMouseNoDataIsTold) {
    moveOver(*newest(), {40, 70});
    EXPECT_FALSE(mPane->getMouseInWidgetData());
}

TEST_F(PanePointerTest, OfTwoGraphsUnderTheMouseTheNewerCountsAndItsDataNot) {
    twoDays();
    moveOver(*graph(1), {40, 30});
    moveOver(*newest(), {40, 70}); // without having left the other
    mUi->mCrossIndex = 1;
    EXPECT_EQ(mPane->getGraphWidgetMouseX(), mUi->getXAxisByIndex(1) + 300);
    EXPECT_EQ(mPane->getGraphWidgetMouseY(), 70 + 16);
    mUi->mCursorByKey = true;
    EXPECT_EQ(mPane->getMouseInWidgetData(), graph(1)->getData());
}

// Events

class PaneEventTest : public PaneFixture {
protected:
    void SetUp() override { makeMainPane(); }
    /// The one event of a number that reached the host.
    Event only(int number) const {
        const std::vector<Event> found = mKeeper->of(number);
        EXPECT_EQ(found.size(), 1u) << number;
        return found.empty() ? Event() : found.front();
    }
    void expectOnly(int number, int second, const QString &text = QString()) const {
        const Event found = only(number);
        EXPECT_EQ(found.first, kPaneId);
        EXPECT_EQ(found.second, second);
        EXPECT_EQ(found.text, text);
        EXPECT_EQ(found.data, nullptr);
    }
};

TEST_F(PaneEventTest, TheCloseButtonAsksForThePaneToBeClosed) {
    EXPECT_TRUE(event(5, 100, 9));
    expectOnly(3020, 9, QStringLiteral("REALTIME"));
}

TEST_F(PaneEventTest, APaneWithoutFormulasIsClosedWithoutAName) {
    mPane->delAllIndex();
    event(5, 100, 0);
    expectOnly(3020, 0);
}

TEST_F(PaneEventTest, AskingToCloseFromOutside) {
    mPane->destorySubWidget();
    expectOnly(3020, 1, QStringLiteral("REALTIME"));
}

TEST_F(PaneEventTest, TheSettingsButtonIsPassedOn) {
    EXPECT_TRUE(event(5, 501));
    expectOnly(3230, 0);
}

TEST_F(PaneEventTest, TheButtonsOfTheDaysAskForDays) {
    for (const auto &button : {std::make_pair(502, 2), std::make_pair(503, 1), std::make_pair(504, 0)}) {
        mKeeper->mEvents.clear();
        EXPECT_TRUE(event(5, button.first));
        expectOnly(3228, button.second);
    }
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1); // the host decides
}

TEST_F(PaneEventTest, TheTitlesOwnButtonsReachThePane) {
    showPane();
    for (GZ::CPushButton *button : title()->findChildren<GZ::CPushButton *>()) {
        if (button->id() == TC::CIndexTitleWidget::eMoreDays) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    expectOnly(3228, 0);
}

TEST_F(PaneEventTest, AnUnknownButtonIsSwallowed) {
    EXPECT_TRUE(event(5, 77));
    EXPECT_TRUE(mKeeper->mEvents.empty());
}

TEST_F(PaneEventTest, AnUnknownEventTravelsOn) {
    EXPECT_TRUE(event(4711, 1, 2, QStringLiteral("x"))); // the keeper takes it
    EXPECT_EQ(only(4711).text, QStringLiteral("x"));
}

TEST_F(PaneEventTest, SelectingAGraphTakesTheRegionLinesOffTheOthers) {
    showPane();
    mPane->scaleView(false);
    QCoreApplication::processEvents();
    const QImage plain = painted(*newest());
    newest()->setRegionLine(30, 90);
    newest()->slotStatistic(true, 30, QStringLiteral("90,0,0")); // travels up as 191
    EXPECT_EQ(mPane->getCurrentGraphWidget(), newest());
    EXPECT_NE(painted(*newest()), plain);
    EXPECT_FALSE(event(191, 30, 1, QStringLiteral("90,0,0")));
    EXPECT_EQ(mPane->getCurrentGraphWidget(), graph(1));
    EXPECT_EQ(painted(*newest()), plain);
}

TEST_F(PaneEventTest, ASelectedGraphIsAlsoToldUpward) {
    newest()->deliverEvent(191, 30, 0, QStringLiteral("90,0,0"), nullptr);
    EXPECT_EQ(only(191).first, 30);
    EXPECT_EQ(only(191).text, QStringLiteral("90,0,0"));
}

TEST_F(PaneEventTest, AnIdThatNoGraphHasSelectsNone) {
    mPane->scaleView(false);
    event(191, 0, 1);
    event(191, 0, 17);
    EXPECT_EQ(mPane->getCurrentGraphWidget(), graph(1));
}

TEST_F(PaneEventTest, PressesAndDoubleClicksArePassedOnWithTheIdOfThePane) {
    EXPECT_TRUE(event(206, 99, 99));
    expectOnly(206, 0);
    EXPECT_TRUE(event(3032, 99, 99));
    expectOnly(3032, 0);
    EXPECT_TRUE(event(3228, 99, 2));
    expectOnly(3228, 2);
}

TEST_F(PaneEventTest, WithoutItsVolumeTheChartIsDrawnAnew) {
    showPane();
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 10.5, 9.5});
    const QImage before = painted(*newest());
    const QImage strips = painted(*strip(TC::CGraphAxisWidget::eLeft));
    mUi->mShowVolume = false;
    mPane->updateAxis(false);
    EXPECT_TRUE(event(207, 0));
    EXPECT_NE(painted(*newest()), before);
    EXPECT_NE(painted(*strip(TC::CGraphAxisWidget::eLeft)), strips);
}

TEST_F(PaneEventTest, WhatChangesTheChartRepaintsAllDays) {
    mHost.mStocks.add("SZ", "000001");
    showPane();
    mPane->scaleView(false);
    QCoreApplication::processEvents();
    const auto isRepainted = [this](int daysBack, const std::function<void()> &action) {
        QCoreApplication::processEvents();
        PaintWatch watch(graph(daysBack));
        action();
        QCoreApplication::processEvents();
        return !watch.mRegions.isEmpty() && watch.mRegions.last().contains(graph(daysBack)->rect().center());
    };
    for (const int daysBack : {0, 1}) {
        EXPECT_TRUE(isRepainted(daysBack, [this] { event(207, 0); }));
        EXPECT_TRUE(isRepainted(daysBack, [this] { event(208, 0, 1, QStringLiteral("MACD")); }));
        EXPECT_TRUE(isRepainted(daysBack, [this] { event(209, 0, 1, QStringLiteral("SZ000001")); }));
        EXPECT_TRUE(isRepainted(daysBack, [this] { event(209, 0, 0); }));
        EXPECT_TRUE(isRepainted(daysBack, [this] { mPane->updateView(); }));
        event(3029, 0);
        EXPECT_FALSE(isRepainted(daysBack, [this] { event(3029, 0); })); // nothing has changed since
    }
}

TEST_F(PaneEventTest, AFormulaIsPutInAndTakenAwayByEvent) {
    EXPECT_TRUE(event(208, 0, 1, QStringLiteral("MACD")));
    EXPECT_TRUE(mPane->findIndex(QStringLiteral("MACD")));
    EXPECT_TRUE(event(208, 0, 0, QStringLiteral("MACD")));
    EXPECT_FALSE(mPane->findIndex(QStringLiteral("MACD")));
}

TEST_F(PaneEventTest, AnOverlayIsAddedAndTakenAwayByEvent) {
    mHost.mStocks.add("SZ", "000001");
    EXPECT_TRUE(event(209, 0, 11, QStringLiteral("SZ000001")));
    EXPECT_EQ(mUi->mAddNoAxisStocks.size(), 1);
    EXPECT_TRUE(event(209, 0, 0));
    EXPECT_TRUE(mUi->mAddNoAxisStocks.isEmpty());
}

TEST_F(PaneEventTest, NewDataOfADayTakesTheTitleToIt) {
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10});
    answerDay("REALTIME", kDay - kDayLength, {10.20});
    auto *sender = static_cast<TC::IndexBaseData *>(graph(1)->getData().get());
    EXPECT_TRUE(event(3029, 0, 0, QString(), sender));
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.20")));
    EXPECT_TRUE(event(3029, 0)); // without a sender it stays there
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.20")));
    EXPECT_TRUE(event(3029, 0, 0, QString(), this)); // nor does one that is none of ours move it
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.20")));
}

TEST_F(PaneEventTest, WithTheCrossLineOnTheTitleStaysWhereItIs) {
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10});
    answerDay("REALTIME", kDay - kDayLength, {10.20});
    mPane->setTitleData(0);
    mUi->mCrossShown = true;
    event(3029, 0, 0, QString(), static_cast<TC::IndexBaseData *>(graph(1)->getData().get()));
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.10")));
}

TEST_F(PaneEventTest, ACrossLineAtTheNewestPointFollowsTheNextOne) {
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.10, 10.20, 10.30});
    mUi->mCrossShown = true;
    mUi->mCrossIndex = 1; // the newest when there were two
    mPane->updateIndexId(1);
    event(3029, 0);
    EXPECT_EQ(mUi->mCrossIndex, 2);
    EXPECT_TRUE(title()->text().contains(QStringLiteral("10.30")));
    mUi->mCrossIndex = 0;
    event(3029, 0);
    EXPECT_EQ(mUi->mCrossIndex, 0);
}

TEST_F(PaneEventTest, ARangeThatIsOutgrownIsScaledAndToldUpward) {
    showPane();
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 10.4});
    EXPECT_EQ(mKeeper->of(3151).size(), 1u);
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().value(key("REALTIME")).first, 10.4);
    EXPECT_FALSE(newest()->getData()->isRangeOutgrown());
}

TEST_F(PaneEventTest, WhatItDoesNotConsumeTravelsOnByTheBusAlone) {
    showPane();
    for (const int number : {191, 3033, 3151}) {
        mKeeper->mEvents.clear();
        EXPECT_FALSE(event(number, 0)) << number;
        EXPECT_TRUE(mKeeper->of(number).empty()) << number << ": it passes nothing on itself";
        newest()->deliverEvent(number, 0, 0, QString(), nullptr);
        EXPECT_EQ(mKeeper->of(number).size(), 1u) << number << ": once";
    }
}

TEST_F(PaneEventTest, AGraphThatIsResizedIsToldUpward) {
    showPane();
    mKeeper->mEvents.clear();
    showPane(710, 316);
    EXPECT_FALSE(mKeeper->of(3033).empty());
}

} // namespace
} // namespace tests
