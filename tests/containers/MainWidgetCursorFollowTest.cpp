// The cross line that stands while the day grows and the view changes around it.

#include "tests/containers/CursorFixture.h"

#include "host/drawing/CIndexTitleWidget.h"

#include <random>

using namespace TC;

namespace {

class CursorFollow : public tests::CursorFixture {
protected:
    CursorFollow() {
        mHost.mStocks.add("HK", "00700", 300.0, 0.2);
    } // 09:30 to 12:00, 13:01 to 16:10: 341 points

    /// The minute of a Shanghai day at an index.
    static int minuteAt(int index) { return index <= 120 ? 570 + index : 660 + index; }
    void expectColumn(int x, const QString &time) {
        for (CRealtimeWidget *one : panes()) {
            EXPECT_TRUE(line(one)->isVisible()) << one->getId();
            EXPECT_EQ(columns(line(one)), (QList<int>{50 + x})) << one->getId();
        }
        EXPECT_EQ(flagLeft(), flagAround(50 + x, time));
    }
    QImage titleOf(const CRealtimeWidget *of) const { return painted(*of->findChild<CIndexTitleWidget *>()); }
    /// The overlays of all panes, and the time scale.
    QList<QImage> shownOfCrossLine() const {
        QList<QImage> images;
        for (const CRealtimeWidget *one : panes()) {
            images << painted(*line(one));
        }
        images << painted(*timeScale());
        return images;
    }
    /// The keyboard goes away and comes back to the index.
    void pressThereAndBack() {
        key(Qt::Key_Left);
        key(Qt::Key_Right);
        settle();
    }
};

// The newest point

TEST_F(CursorFollow, NewMinuteOfTheMainPaneTakesTheLinesOfAllPanesAlong) {
    showTrading(2);
    key(Qt::Key_End);
    settle();
    expectColumn(mUi->getXAxisByIndex(120), "11:30");
    stream("REALTIME", minuteAt(121), 10.1);
    settle();
    EXPECT_EQ(mUi->mCrossIndex, 121);
    const QImage walked = screen();
    repaintAll();
    EXPECT_EQ(walked, screen());
    expectColumn(mUi->getXAxisByIndex(121), "13:01");
    const QList<QImage> followed = shownOfCrossLine();
    const QList<QImage> titles = {titleOf(pane()), titleOf(sub(0)), titleOf(sub(1))};
    pressThereAndBack();
    EXPECT_EQ(shownOfCrossLine(), followed);
    EXPECT_EQ((QList<QImage>{titleOf(pane()), titleOf(sub(0)), titleOf(sub(1))}), titles);
}

TEST_F(CursorFollow, PointOfAFormulaPaneMovesTheLinesOfTheOtherPanesToo) {
    showTrading(2);
    key(Qt::Key_End);
    key(Qt::Key_Left);
    settle();
    stream("KDJ", minuteAt(120), 10.1); // the point before the newest: the next data takes the line there
    EXPECT_EQ(mUi->mCrossIndex, 120);
    settle();
    const QImage walked = screen();
    repaintAll();
    EXPECT_EQ(walked, screen());
    expectColumn(mUi->getXAxisByIndex(120), "11:30");
}

TEST_F(CursorFollow, LineThatHasFollowedStaysAtItsIndexWhenSeveralMinutesComeAtOnce) {
    showTrading(1);
    key(Qt::Key_End);
    stream("REALTIME", minuteAt(121), 10.1);
    ASSERT_EQ(mUi->mCrossIndex, 121);
    answer("REALTIME", std::vector<double>(130, 10.0));
    settle();
    EXPECT_EQ(mUi->mCrossIndex, 121);
    expectColumn(mUi->getXAxisByIndex(121), "13:01");
}

TEST_F(CursorFollow, HorizontalLineOfTheKeyboardGoesWithItsValueWhenTheScaleChanges) {
    showTrading(1);
    key(Qt::Key_End);
    key(Qt::Key_Left);
    settle();
    const QList<int> before = rows(line(pane()));
    stream("REALTIME", minuteAt(120), 14.0); // far above the scale
    pressThereAndBack();
    const QList<int> after = rows(line(pane()));
    ASSERT_NE(after, before);
    key(Qt::Key_Left);
    settle();
    const QList<int> older = rows(line(pane()));
    stream("REALTIME", minuteAt(120), 20.0);
    settle();
    const QImage followed = painted(*line(pane()));
    EXPECT_NE(rows(line(pane())), older);
    pressThereAndBack();
    EXPECT_EQ(painted(*line(pane())), followed) << "as if the keyboard had moved it there now";
}

// Another instrument, other days, another size

/// Moved by the keyboard, or by the mouse.
class CursorOfBoth : public CursorFollow, public ::testing::WithParamInterface<bool> {
protected:
    void showAt(int index) {
        showTrading(1);
        if (GetParam()) {
            key(Qt::Key_End);
            for (int i = 120; i > index; --i) {
                key(Qt::Key_Left);
            }
        } else {
            mUi->mCrossShown = true;
            moveTo(graph(pane()), {mUi->getXAxisByIndex(index), 100});
        }
        ASSERT_EQ(mUi->mCrossIndex, index);
    }
};
INSTANTIATE_TEST_SUITE_P(KeyboardAndMouse, CursorOfBoth, ::testing::Bool());

TEST_P(CursorOfBoth, AnotherInstrumentTakesLinesAndFlagToTheColumnOfTheIndex) {
    showAt(119);
    mMain->setStock("HK00700", false);
    expectScreenComplete("with the new axis");
    ASSERT_EQ(mUi->mPointCount, 341);
    EXPECT_EQ(mUi->mCrossIndex, 119);
    expectColumn(mUi->getXAxisByIndex(119), "11:29");
}

TEST_F(CursorFollow, IndexBeyondAShorterDayBecomesItsLast) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showView();
    mMain->setStock("HK00700", false);
    for (int i = 0; i < 301; ++i) {
        key(Qt::Key_Right);
    }
    ASSERT_EQ(mUi->mCrossIndex, 300);
    mMain->setStock("SH600000", false);
    settle();
    EXPECT_EQ(mUi->mCrossIndex, 240);
    expectColumn(mUi->getXAxisByIndex(240), "15:00");
    key(Qt::Key_Left);
    EXPECT_EQ(mUi->mCrossIndex, 239);
}

