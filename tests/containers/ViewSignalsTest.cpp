// What a view tells by signals, and its cross line over a past day.

#include "tests/containers/CursorFixture.h"

#include <QSignalSpy>

namespace tests {
namespace {

QDateTime at(int minute, int date = kDay) {
    return QDateTime::fromSecsSinceEpoch(date + minute * 60);
}

class ViewSignals : public CursorFixture {
protected:
    /// All that a signal has told since the last time.
    static QList<QVariantList> taken(QSignalSpy &spy) {
        QList<QVariantList> told;
        while (!spy.isEmpty()) {
            told.append(spy.takeFirst());
        }
        return told;
    }
    double price(int minute) const { return 10.0 + 0.01 * ((minute - 570) % 40); } ///< of fill()
};

TEST_F(ViewSignals, AnotherInstrumentIsToldOnceByItsKey) {
    makeView();
    QSignalSpy spy(mMain.get(), &TC::MainView::instrumentChanged);
    mMain->setStock("SH600000", false);
    mMain->setStock("SH600000", false);
    EXPECT_EQ(taken(spy), QList<QVariantList>{{"SH600000"}});
    mMain->setStock("SH999999", false);
    EXPECT_EQ(taken(spy), QList<QVariantList>{{QString()}}) << "nobody knows it";
    mMain->setStock("SH600000", false);
    mMain->clearStock();
    EXPECT_EQ(taken(spy), (QList<QVariantList>{{"SH600000"}, {QString()}}));
}

TEST_F(ViewSignals, TheCrossLineTellsItsMinuteAndTheValueThere) {
    showTrading();
    QSignalSpy spy(mMain.get(), &TC::MainView::crossLineChanged);
    mMain->moveToEnd();
    QList<QVariantList> told = taken(spy);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toDateTime(), at(690));
    EXPECT_DOUBLE_EQ(told[0][1].toDouble(), price(690));
    mMain->moveCursor(true);
    mMain->moveToHome();
    told = taken(spy);
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[0][0].toDateTime(), at(689));
    EXPECT_EQ(told[1][0].toDateTime(), at(570));
    EXPECT_DOUBLE_EQ(told[1][1].toDouble(), 10.0);
    mMain->moveToHome();
    EXPECT_EQ(taken(spy).size(), 0) << "it has not moved";
    mMain->switchCrossline();
    told = taken(spy);
    ASSERT_EQ(told.size(), 1);
    EXPECT_FALSE(told[0][0].toDateTime().isValid());
    EXPECT_EQ(told[0][1].toDouble(), TC::kUnsetValue);
}

TEST_F(ViewSignals, AChangedValueUnderTheCrossLineIsTold) {
    showTrading();
    mMain->moveToHome();
    QSignalSpy spy(mMain.get(), &TC::MainView::crossLineChanged);
    mMain->moveCursor(false);
    taken(spy);
    answer("REALTIME", std::vector<double>(121, 11.5));
    settle();
    const QList<QVariantList> told = taken(spy);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toDateTime(), at(571));
    EXPECT_DOUBLE_EQ(told[0][1].toDouble(), 11.5);
}

TEST_F(ViewSignals, WhereThereIsNoPriceTheVolumeIsNotToldAsOne) {
    showTrading();
    mMain->moveToHome();
    QSignalSpy spy(mMain.get(), &TC::MainView::crossLineChanged);
    answer("REALTIME", std::vector<double>());
    settle();
    const QList<QVariantList> told = taken(spy);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0][0].toDateTime(), at(570));
    EXPECT_EQ(told[0][1].toDouble(), TC::kUnsetValue);
}

TEST_F(ViewSignals, TheMouseMovesItToo) {
    showTrading();
    mMain->showCrossline(true);
    QSignalSpy spy(mMain.get(), &TC::MainView::crossLineChanged);
    moveTo(graph(pane()), {200, 60});
    settle();
    ASSERT_EQ(spy.size(), 1);
    const int index = mUi->mCrossIndex;
    ASSERT_GT(index, 0);
    EXPECT_EQ(spy[0][0].toDateTime(), at(570 + index));
}

TEST_F(ViewSignals, ShownItIsSeenAtOnce) {
    showTrading();
    EXPECT_EQ(mUi->mCrossIndex, -1);
    mMain->showCrossline(true);
    EXPECT_TRUE(mMain->isShowCrossline());
    EXPECT_EQ(mUi->mCrossIndex, 120) << "at the newest point";
    mMain->moveToHome();
    mMain->showCrossline(true);
    EXPECT_EQ(mUi->mCrossIndex, 0) << "where it stands";
    mMain->showCrossline(false);
    EXPECT_FALSE(mMain->isShowCrossline());
    mMain->showCrossline(false);
    EXPECT_FALSE(mMain->isShowCrossline());
    expectScreenComplete("after it went");
}

