// How a pane is built, laid out and scaled.

#include "tests/containers/PaneFixture.h"

namespace tests {
namespace {

class PaneTest : public PaneFixture {
protected:
    QRect place(const QWidget *widget) const { return {widget->mapTo(mPane.get(), QPoint()), widget->size()}; }
};

TEST_F(PaneTest, AMainPaneDecidesTheGeometryOfTheView) {
    makeMainPane();
    EXPECT_EQ(mPane->objectName(), QStringLiteral("real_time_widget"));
    EXPECT_EQ(mPane->getId(), kPaneId);
    EXPECT_EQ(mPane->getUiParam(), mUi);
    EXPECT_EQ(mUi->mLeftAxisWidth, 50);
    EXPECT_EQ(mUi->mRightAxisWidth, 50);
    showPane();
    EXPECT_EQ(mUi->mLeftAxis, strip(TC::CGraphAxisWidget::eLeft));
    EXPECT_EQ(mUi->mRightAxis, strip(TC::CGraphAxisWidget::eRight));
    EXPECT_DOUBLE_EQ(mUi->mDayWidth, 600.0);
}

TEST_F(PaneTest, ASubPaneLeavesTheGeometryOfTheViewAlone) {
    makeSubPane();
    showPane();
    EXPECT_EQ(mUi->mLeftAxisWidth, 0);
    EXPECT_EQ(mUi->mRightAxisWidth, 0);
    EXPECT_EQ(mUi->mLeftAxis, nullptr);
    EXPECT_EQ(mUi->mRightAxis, nullptr);
    EXPECT_DOUBLE_EQ(mUi->mDayWidth, 0.0);
}

TEST_F(PaneTest, TheAxisStripsOfAMainPaneThatGoesAreForgotten) {
    makeMainPane();
    mPane.reset();
    EXPECT_EQ(mUi->mLeftAxis, nullptr);
    EXPECT_EQ(mUi->mRightAxis, nullptr);
}

TEST_F(PaneTest, TitleAboveStripsAndGraphBeneath) {
    makeMainPane();
    showPane(700, 316);
    EXPECT_EQ(place(title()), QRect(0, 0, 700, 16));
    EXPECT_EQ(place(strip(TC::CGraphAxisWidget::eLeft)), QRect(0, 16, 50, 300));
    EXPECT_EQ(place(newest()), QRect(50, 16, 600, 300));
    EXPECT_EQ(place(strip(TC::CGraphAxisWidget::eRight)), QRect(650, 16, 50, 300));
    EXPECT_EQ(place(mPane->getCrossLineWidget()), QRect(0, 0, 700, 316));
    EXPECT_TRUE(mPane->getCrossLineWidget()->isHidden());
}

TEST_F(PaneTest, InTheConciseStyleALineDividesTitleAndGraphs) {
    mHost.mConfig.mConfig.mConcise = true;
    makeMainPane();
    showPane(700, 317);
    EXPECT_EQ(place(title()), QRect(0, 0, 700, 16));
    EXPECT_EQ(place(newest()), QRect(50, 17, 600, 300));
}

TEST_F(PaneTest, WithoutAConfigurationThereIsNoSuchLine) {
    mHost.mConfig.mHasConfig = false;
    makeMainPane();
    showPane(700, 316);
    EXPECT_EQ(place(newest()), QRect(50, 16, 600, 300));
}

TEST_F(PaneTest, ANewPaneHasOneGraphWithIdZero) {
    makeMainPane();
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1);
    EXPECT_EQ(ids(), QList<int>{0});
    EXPECT_EQ(mPane->getCurrentGraphWidget(), newest());
    EXPECT_EQ(mPane->getGrapWidgetID(nullptr), -1);
}

TEST_F(PaneTest, BeyondTheEndsOfTheRowThereIsNoGraph) {
    makeMainPane();
    EXPECT_EQ(mPane->getGraphWidget(0), newest());
    EXPECT_EQ(mPane->getGraphWidget(1), nullptr);
    EXPECT_EQ(mPane->getGraphWidget(-1), nullptr);
}

TEST_F(PaneTest, ASubPaneOfAThreeDayViewHasThreeGraphsOfWhichTheNewestHasAnId) {
    mUi->mDayCount = 3;
    makeSubPane();
    EXPECT_EQ(dates(), (QList<int>{kDay, kDay - kDayLength, kDay - 2 * kDayLength}));
    EXPECT_EQ(ids(), (QList<int>{0, -1, -1}));
    EXPECT_EQ(mPane->getGraphWidget(0), graph(2)); // the oldest day at the left
}

TEST_F(PaneTest, ASubPaneOfAPastDayStartsAtThatDay) {
    mUi->mDayCount = 2;
    mUi->mGetTradeDateFunc = [] { return kDay - 7 * kDayLength; };
    makeSubPane();
    EXPECT_EQ(dates(), (QList<int>{kDay - 7 * kDayLength, kDay - 8 * kDayLength}));
}

TEST_F(PaneTest, AMainPaneStartsWithOneDayWhateverTheDayCount) {
    mUi->mDayCount = 3;
    makeMainPane();
    EXPECT_EQ(mPane->getGrapWidgetCount(), 1);
}

TEST_F(PaneTest, GraphsOfSeveralDaysStandSideBySide) {
    makeMainPane();
    showPane();
    mPane->scaleView(false);
    mPane->scaleView(false);
    EXPECT_EQ(place(graph(2)), QRect(50, 16, 200, 300));
    EXPECT_EQ(place(graph(1)), QRect(250, 16, 200, 300));
    EXPECT_EQ(place(graph(0)), QRect(450, 16, 200, 300));
    EXPECT_DOUBLE_EQ(mUi->mDayWidth, 200.0);
    EXPECT_TRUE(graph(2)->isVisible());
}

// The run button

TEST_F(PaneTest, OnlyASubPaneHasARunButton) {
    makeMainPane();
    EXPECT_EQ(runButton(), nullptr);
    makeSubPane();
    ASSERT_NE(runButton(), nullptr);
    EXPECT_EQ(runButton()->text(), QStringLiteral("运行模型"));
    EXPECT_EQ(runButton()->size(), QSize(50, 20));
    EXPECT_TRUE(runButton()->isHidden());
}

TEST_F(PaneTest, TheRunButtonStandsAtTheRightEndOfTheFirstDay) {
    makeScriptModel("MACD");
    makeSubPane();
    showPane();
    mUi->mRightAxisWidth = 50;
    mUi->mDayWidth = 200.9;
    mPane->setAutoIndex(false);
    mPane->request(kOrdinary);
    EXPECT_TRUE(runButton()->isVisible());
    EXPECT_EQ(runButton()->pos(), QPoint(250, 17));
    mHost.mConfig.mConfig.mConcise = true;
    showPane(701, 316);
    EXPECT_EQ(runButton()->pos(), QPoint(250, 27));
    mHost.mConfig.mHasConfig = false;
    showPane(702, 316);
    EXPECT_EQ(runButton()->pos(), QPoint(250, 17));
}

// One scale for all days

TEST_F(PaneTest, AllDaysShareOneScalePerFormula) {
    makeMainPane();
    showPane();
    mPane->scaleView(false);
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 10.5}); // half 0.5 around the close of 10.0
    answerDay("REALTIME", kDay - kDayLength, {10.0, 9.0}); // half 1.0
    answerDay("REALTIMEVOL", kDay, {300.0, 700.0}, 2);
    answerDay("REALTIMEVOL", kDay - kDayLength, {400.0, 200.0}, 2);
    mPane->updateAxis(true);
    for (const int side : {TC::CGraphAxisWidget::eLeft, TC::CGraphAxisWidget::eRight}) {
        const auto ranges = strip(side)->getMaxMinMap();
        EXPECT_EQ(ranges.value(key("REALTIME")), (QPair<double, double>(11.0, 9.0)));
        EXPECT_EQ(ranges.value(key("REALTIMEVOL")), (QPair<double, double>(700.0, 0.0)));
    }
    // The volume band, rows 200 to 300, of the older day: its second minute has 200 of 700, that is 28 rows. On a
    // scale of its own, to 400, it would have 50.
    const QImage older = painted(*graph(1));
    const int stick = mUi->getXAxisByIndex(1);
    EXPECT_EQ(older.pixelColor(stick, 260), older.pixelColor(stick + 3, 260));
    EXPECT_NE(older.pixelColor(stick, 290), older.pixelColor(stick + 3, 290));
}