TEST_F(CursorFollow, ValuesOfADayThatHasGoneAreNotShown) {
    showTrading();
    mMain->scaleView(false);
    settle();
    for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        if (request.param.mFormulaName == "REALTIME.lua" && day != tests::kDay) {
            request.onHistory(
                tests::makeMeta(1, {0}),
                tests::makeResult(tests::minuteTimes(day, 570, 241), std::vector<double>(241, 10.3)),
                request.id(), 1, QString(), false);
        }
    }
    settle();
    moveTo(graph(pane(), 1), {100, 100});
    key(Qt::Key_Left);
    key(Qt::Key_Left); // the line shows values of the older day
    leaveGraph();
    mMain->scaleView(true);
    expectScreenComplete("one day");
    const QImage shown = painted(*line(pane()));
    pressThereAndBack();
    EXPECT_EQ(painted(*line(pane())), shown);
    EXPECT_EQ(rows(line(pane())), (QList<int>{pane()->getGraphWidgetMouseY()}));
}

TEST_F(CursorFollow, KeyboardHasNoHorizontalLineInAFormulaPaneAtTheEndsOfTheDay) {
    showTrading(1);
    mUi->mCrossShown = true;
    moveTo(graph(sub(0)), {300, 20});
    moveTo(graph(sub(0)), {301, 20});
    ASSERT_EQ(rows(line(sub(0))).size(), 1);
    for (const int code : {Qt::Key_End, Qt::Key_Home}) {
        key(code);
        EXPECT_TRUE(rows(line(sub(0))).isEmpty());
    }
}

TEST_F(CursorFollow, DaysThatComeAndGoTakeTheLinesAlong) {
    showTrading(1);
    key(Qt::Key_End);
    key(Qt::Key_Left);
    for (const bool fewer : {false, false, true, true}) {
        mMain->scaleView(fewer);
        expectScreenComplete("days");
        const int days = mUi->mDayCount;
        const int x = mUi->getXAxisByIndex(119) + graph(pane(), days - 1)->width() * (days - 1);
        for (CRealtimeWidget *one : panes()) {
            EXPECT_EQ(columns(line(one)), (QList<int>{50 + x})) << days;
        }
        EXPECT_EQ(flagLeft(), flagAround(50 + mUi->getXAxisByIndex(119), "11:29"))
            << "no day is under the mouse";
    }
    mMain->scaleView(false);
    event(3228, 0, 2);
    expectScreenComplete("back to one day");
    expectColumn(mUi->getXAxisByIndex(119), "11:29");
}