TEST_F(ViewSignals, PanesThatComeAndGoAreToldById) {
    makeView();
    QSignalSpy added(mMain.get(), &TC::MainView::paneAdded);
    QSignalSpy removed(mMain.get(), &TC::MainView::paneRemoved);
    mMain->addIndexWidget();
    mMain->addIndexWidget();
    const QList<int> known = ids();
    EXPECT_EQ(taken(added), (QList<QVariantList>{{known[0]}, {known[1]}}));
    mMain->delIndexWidget(known[0]);
    EXPECT_EQ(taken(removed), QList<QVariantList>{{known[0]}});
    mMain->delIndexWidget(77);
    EXPECT_EQ(removed.size(), 0);
}

TEST_F(ViewSignals, AnotherNumberOfDaysIsTold) {
    showView();
    QSignalSpy spy(mMain.get(), &TC::MainView::dayCountChanged);
    mMain->scaleView(false);
    mMain->scaleView(true);
    mMain->scaleView(true);
    EXPECT_EQ(taken(spy), (QList<QVariantList>{{2}, {1}})) << "one day is the least";
}

TEST_F(ViewSignals, AStretchIsToldWithItsTimesAndItsEnd) {
    showView();
    fill();
    QSignalSpy spy(mMain.get(), &TC::MainView::regionChanged);
    const QString stretch = QStringLiteral("20,%1,%2").arg(kDay + 580 * 60).arg(kDay + 590 * 60);
    mMain->statisticSelectRegion(10, stretch);
    mMain->statisticSelectRegion(10, stretch);
    EXPECT_EQ(taken(spy), (QList<QVariantList>{{at(580), at(590)}}));
    mMain->setRegionLineHide();
    mMain->setRegionLineHide();
    const QList<QVariantList> told = taken(spy);
    ASSERT_EQ(told.size(), 1);
    EXPECT_FALSE(told[0][0].toDateTime().isValid());
    EXPECT_FALSE(told[0][1].toDateTime().isValid());
}

TEST_F(ViewSignals, AViewIsCompleteWhenEveryRequestHasItsSeries) {
    showView(1);
    QSignalSpy spy(mMain.get(), &TC::MainView::completenessChanged);
    mMain->request(false);
    EXPECT_EQ(taken(spy), QList<QVariantList>{{false}});
    answer("REALTIME", {10.0, 10.1});
    answer("REALTIMEVOL", {500.0, 500.0}, 2);
    settle();
    EXPECT_FALSE(mMain->isComplete());
    EXPECT_EQ(spy.size(), 0);
    answer("KDJ", {50.0, 51.0});
    settle();
    EXPECT_TRUE(mMain->isComplete());
    EXPECT_EQ(taken(spy), QList<QVariantList>{{true}});
    mMain->request(false);
    EXPECT_EQ(taken(spy), (QList<QVariantList>{{false}, {true}})) << "its series are still there";
}

TEST_F(ViewSignals, KeysWalkAlongThePointsOfAPastDayByThemselves) {
    showTrading();
    int date = kDay - 86400;
    mMain->setGetTradeDateFunc([&date] { return date; });
    mMain->setStock("SH600000", false);
    fill(50); // of which the view takes no count
    mMain->moveToEnd();
    EXPECT_EQ(mUi->mCrossIndex, 49);
    mMain->moveCursor(false);
    EXPECT_EQ(mUi->mCrossIndex, 49) << "there is no point beyond";
    date -= 86400;
    fill(30);
    mMain->moveToEnd();
    EXPECT_EQ(mUi->mCrossIndex, 29) << "the count of the other day holds no longer";
    mMain->moveCursor(true);
    EXPECT_EQ(mUi->mCrossIndex, 28);
}

TEST_F(ViewSignals, MisspeltNamesHaveRightlySpeltOnes) {
    makeView();
    mMain->addIndexWidget();
    sub(0)->addIndex("KDJ");
    EXPECT_EQ(sub(0)->getPreIndex(), "KDJ");
    EXPECT_EQ(pane()->getGraphWidgetCount(), pane()->getGrapWidgetCount());
    EXPECT_EQ(mMain->getSelectTemplate(), mMain->getSelectTempalte());
    mMain->setStock("SH600000", false);
    mMain->updateFormulaData("A2");
    EXPECT_TRUE(mHost.mConfig.mRecord.mShowVwap);
    const QString formula = mUi->getApplyMainFormula();
    mMain->delMultiViewFormulaAndLinkageData({"A2"});
    EXPECT_FALSE(pane()->findIndex(formula));
    mMain->addMultiViewFormulaAndLinkageData(true);
    EXPECT_TRUE(pane()->findIndex(formula));
    mKeeper->mEvents.clear();
    sub(0)->destroySubWidget();
    EXPECT_TRUE(ids().isEmpty());
}

} // namespace
} // namespace tests
