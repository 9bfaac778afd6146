// The parts of a pane by themselves: its day graphs, the run of its model, where the cross line meets it, its title.

#include "tests/containers/PaneFixture.h"

#include "containers/DayGraphs.h"
#include "containers/ModelRun.h"
#include "containers/PaneCursor.h"
#include "containers/PaneTitle.h"
#include "host/toolkit/CWidgetList.h"

using namespace TC;

namespace tests {
namespace {

/// The parts in a widget that is no pane.
class PanePartsTest : public PaneFixture {
protected:
    void makeParts(EIndexDisplayType type, const QStringList &formulas) {
        releaseParts();
        mHome = std::make_unique<GZ::CBaseWidget>(mKeeper.get());
        mData = boost::make_shared<CRealtimeData>(mUi, type, mHome.get());
        mTitle = std::make_unique<PaneTitle>(mHome.get(), mData, mUi, type, EIndexViewType::Ordinary);
        auto *strip = new CGraphAxisWidget(mUi, mData, CGraphAxisWidget::eLeft, mHome.get());
        mData->setAxisWidget(strip);
        mDays = std::make_unique<DayGraphs>(mHome.get(), mData, mUi, type, EIndexViewType::Ordinary, strip);
        for (const QString &formula : formulas) {
            mDays->main()->addIndex(formula);
        }
        mRun = std::make_unique<ModelRun>(mHome.get(), *mDays, *mTitle, mUi, type);
        mCursor = std::make_unique<PaneCursor>(*mDays, *mTitle, mUi);
        mHome->resize(600, 300);
        mDays->list()->resize(600, 280);
        mDays->shareWidth();
    }
    void addDay() {
        ++mUi->mDayCount;
        mDays->addOlder();
        mDays->shareWidth();
    }
    ~PanePartsTest() override { releaseParts(); }
    void releaseParts() {
        mTitle.reset();
        mDays.reset();
    }

    std::unique_ptr<GZ::CBaseWidget> mHome;
    boost::shared_ptr<CRealtimeData> mData;
    std::unique_ptr<PaneTitle> mTitle;
    std::unique_ptr<DayGraphs> mDays;
    std::unique_ptr<ModelRun> mRun;
    std::unique_ptr<PaneCursor> mCursor;
};

TEST_F(PanePartsTest, NewestDayIsAlwaysThere) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    ASSERT_EQ(mDays->count(), 1);
    EXPECT_EQ(mDays->at(0), mDays->main());
    EXPECT_EQ(mDays->at(1), nullptr);
    EXPECT_EQ(mDays->at(-1), nullptr);
    EXPECT_EQ(mDays->removeOldest(), nullptr);
    EXPECT_EQ(mDays->count(), 1);
}

TEST_F(PanePartsTest, OlderDaysStandAtTheLeftUnderIdsOfTheirOwn) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    addDay();
    addDay();
    const QList<CRealtimeGraphWidget *> graphs = mDays->newestFirst();
    ASSERT_EQ(graphs.size(), 3);
    EXPECT_EQ(graphs[0], mDays->main());
    EXPECT_EQ(graphs[2], mDays->at(0));
    EXPECT_EQ(mDays->idOf(graphs[0]), 0);
    EXPECT_EQ(mDays->idOf(graphs[1]), 1);
    EXPECT_EQ(mDays->idOf(graphs[2]), 2);
    EXPECT_EQ(graphs[1]->getData()->getTradeDate(), kDay - kDayLength);
    EXPECT_EQ(graphs[2]->getData()->getTradeDate(), kDay - 2 * kDayLength);
    EXPECT_EQ(mDays->removeOldest(), graphs[2]);
    addDay();
    EXPECT_EQ(mDays->idOf(mDays->at(0)), 2) << "the id is free again";
}

TEST_F(PanePartsTest, DaysOfAPaneThatJoinsAreNotEntered) {
    mUi->mDayCount = 3;
    makeParts(EIndexDisplayType::Sub, {"MACD"});
    mDays->joinDays(7);
    ASSERT_EQ(mDays->count(), 3);
    EXPECT_EQ(mDays->idOf(mDays->at(0)), -1);
    EXPECT_EQ(mDays->idOf(mDays->at(1)), -1);
    EXPECT_EQ(mDays->main()->getData()->getTradeDate(), kDay);
    EXPECT_EQ(mDays->at(0)->getData()->getTradeDate(), kDay - 2 * kDayLength);
}

TEST_F(PanePartsTest, SelectionGoesWithTheGraph) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    addDay();
    EXPECT_EQ(mDays->selected(), mDays->main());
    mDays->select(1);
    EXPECT_EQ(mDays->selected(), mDays->at(0));
    mDays->select(9);
    EXPECT_EQ(mDays->selected(), mDays->at(0)) << "an id that no graph has";
    mDays->removeOldest();
    EXPECT_EQ(mDays->selected(), mDays->main());
}