TEST_F(CursorFollow, LinesOfTheMouseStayInTheirDay) {
    showTrading(1);
    mUi->mCrossShown = true;
    moveTo(graph(sub(0)), {300, 20});
    const int index = mUi->mCrossIndex;
    mMain->scaleView(false);
    mMain->scaleView(false);
    expectScreenComplete("three days");
    EXPECT_EQ(mUi->mCrossIndex, index);
    const int x = 50 + mUi->getXAxisByIndex(index) + 2 * graph(pane())->width();
    EXPECT_EQ(columns(line(pane())), (QList<int>{x}));
    EXPECT_EQ(columns(line(sub(0))), (QList<int>{x}));
    EXPECT_EQ(flagLeft(), flagAround(x, "10:42")) << qPrintable(mUi->getDateTimeByIndex(index).toString());
}

TEST_P(CursorOfBoth, AnotherSizeTakesLinesAndFlagAlong) {
    showAt(60);
    for (const QSize &size : {QSize(700, 400), QSize(702, 600), QSize(702, 460), QSize(1302, 500)}) {
        mKeeper->resize(size);
        mMain->resize(size);
        expectScreenComplete("size");
        expectColumn(mUi->getXAxisByIndex(60), "10:30");
        if (GetParam()) {
            const QList<QImage> followed = shownOfCrossLine();
            pressThereAndBack();
            EXPECT_EQ(shownOfCrossLine(), followed);
        }
    }
}

TEST_F(CursorFollow, NewPaneHasTheLineOfTheKeyboardAtOnce) {
    showTrading(1);
    key(Qt::Key_End);
    key(Qt::Key_Left);
    mMain->addIndexWidget();
    expectScreenComplete("pane added");
    EXPECT_EQ(columns(line(sub(1))), (QList<int>{50 + mUi->getXAxisByIndex(119)}));
    mMain->delIndexWidget(sub(0)->getId());
    expectScreenComplete("pane removed");
    const QImage followed = painted(*line(pane()));
    pressThereAndBack();
    EXPECT_EQ(painted(*line(pane())), followed);
}

TEST_F(CursorFollow, HomeShowsTheLinesBeforeTheMouseHasBeenThere) {
    showTrading(1);
    key(Qt::Key_Home);
    expectScreenComplete("home");
    for (CRealtimeWidget *one : panes()) {
        EXPECT_TRUE(line(one)->isVisible());
        EXPECT_EQ(columns(line(one)), (QList<int>{51}));
    }
    EXPECT_EQ(flagLeft(), 50);
}

TEST_F(CursorFollow, FlagStandsInTheOldestDayOnceTheMouseHasLeftTheGraphs) {
    showTrading(0);
    mMain->scaleView(false);
    mMain->scaleView(false);
    mUi->mCrossShown = true;
    moveTo(graph(pane(), 1), {100, 100});
    settle();
    const int left = flagLeft();
    leaveGraph();
    expectScreenComplete("on the title strip");
    EXPECT_EQ(flagLeft(), left - static_cast<int>(mUi->mDayWidth)) << "one day to the left";
    const int oldest = flagLeft();
    timeScale()->setCursor(10, 20);
    timeScale()->refreshFlag();
    const int index = mUi->getIndexByXAxis(100);
    timeScale()->setCursor(index, mUi->getXAxisByIndex(index));
    timeScale()->refreshFlag();
    EXPECT_EQ(flagLeft(), oldest);
}

// Any order of all that

class CursorWalk : public CursorFollow, public ::testing::WithParamInterface<unsigned> {
protected:
    CursorWalk() : mRandom(GetParam()) {}
    int below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    CRealtimeWidget *anyPane() { return panes()[below(panes().size())]; }

