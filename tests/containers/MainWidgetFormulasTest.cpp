// Where formulas go.

#include "tests/containers/MainWidgetFixture.h"

using namespace TC;
using corvane::ERunMode;

namespace {

class MainWidgetFormulas : public tests::MainWidgetFixture {
protected:
    MainWidgetFormulas() {
        makeView();
        mMain->setStock("SH600000", false);
    }
    void addPanes(int count) {
        for (int i = 0; i < count; ++i) {
            mMain->addIndexWidget();
            sub(i)->addIndex(i % 2 ? "MACD" : "KDJ");
        }
    }
    void doubleClickFormula(const char *name) { mMain->handleDoubleClickedFormula(QString::fromLatin1(name)); }
    void apply(const char *name, ERunMode mode = ERunMode::Ordinary) {
        mMain->handleApplyFormula(QString::fromLatin1(name), EFormulaLanguage::Native, mode);
    }
    Names main() const { return formulasOf(pane()); }
};

TEST_F(MainWidgetFormulas, DoubleClickTogglesAnAttachedFormula) {
    doubleClickFormula("MA");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL", "MA"}));
    EXPECT_TRUE(requested().contains("MA.lua"));
    doubleClickFormula("MA");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL"}));
    doubleClickFormula("MA");
    EXPECT_TRUE(pane()->findIndex("MA"));
}

TEST_F(MainWidgetFormulas, SecondAttachedFormulaTakesThePlaceOfTheFirst) {
    doubleClickFormula("MA");
    apply("BOLL");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL", "BOLL"}));
    doubleClickFormula("MA");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL", "MA"}));
}

TEST_F(MainWidgetFormulas, AttachingLeavesAFormulaThatReplacedTheChart) {
    doubleClickFormula("TREND");
    doubleClickFormula("MA");
    apply("BOLL");
    EXPECT_EQ(main(), (Names{"TREND", "BOLL"}));
}

TEST_F(MainWidgetFormulas, AttachedFormulaLeavesThePanesThatShowedIt) {
    addPanes(2);
    sub(1)->addIndex("MA");
    doubleClickFormula("MA");
    EXPECT_TRUE(pane()->findIndex("MA"));
    EXPECT_FALSE(sub(1)->findIndex("MA"));
    EXPECT_TRUE(sub(1)->findIndex("MACD"));
}

TEST_F(MainWidgetFormulas, ApplyingAnAttachedFormulaAgainStartsItAnewInItsRunMode) {
    const auto detail = mHost.mCatalogue.getFormula("MA");
    detail->mRunData = boost::make_shared<int>(7);
    apply("MA");
    EXPECT_FALSE(mHost.mFormulas.mLive.find("MA.lua", "600000").param.mRunData);
    apply("MA", ERunMode::HandOver);
    EXPECT_TRUE(pane()->findIndex("MA"));
    EXPECT_EQ(mHost.mFormulas.mLive.find("MA.lua", "600000").param.mRunData, detail->mRunData);
}

TEST_F(MainWidgetFormulas, ReplacingFormulaTakesTheChartAndItsVolumeAway) {
    doubleClickFormula("MA");
    doubleClickFormula("TREND");
    EXPECT_EQ(main(), (Names{"MA", "TREND"}));
    EXPECT_FALSE(mUi->mShowVolume);
    mHost.mCatalogue.add("OTHER", 2);
    apply("OTHER");
    EXPECT_EQ(main(), (Names{"MA", "OTHER"})) << "only one stands at a time";
}

TEST_F(MainWidgetFormulas, OrdinaryChartComesBackWithItsVolume) {
    doubleClickFormula("TREND");
    EXPECT_TRUE(event(3021));
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL"}));
    EXPECT_TRUE(mUi->mShowVolume);
}

TEST_F(MainWidgetFormulas, OrdinaryChartComesBackWhenTheLastFormulaIsTakenOff) {
    const Names ordinary = {"REALTIME", "REALTIMEVOL"};
    const auto leaveOnlyMa = [this] {
        doubleClickFormula("TREND");
        doubleClickFormula("MA");
        mMain->handleDeleteFormula("TREND");
        ASSERT_EQ(main(), (Names{"MA"}));
        ASSERT_TRUE(pane()->getMainIndex().isEmpty()) << "what is attached is no chart";
        mHost.mFormulas.mLive.clear();
    };
    leaveOnlyMa();
    doubleClickFormula("MA");
    EXPECT_EQ(main(), ordinary) << "asked for by the user";
    EXPECT_FALSE(requested().isEmpty());
    leaveOnlyMa();
    apply("MA");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL", "MA"})) << "applied";
    doubleClickFormula("MA");
    leaveOnlyMa();
    mMain->createIndexWidget("key", 1, "MA");
    EXPECT_EQ(main(), ordinary) << "placed by the host";
    EXPECT_FALSE(requested().isEmpty());
    leaveOnlyMa();
    mMain->handleConfirmFormula("MA");
    EXPECT_EQ(main(), (Names{"MA"})) << "confirmed: it is there as before";
}

TEST_F(MainWidgetFormulas, OrdinaryChartComesBackForOneThatWasEditedToHaveAPaneOfItsOwn) {
    const Names ordinary = {"REALTIME", "REALTIMEVOL"};
    const CFormulaDetailPtr trend = mHost.mCatalogue.getFormula("TREND");
    const auto edit = [&] {
        trend->mType = 2;
        doubleClickFormula("TREND");
        ASSERT_EQ(main(), (Names{"TREND"}));
        trend->mType = 0;
        mHost.mFormulas.mLive.clear();
    };
    edit();
    doubleClickFormula("TREND");
    EXPECT_EQ(main(), ordinary);
    EXPECT_TRUE(sub(0)->findIndex("TREND"));
    EXPECT_TRUE(requested().contains("REALTIME.lua"));
    edit();
    apply("TREND");
    EXPECT_EQ(main(), ordinary);
    edit();
    mMain->createIndexWidget("key", 0, "TREND");
    EXPECT_EQ(main(), ordinary);
}

TEST_F(MainWidgetFormulas, PaneFormulaMakesThePaneItNeeds) {
    doubleClickFormula("KDJ");
    ASSERT_EQ(ids().size(), 1);
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
    EXPECT_EQ(requested(), (Names{"KDJ.lua"}));
}

TEST_F(MainWidgetFormulas, PaneFormulaThatStoodOnTheMainPaneMovesIntoAPane) {
    pane()->addIndex("KDJ");
    doubleClickFormula("KDJ");
    EXPECT_FALSE(pane()->findIndex("KDJ"));
    EXPECT_TRUE(sub(0)->findIndex("KDJ"));
    pane()->addIndex("MACD");
    apply("MACD");
    EXPECT_FALSE(pane()->findIndex("MACD"));
    EXPECT_TRUE(sub(0)->findIndex("MACD"));
}

TEST_F(MainWidgetFormulas, SelectedPaneTakesTheFormulaAndTheLastOneForTheMainPane) {
    addPanes(2);
    mMain->highlightWidget(0);
    doubleClickFormula("RSI");
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
    EXPECT_EQ(formulasOf(sub(1)), (Names{"RSI"}));
    mMain->highlightWidget(1);
    doubleClickFormula("OBV");
    EXPECT_EQ(formulasOf(sub(0)), (Names{"OBV"}));
    mMain->highlightWidget(0);
    apply("PSY");
    EXPECT_EQ(formulasOf(sub(1)), (Names{"PSY"}));
}

TEST_F(MainWidgetFormulas, LastPaneTakesTheFormulaOfAPaneThatHasGone) {
    addPanes(2);
    mMain->highlightWidget(99);
    doubleClickFormula("RSI");
    EXPECT_EQ(formulasOf(sub(1)), (Names{"RSI"}));
    apply("CR");
    EXPECT_EQ(formulasOf(sub(1)), (Names{"CR"}));
}

TEST_F(MainWidgetFormulas, ConfirmedFormulaIsRequestedWhereItIsShownAndNowhereElse) {
    addPanes(1);
    mMain->handleConfirmFormula("MACD");
    mMain->handleConfirmFormula("MA");
    EXPECT_TRUE(requested().isEmpty());
    EXPECT_EQ(ids().size(), 1);
    mMain->handleConfirmFormula("KDJ");
    EXPECT_EQ(requested(), (Names{"KDJ.lua"}));
    pane()->addIndex("MA");
    pane()->addIndex("VOL");
    mMain->handleConfirmFormula("MA");
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL", "VOL", "MA"}));
}

TEST_F(MainWidgetFormulas, ModifiedFormulaGoesToTheEnd) {
    addPanes(1);
    mMain->handleModifyFormula("REALTIME", EFormulaLanguage::Native);
    EXPECT_EQ(main(), (Names{"REALTIMEVOL", "REALTIME"}));
    mMain->handleModifyFormula("KDJ", EFormulaLanguage::Native);
    EXPECT_TRUE(requested().contains("KDJ.lua"));
}

TEST_F(MainWidgetFormulas, DeletedFormulaLeavesAllPanes) {
    addPanes(2);
    pane()->addIndex("KDJ");
    mMain->updateIndex("KDJ", 4, EFormulaLanguage::Native, ERunMode::Ordinary);
    EXPECT_FALSE(pane()->findIndex("KDJ"));
    EXPECT_FALSE(sub(0)->findIndex("KDJ"));
    EXPECT_TRUE(sub(1)->findIndex("MACD"));
}

TEST_F(MainWidgetFormulas, UnknownFormulasAndOperationsDoNothing) {
    addPanes(1);
    for (int op = -1; op < 7; ++op) {
        mMain->updateIndex("NONE", op, EFormulaLanguage::Native, ERunMode::Ordinary);
    }
    mMain->updateIndex("KDJ", 5, EFormulaLanguage::Native, ERunMode::Ordinary);
    mHost.mCatalogue.add("STRANGE", 3);
    for (int op = 0; op < 4; ++op) {
        mMain->updateIndex("STRANGE", op, EFormulaLanguage::Native, ERunMode::Ordinary);
    }
    EXPECT_EQ(main(), (Names{"REALTIME", "REALTIMEVOL"}));
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
    EXPECT_TRUE(requested().isEmpty());
}

// Under a key of the host

TEST_F(MainWidgetFormulas, KeyedFormulaHasAPaneThatCanBeAskedToClose) {
    mMain->createIndexWidget("k", -1, "KDJ");
    ASSERT_EQ(ids().size(), 1);
    EXPECT_EQ(formulasOf(sub(0)), (Names{"KDJ"}));
    EXPECT_TRUE(requested().isEmpty()) << "the host pushes its results";
    takeEvents();
    mMain->destoryWidget("unknown");
    EXPECT_TRUE(takeEvents().empty());
    mMain->destoryWidget("k");
    EXPECT_EQ(takeEvents(), (Events{{3020, 1, 1, "KDJ", nullptr}}));
    EXPECT_TRUE(ids().isEmpty());
    mMain->destoryWidget("k");
    settle();
    mMain->destoryWidget("k");
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(MainWidgetFormulas, PanesThatHaveGoneTakeNoResults) {
    mMain->createIndexWidget("k", 0, "KDJ");
    mMain->delAllIndexWidgets();
    settle();
    mMain->minitermFormulaDataCallback("k", tests::makeMeta(1),
                                       tests::makeResult(tests::minuteTimes(tests::kDay, 570, 2), {1.0, 2.0}));
    mMain->minitermFormulaDataCallback("unknown", nullptr, nullptr);
    mMain->destoryWidget("k");
    EXPECT_TRUE(ids().isEmpty());
}

TEST_F(MainWidgetFormulas, KeyedFormulaOfTheMainChart) {
    mMain->createIndexWidget("t", 2, "TREND");
    EXPECT_EQ(main(), (Names{"TREND"}));
    EXPECT_TRUE(requested().isEmpty());
    mMain->createIndexWidget("a", 1, "MA");
    EXPECT_EQ(main(), (Names{"TREND", "MA"}));
    mMain->createIndexWidget("a", 1, "MA");
    EXPECT_EQ(main(), (Names{"TREND"}));
    mMain->createIndexWidget("x", 7, "KDJ");
    EXPECT_TRUE(ids().isEmpty());
}

// Trade data

TEST_F(MainWidgetFormulas, AccountsOfTradeDataFollowTheHost) {
    const QString formula = mUi->getApplyMainFormula();
    mMain->setFormulaAccount("A1");
    mMain->updateFrormulaData("A2");
    EXPECT_TRUE(mHost.mConfig.mRecord.mShowVwap);
    EXPECT_TRUE(pane()->findIndex(formula));
    EXPECT_EQ(mUi->mFormulaAccount, "A1") << "which is the host's to change";
    mMain->updateFrormulaData("");
    EXPECT_FALSE(mHost.mConfig.mRecord.mShowVwap);
    EXPECT_FALSE(pane()->findIndex(formula));
    mMain->addMultiVewFormulaAndLinkageData(false);
    EXPECT_FALSE(pane()->findIndex(formula));
    mMain->addMultiVewFormulaAndLinkageData(true);
    mMain->addMultiVewFormulaAndLinkageData(true);
    EXPECT_EQ(main().count(formula), 1);
    mMain->delMultiVewFormulaAndLinkageData({"A1"});
    EXPECT_FALSE(pane()->findIndex(formula));
}

} // namespace