TEST_F(PanePartsTest, EachDayTakesItsDateBeforeItIsHandedOut) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    addDay();
    QList<int> dates;
    mDays->forEachDay(kDay - kDayLength,
                      [&dates](CRealtimeGraphWidget &graph) { dates.append(graph.getData()->getTradeDate()); });
    EXPECT_EQ(dates, (QList<int>{kDay - kDayLength, kDay - 2 * kDayLength}));
}

TEST_F(PanePartsTest, NothingOfTheMainPaneIsEverHeld) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    mRun->setAutomatic(false);
    mRun->setLoginInit(true);
    EXPECT_FALSE(mRun->isHeld());
}

TEST_F(PanePartsTest, WhatIsNoModelIsReleasedForGood) {
    makeParts(EIndexDisplayType::Sub, {"MACD"});
    mRun->setAutomatic(false);
    ASSERT_TRUE(mRun->isHeld());
    mRun->hold(corvane::ERunMode::HandOver);
    EXPECT_EQ(mRun->heldMode(), corvane::ERunMode::HandOver);
    EXPECT_TRUE(mRun->release());
    EXPECT_FALSE(mRun->isHeld());
}

TEST_F(PanePartsTest, ModelWaitsForTheButton) {
    makeScriptModel("MACD");
    makeParts(EIndexDisplayType::Sub, {"MACD"});
    mRun->setLoginInit(true);
    mRun->hold(kOrdinary);
    EXPECT_FALSE(mRun->release());
    const auto shown = [this] {
        for (const GZ::CPushButton *button : mHome->findChildren<GZ::CPushButton *>()) {
            if (button->id() == kRunButton) {
                return !button->isHidden();
            }
        }
        return false;
    };
    EXPECT_TRUE(shown());
    mRun->start();
    EXPECT_FALSE(mRun->isHeld());
    mRun->showRunning();
    EXPECT_FALSE(shown());
}

TEST_F(PanePartsTest, GroupModelIsRequestedOnceAndOfTheNewestDayOnly) {
    makeGroupModel("MACD");
    makeParts(EIndexDisplayType::Sub, {"MACD"});
    EXPECT_EQ(mRun->groupRun(), ModelRun::EGroup::Repaint);
    makeIndexView();
    EXPECT_EQ(mRun->groupRun(), ModelRun::EGroup::MainGraph);
    makeParts(EIndexDisplayType::Sub, {"KDJ"});
    EXPECT_EQ(mRun->groupRun(), ModelRun::EGroup::None);
}

TEST_F(PanePartsTest, CrossLineIsNowhereWithoutMouseAndKeyboard) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    EXPECT_EQ(mCursor->column(), -1);
    EXPECT_EQ(mCursor->row(), -1);
    EXPECT_EQ(mCursor->subColumn(), -1);
    EXPECT_EQ(mCursor->subRow(), -1);
    EXPECT_EQ(mCursor->dataUnderMouse(), nullptr);
}

TEST_F(PanePartsTest, CrossLineOfTheKeyboardStandsInTheNewestDay) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    addDay();
    mUi->mDayWidth = 240.0;
    mUi->mCursorByKey = true;
    mUi->mCrossIndex = 60;
    EXPECT_EQ(mCursor->column(), mUi->getXAxisByIndex(60) + mDays->at(0)->width());
    EXPECT_EQ(mCursor->subColumn(), -1) << "a formula pane has none of its own";
}

TEST_F(PanePartsTest, TitleTellsOfDaysThatAreShownOnly) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    addDay();
    mTitle->showDay(*mDays, 1);
    EXPECT_EQ(mTitle->widget()->getIndexData(), mDays->at(0)->getData());
    mTitle->showDay(*mDays, 2);
    mTitle->showDay(*mDays, -1);
    EXPECT_EQ(mTitle->widget()->getIndexData(), mDays->at(0)->getData());
    const boost::shared_ptr<CRealtimeData> gone = mDays->removeOldest()->getData();
    mTitle->leave(*mDays, gone);
    EXPECT_EQ(mTitle->widget()->getIndexData(), mData);
}

TEST_F(PanePartsTest, TitleFollowsACrossLineThatStandsBesideTheNewestPoint) {
    makeParts(EIndexDisplayType::Main, {"REALTIME"});
    mUi->mCrossShown = true;
    mUi->setDataCount(11);
    mUi->mCrossIndex = 8;
    EXPECT_FALSE(mTitle->refresh(*mDays, nullptr));
    EXPECT_EQ(mUi->mCrossIndex, 8);
    mUi->mCrossIndex = 9;
    EXPECT_TRUE(mTitle->refresh(*mDays, nullptr));
    EXPECT_EQ(mUi->mCrossIndex, 10);
    mUi->mCrossShown = false;
    mUi->mCrossIndex = 9;
    EXPECT_FALSE(mTitle->refresh(*mDays, nullptr));
    EXPECT_EQ(mUi->mCrossIndex, 9);
}

} // namespace
} // namespace tests