    /// A whole day so far for a request.
    void answerOne(const fakehost::LiveRequest &request) {
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        const std::vector<double> values(static_cast<std::size_t>(1 + below(mMinute)),
                                         9.0 + below(200) / 100.0);
        request.onHistory(
            tests::makeMeta(1, {0}),
            tests::makeResult(tests::minuteTimes(day, 570, static_cast<int>(values.size())), values),
            request.id(), 1, QString(), false);
    }
    /// A point, or the whole day so far, for one of the requests.
    void deliver() {
        const QList<fakehost::LiveRequest> live = mHost.mFormulas.mLive.all();
        const fakehost::LiveRequest &request = live[below(live.size())];
        if (below(4) == 0) {
            return answerOne(request);
        }
        mMinute = qMin(mMinute + below(2), 330);
        const int day = static_cast<int>(request.param.mStart.first / 1000);
        request.onRealtime(0, request.id(),
                           tests::makePoint(tests::minuteTime(day, 570 + mMinute),
                                            {9.0 + below(below(10) ? 200 : 2000) / 100.0}));
    }
    void request() {
        mMain->request(false);
        for (const fakehost::LiveRequest &request : mHost.mFormulas.mLive.all()) {
            answerOne(request);
        }
    }
    void changeView() {
        switch (below(8)) {
        case 0:
        case 1:
            return mMain->scaleView(below(2));
        case 2:
            event(3228, 0, 2);
            return;
        case 3: {
            const QSize size(600 + below(600), 300 + below(300));
            mKeeper->resize(size);
            return mMain->resize(size);
        }
        case 4:
            if (mMain->getSubIndexWidgets().size() < 4) {
                mMain->addIndexWidget();
                mMain->getSubIndexWidgets().last()->addIndex(below(2) ? "MACD" : "KDJ");
                request();
            }
            return;
        case 5:
            if (!ids().isEmpty()) {
                mMain->delIndexWidget(ids()[below(ids().size())]);
            }
            return;
        case 6:
            mMain->setStock(below(2) ? "HK00700" : "SH600000", false);
            return request();
        default:
            mMain->updateIndex(below(2) ? "TREND" : "REALTIME", 0, EFormulaLanguage::Native,
                               corvane::ERunMode::Ordinary);
            return request();
        }
    }
    void useMouse() {
        CRealtimeGraphWidget *at = graph(anyPane(), below(mUi->mDayCount));
        switch (below(8)) {
        case 0:
            return leaveGraph();
        case 1: {
            leaveGraph();
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(mMain.get(), &leave);
            return;
        }
        case 2:
            if (mUnderMouse == graph(pane())) {
                doubleClick(mUnderMouse, {below(at->width()), below(at->height())});
            }
            return;
        default:
            moveTo(at, {below(at->width()), below(at->height())});
        }
    }
    void step() {
        switch (below(8)) {
        case 0:
            return changeView();
        case 1:
        case 2:
            mMouseMoved = true;
            return useMouse();
        case 3:
        case 4:
            mMouseMoved = false;
            return key(
                QList<int>{Qt::Key_Left, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End}[below(5)]);
        default:
            return deliver();
        }
    }
    /// Going away and coming back with the keyboard changes nothing: it stands where it has to.
    void expectWhereTheKeyboardWouldPutIt() {
        const int index = mUi->mCrossIndex;
        const bool otherDay =
            mMouseMoved && mUi->mDayCount > 1; // the keyboard would take it to that of the mouse
        if (mUi->mCrossShown && mUi->mCursorByKey && index > 0 && index < mUi->mDataCount && !otherDay) {
            const QList<QImage> followed = shownOfCrossLine();
            pressThereAndBack();
            ASSERT_EQ(mUi->mCrossIndex, index);
            EXPECT_EQ(shownOfCrossLine(), followed);
            ++mCompared;
        }
    }

    std::mt19937 mRandom;
    int mMinute = 60; ///< newest, since 09:30
    bool mMouseMoved = false; ///< since the keyboard moved the cross line
    int mCompared = 0;
};

TEST_P(CursorWalk, LeavesThePixelsOfAWholeRepaintAndTheLineWhereItBelongs) {
    showTrading(2);
    mHost.mLog.setRecording(false);
    for (int i = 0; i < 120; ++i) {
        step();
        expectScreenComplete("step " + std::to_string(i));
        expectWhereTheKeyboardWouldPutIt();
        ASSERT_FALSE(HasFailure()) << "step " << i;
    }
    EXPECT_GT(mCompared, 0);
}

INSTANTIATE_TEST_SUITE_P(Random, CursorWalk, ::testing::Range(0u, 10u));

} // namespace