TEST_F(PaneTest, AWideDayThatGoesLetsTheScaleNarrow) {
    makeMainPane();
    showPane();
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 10.2});
    const QImage alone = painted(*newest());
    mPane->scaleView(false);
    answerDay("REALTIME", kDay - kDayLength, {10.0, 13.0});
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().value(key("REALTIME")),
              (QPair<double, double>(13.0, 7.0)));
    mPane->scaleView(true);
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->getMaxMinMap().value(key("REALTIME")).first, 10.2);
    EXPECT_EQ(painted(*newest()), alone);
}

TEST_F(PaneTest, UpdatingTheScaleTellsTheTitleOfTheOverlays) {
    makeMainPane();
    mHost.mStocks.add("SZ", "000001")->mName = "Bank";
    mUi->addStock(QStringLiteral("SZ000001"), QString(), true);
    mPane->request(kOrdinary);
    for (const fakehost::LiveRequest &live : mHost.mFormulas.mLive.all()) {
        live.onHistory(makeMeta(1), makeResult(minuteTimes(kDay, 570, 2), {10.0, 10.1}), live.id(), 1,
                       QString(), false);
    }
    mPane->updateAxis(false);
    EXPECT_TRUE(title()->text().contains(QStringLiteral("Bank"))) << title()->text().toStdString();
}

// Resizing

TEST_F(PaneTest, ResizingFollowsThroughToCrossLineAndDays) {
    makeMainPane();
    showPane();
    mPane->scaleView(false);
    showPane(900, 400);
    EXPECT_DOUBLE_EQ(mUi->mDayWidth, 400.0);
    EXPECT_EQ(mPane->getCrossLineWidget()->size(), QSize(900, 400));
    EXPECT_EQ(place(graph(1)), QRect(50, 16, 400, 384));
    EXPECT_EQ(strip(TC::CGraphAxisWidget::eLeft)->width(), 50);
}

TEST_F(PaneTest, TimeLinesFollowTheWidthOfADay) {
    makeMainPane();
    showPane();
    const QVector<int> wide = strip(TC::CGraphAxisWidget::eLeft)->getTimeLines();
    EXPECT_EQ(wide.value(0), mUi->getXAxisByIndex(30));
    showPane(400, 316);
    const QVector<int> narrow = strip(TC::CGraphAxisWidget::eLeft)->getTimeLines();
    ASSERT_EQ(narrow.size(), wide.size());
    EXPECT_EQ(narrow.value(0), mUi->getXAxisByIndex(30));
    EXPECT_LT(narrow.value(0), wide.value(0));
}

TEST_F(PaneTest, DrawingsOfTheUserStandWhereTheyWereAfterAResize) {
    makeMainPane();
    showPane();
    mPane->request(kOrdinary);
    answerDay("REALTIME", kDay, {10.0, 10.2});
    const std::string line =
        R"({"version":1,"graphs":[{"type":5,"color":"#ff00ff","points":[{"index":120,"value":10.0}]}]})";
    mPane->setParam(bson::BSONObj::fromJson(line));
    showPane(400, 316);
    const QImage narrow = painted(*newest());
    const int column = mUi->getXAxisByIndex(120);
    EXPECT_EQ(narrow.pixelColor(column, 100), QColor(Qt::magenta));
}

TEST_F(PaneTest, AnotherCrossLineTakesThePlaceOfTheOneThere) {
    makeMainPane();
    auto *other = new TC::CCrossLineWidget(mUi, newest()->getData(), mPane.get());
    mPane->setCrossLineWidget(other);
    showPane(640, 300);
    EXPECT_EQ(mPane->getCrossLineWidget(), other);
    EXPECT_EQ(other->size(), QSize(640, 300));
    delete other;
    EXPECT_EQ(mPane->getCrossLineWidget(), nullptr);
    showPane(500, 300);
    mPane->handleEvent(3029, 0, 0, QString(), nullptr);
}

// Handed on

TEST_F(PaneTest, DrawingsAreOfTheNewestDay) {
    makeMainPane();
    const std::string one =
        R"({"version":1,"graphs":[{"type":4,"color":"#00ff00","points":[{"index":3,"value":10.0}]}]})";
    mPane->setParam(bson::BSONObj::fromJson(one));
    EXPECT_EQ(mPane->getParam().jsonString(), newest()->getParam().jsonString());
    EXPECT_TRUE(mPane->getParam().hasField("graphs"));
    EXPECT_FALSE(mPane->deleteCurrGraph()); // none is selected
}

TEST_F(PaneTest, TheHolographicButtonIsOnTheRightStrip) {
    makeMainPane();
    showPane();
    const QImage before = painted(*strip(TC::CGraphAxisWidget::eLeft));
    const QImage right = painted(*strip(TC::CGraphAxisWidget::eRight));
    mPane->showHolographicButon(true);
    EXPECT_EQ(painted(*strip(TC::CGraphAxisWidget::eLeft)), before);
    EXPECT_NE(painted(*strip(TC::CGraphAxisWidget::eRight)), right);
}

TEST_F(PaneTest, ASelectedPaneHasAnotherTitleGround) {
    makeSubPane();
    showPane();
    const QColor plain = painted(*title()).pixelColor(300, 8);
    mPane->setSelected(true);
    EXPECT_NE(painted(*title()).pixelColor(300, 8), plain);
    mPane->setSelected(false);
    EXPECT_EQ(painted(*title()).pixelColor(300, 8), plain);
}

TEST_F(PaneTest, TheTitleFollowsTheConciseStyleAndTheGraphsGiveWay) {
    makeMainPane();
    showPane(700, 316);
    mPane->setConciseStyle(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(title()->height(), 26);
    EXPECT_EQ(place(newest()), QRect(50, 26, 600, 290));
}

} // namespace
} // namespace tests
