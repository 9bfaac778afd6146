// Which entries the context menu of a graph has, in which order, and which are checked.

#include "chartview/GraphMenu.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "tests/chartview/GraphMenuFixture.h"
#include "viewmodel/CRealTimePortfolioAxis.h"

#include <QPointer>
#include <QWindow>

using namespace TC;

namespace {

const QString kLevels = QStringLiteral("申万一级|o申万二级|o申万三级");
const QString kInstruments =
    QStringLiteral("叠加板块指数{o%1}|叠加品种|叠加无坐标品种|取消叠加品种").arg(kLevels);
const QString kSwitches = QStringLiteral("o显示成交量|+显示渐变色|加入自选股");
const QString kClosing = QStringLiteral("新建工作组|oVWAP成交均价|o过滤重复股票|-|复制请求信息|下载数据");

class GraphMenuTest : public tests::GraphMenuFixture {
protected:
    /// Entries from one on to another, both included.
    QString between(const QString &first, const QString &last) {
        QStringList entries = menu().split('|');
        while (!entries.isEmpty() && entries.first() != first) {
            entries.removeFirst();
        }
        while (!entries.isEmpty() && entries.last() != last) {
            entries.removeLast();
        }
        return entries.join('|');
    }
};

// When there is a menu

TEST_F(GraphMenuTest, APlainViewLeavesTheClickToTheHost) {
    showMain(EIndexViewType::Plain);
    EXPECT_FALSE(sendMenuEvent());
    EXPECT_FALSE(openMenu());
}

TEST_F(GraphMenuTest, APortfolioHasNoMenu) {
    mHost.mStocks.mPortfolios.insert(QStringLiteral("7"));
    mUi->setStock(QStringLiteral("7"), false);
    showMain();
    EXPECT_TRUE(sendMenuEvent());
    EXPECT_FALSE(openMenu());
}

TEST_F(GraphMenuTest, APairedViewOfAPortfolioHasItsMenu) {
    mHost.mStocks.mPortfolios.insert(QStringLiteral("7"));
    mUi->setStock(QStringLiteral("7"), false);
    showMain(EIndexViewType::Paired);
    EXPECT_TRUE(openMenu());
}

TEST_F(GraphMenuTest, AMenuIsGoneAfterItWasShownAndHasTheThemesStyle) {
    showMain();
    QPointer<QMenu> shown;
    openMenu([&](QMenu &open) {
        shown = &open;
        EXPECT_TRUE(open.testAttribute(Qt::WA_DeleteOnClose));
        EXPECT_EQ(open.styleSheet(), GZ::CStyleSheetCenter::getStyle(15));
        EXPECT_FALSE(open.styleSheet().isEmpty());
    });
    EXPECT_TRUE(shown.isNull());
}

TEST_F(GraphMenuTest, AMenuOpensAtTheCursor) {
    showMain();
    QCursor::setPos(mGraph->mapToGlobal(QPoint(40, 30)));
    QPoint at;
    openMenu([&](QMenu &open) { at = open.pos(); });
    EXPECT_EQ(at, QCursor::pos());
}

TEST_F(GraphMenuTest, AGraphMayGoWhileItsMenuIsOpen) {
    showMain();
    EXPECT_TRUE(openMenu([this](QMenu &) { mGraph.reset(); }));
}

TEST_F(GraphMenuTest, AnEntryIsChosenWithTheMouse) {
    showMain();
    mKeeper->mEvents.clear();
    QTimer::singleShot(0, mKeeper.get(), [] {
        auto *open = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(open, nullptr);
        QAction *entry = tests::entryOf(*open, QStringLiteral("恢复主图"));
        QTest::mouseClick(open, Qt::LeftButton, {}, open->actionGeometry(entry).center());
    });
    sendMenuEvent();
    EXPECT_EQ(mKeeper->of(3021).size(), 1u);
}

// A right button that is still down

TEST_F(GraphMenuTest, AMenuWaitsForTheReleaseOfTheRightButton) {
    showMain();
    QWindow *window = mKeeper->windowHandle();
    EXPECT_FALSE(duringMenu(
        [&] {
            QTest::mousePress(window, Qt::RightButton, {}, {200, 50});
        },
        [](QMenu &) {}));
    QString text;
    EXPECT_TRUE(duringMenu(
        [&] {
            QTest::mouseRelease(window, Qt::RightButton, {}, {200, 50});
        },
        [&](QMenu &open) { text = tests::outline(open); }));
    EXPECT_TRUE(text.startsWith(QStringLiteral("添加指标")));
}

TEST_F(GraphMenuTest, ARightDragOpensTheMenuOfTheRegion) {
    showMain();
    crossLine(true);
    QWindow *window = mKeeper->windowHandle();
    EXPECT_FALSE(duringMenu(
        [&] {
            QTest::mousePress(window, Qt::RightButton, {}, {100, 50});
        },
        [](QMenu &) {}));
    move({200, 60}, Qt::RightButton);
    QString text;
    EXPECT_TRUE(duringMenu(
        [&] {
            QTest::mouseRelease(window, Qt::RightButton, {}, {200, 60});
        },
        [&](QMenu &open) { text = tests::outline(open); }));
    EXPECT_EQ(text, QStringLiteral("时段统计|显示行情回放界面|") + kClosing);
}

// Paired views

TEST_F(GraphMenuTest, APairedViewOffersTheCounterpart) {
    showMain(EIndexViewType::Paired);
    mGraph->setStock(QStringLiteral("SH600000"), true);
    EXPECT_EQ(menu(), QStringLiteral("AH股叠加|取消AH股叠加"));
    mHost.mSectors.mAOfH.insert(QStringLiteral("HK00600"), QStringLiteral("SH600000"));
    EXPECT_EQ(choose(QStringLiteral("AH股叠加")), (Events{{209, 0, 1, "HK00600", nullptr}}));
    EXPECT_EQ(choose(QStringLiteral("取消AH股叠加")), (Events{{209, 0, 0, "", nullptr}}));
}

TEST_F(GraphMenuTest, APairedViewWithoutACounterpartOffersSectors) {
    showMain(EIndexViewType::Paired);
    mUi->mAddSwBkzsLevel = 1; // nothing is checkable here
    EXPECT_EQ(menu(), QStringLiteral("叠加板块指数{取消叠加品种|申万一级|申万二级|申万三级}"));
    openMenu([](QMenu &open) {
        for (int level = 1; level <= 3; ++level) {
            EXPECT_EQ(open.actions().first()->menu()->actions().at(level)->data().toInt(), level);
        }
    });
    EXPECT_EQ(choose(QStringLiteral("叠加板块指数/取消叠加品种")), (Events{{209, 0, 0, "", nullptr}}));
}

// The main pane

TEST_F(GraphMenuTest, TheMainPaneHasItsEntriesInOrder) {
    showMain();
    EXPECT_EQ(menu(), QStringList({"添加指标", "恢复主图", "-", "所属板块分析", "-", kInstruments, kSwitches,
                                   "导出公式", kClosing})
                          .join('|'));
}

TEST_F(GraphMenuTest, EverythingThatTheMainPaneCanHaveIsThereInOrder) {
    mHost.mCatalogue.add("MA", 1);
    mHost.mTypes.mTypes = {{277, "SH", "600000"}, {135, "SH", "600000"}};
    mHost.mConfig.mUserConfig.mEditorAuth = true;
    mHost.mLinkage.mEnabled = true;
    mHost.mSectors.mAOfH.insert(QStringLiteral("HK00600"), QStringLiteral("SH600000"));
    addFolder(QStringLiteral("均线"), {"MA"});
    mUi = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Template);
    mUi->setStock(QStringLiteral("SH600000"), false);
    mUi->mPanelInfo = boost::make_shared<CPanelInfo>();
    showMain();
    mGraph->addIndex("MA");
    mGraph->setStock(QStringLiteral("SH600000"), false);
    mGraph->beHistory(true);
    EXPECT_EQ(menu(), QStringList({"添加指标",
                                   "恢复主图",
                                   "-",
                                   "叠加指标{均线{+MA}}",
                                   "取消叠加指标{+MA}",
                                   "-",
                                   "所属板块分析",
                                   "-",
                                   "显示盘后固定价格成交",
                                   "-",
                                   QStringLiteral("叠加板块指数{o%1}").arg(kLevels),
                                   "o自动叠加转债正股品种",
                                   "叠加品种",
                                   "叠加无坐标品种",
                                   "取消叠加品种",
                                   "-",
                                   "修改指标参数",
                                   "编辑指标",
                                   kSwitches,
                                   "o自动切换周期",
                                   "导出公式",
                                   "新建工作组",
                                   "显示交易数据{+全选|-|-|显示详细交易数据}",
                                   "oVWAP成交均价",
                                   "o过滤重复股票",
                                   "-",
                                   "AH股叠加",
                                   "-",
                                   "复制请求信息",
                                   "下载数据"})
                          .join('|'));
}

TEST_F(GraphMenuTest, ATradingClientHasFewerEntries) {
    mHost.mConfig.mClientType = EClientType::Trading;
    mHost.mLinkage.mEnabled = true;
    showMain();
    EXPECT_EQ(menu(),
              QStringList({"添加指标", "恢复主图", "-", kInstruments, kSwitches, "显示交易数据{+全选|-}",
                           "oVWAP成交均价", "o过滤重复股票", "-", "复制请求信息", "下载数据"})
                  .join('|'));
}

TEST_F(GraphMenuTest, AReplayHasItsControlPanelFirst) {
    showMain();
    mGraph->beReplay(true);
    EXPECT_TRUE(menu().startsWith(QStringLiteral("显示行情回放控制面板|-|添加指标")));
    EXPECT_EQ(choose(QStringLiteral("显示行情回放控制面板")), (Events{{3267, 0, 0, "", nullptr}}));
}

TEST_F(GraphMenuTest, OnlyAChartOfVolumesCannotBeRestored) {
    mHost.mCatalogue.add("REALTIMEVOL", 2);
    showMain();
    mUi->mCurrentAxis = mUi->mPortfolioAxis; // whose volume formula is another one
    const auto canRestore = [this] {
        QMenu entries;
        GraphMenu(*mGraph, {mData, mUi, 7, EIndexDisplayType::Main, EIndexViewType::Ordinary,
                            QStringLiteral("SH600000")})
            .addMain(entries);
        return tests::entryOf(entries, QStringLiteral("恢复主图")) != nullptr;
    };
    EXPECT_FALSE(canRestore());
    mHost.mCatalogue.add("REALTIMEVOL", 0);
    EXPECT_TRUE(canRestore());
}

TEST_F(GraphMenuTest, MainFormulasAloneCannotBeTakenOff) {
    mHost.mCatalogue.add("REALTIME", 1);
    showMain();
    EXPECT_FALSE(has(QStringLiteral("取消叠加指标")));
}

TEST_F(GraphMenuTest, FormulasOverTheChartCanBeTakenOff) {
    mHost.mCatalogue.add("MA", 1);
    mHost.mCatalogue.add("Boll", 1);
    mHost.mCatalogue.add("CANDLES", 2);
    showMain();
    for (const char *name : {"MA", "BOLL", "CANDLES", "MACD", "GONE"}) {
        mGraph->addIndex(QString::fromLatin1(name));
    }
    QString shown;
    openMenu([&](QMenu &open) {
        shown = tests::outline(*tests::entryOf(open, QStringLiteral("取消叠加指标"))->menu());
    });
    EXPECT_EQ(shown, QStringLiteral("+MA|+Boll"));
    EXPECT_EQ(choose(QStringLiteral("取消叠加指标/Boll")), (Events{{208, 0, 0, "Boll", nullptr}}));
}

TEST_F(GraphMenuTest, TradesAfterHoursAreForTheGrowthBoardInAViewOfTemplates) {
    const QString entry = QStringLiteral("显示盘后固定价格成交");
    mHost.mTypes.mTypes = {{277, "SH", "600000"}};
    mUi = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Template);
    mUi->setStock(QStringLiteral("SH600000"), false);
    showMain();
    EXPECT_FALSE(has(entry)); // the graph has not been told of its instrument
    mGraph->setStock(QStringLiteral("SH600000"), false);
    EXPECT_TRUE(has(entry));
    EXPECT_EQ(choose(entry), (Events{{3226, 0, 0, "", nullptr}}));
    mHost.mConfig.mBrokerQuotes = true;
    EXPECT_FALSE(has(entry));
    mHost.mConfig.mBrokerQuotes = false;
    mGraph->beReplay(true);
    EXPECT_FALSE(has(entry));
    mGraph->beReplay(false);
    mHost.mTypes.mTypes = {{277, "SZ", "600000"}, {10006, "SH", "600000"}};
    EXPECT_FALSE(has(entry));
}

TEST_F(GraphMenuTest, TradesAfterHoursOfShenzhenGoByTheRulesOfTheBoard) {
    const QString entry = QStringLiteral("显示盘后固定价格成交");
    mHost.mTypes.mTypes = {{10006, "SZ", "600000"}};
    mUi = boost::make_shared<CRealtimeUiParam>(EIndexViewType::Template);
    mUi->setStock(QStringLiteral("SH600000"), false);
    showMain();
    mGraph->setStock(QStringLiteral("SH600000"), false);
    EXPECT_FALSE(has(entry));
    mHost.mConfig.mUserConfig.mBoardNewRules = true;
    EXPECT_TRUE(has(entry));
    mHost.mConfig.mHasUserConfig = false;
    EXPECT_FALSE(has(entry));
}

TEST_F(GraphMenuTest, TradesAfterHoursAreForNoOtherView) {
    mHost.mTypes.mTypes = {{277, "SH", "600000"}};
    showMain(EIndexViewType::Template); // of the graph alone
    mGraph->setStock(QStringLiteral("SH600000"), false);
    EXPECT_FALSE(has(QStringLiteral("显示盘后固定价格成交")));
}

TEST_F(GraphMenuTest, TheLevelThatIsOverlaidIsChecked) {
    showMain();
    mUi->mAddSwBkzsLevel = 2;
    EXPECT_TRUE(menu().contains(QStringLiteral("叠加板块指数{o申万一级|+申万二级|o申万三级}")));
}

TEST_F(GraphMenuTest, AViewWithASectorOfItsOwnOverlaysThat) {
    mHost.mTypes.mTypes = {{135, "SH", "600000"}};
    showMain();
    mUi->mCanOverlaySector = true;
    mUi->mPanelInfo = boost::make_shared<CPanelInfo>();
    mUi->mPanelInfo->mAutoChangePeriod = true;
    EXPECT_EQ(between(QStringLiteral("叠加品种"), QStringLiteral("+自动切换周期")),
              QStringLiteral("叠加品种|叠加无坐标品种|取消叠加品种|o显示成交量|+显示渐变色|o叠加板块指数|"
                             "加入自选股|+自动切换周期"));
    settings().mOverlaySector = true;
    settings().mShowGradient = 0;
    mUi->mShowVolume = true;
    mUi->mPanelInfo->mAutoChangePeriod = false;
    EXPECT_EQ(between(QStringLiteral("+显示成交量"), QStringLiteral("o自动切换周期")),
              QStringLiteral("+显示成交量|o显示渐变色|+叠加板块指数|加入自选股|o自动切换周期"));
}

TEST_F(GraphMenuTest, BondsAndTheirSharesOverlayEachOther) {
    const QString entry = QStringLiteral("自动叠加转债正股品种");
    showMain();
    EXPECT_FALSE(has(entry));
    for (const int type : {100001, 135, 10019}) {
        mHost.mTypes.mTypes = {{type, "SH", "600000"}};
        EXPECT_TRUE(menu().contains("o" + entry)) << type;
    }
    mUi->mAddStockFlags = 1;
    EXPECT_TRUE(menu().contains("+" + entry));
    mUi->mAddStockFlags = 2; // another overlay's
    EXPECT_TRUE(menu().contains("o" + entry));
}

TEST_F(GraphMenuTest, FormulasAreEditedByThoseWhoMay) {
    showMain();
    EXPECT_FALSE(has(QStringLiteral("编辑指标")));
    mHost.mConfig.mUserConfig.mEditorAuth = true;
    EXPECT_EQ(between(QStringLiteral("取消叠加品种"), QStringLiteral("o显示成交量")),
              QStringLiteral("取消叠加品种|-|修改指标参数|编辑指标|o显示成交量"));
    mHost.mConfig.mHasUserConfig = false;
    EXPECT_FALSE(has(QStringLiteral("编辑指标")));
}

// Export and closing entries

TEST_F(GraphMenuTest, AFormulaIsExportedUnlessModelsAreHidden) {
    showMain();
    EXPECT_TRUE(has(QStringLiteral("导出公式")));
    mHost.mConfig.mHideModel = true;
    EXPECT_FALSE(has(QStringLiteral("导出公式")));
    mHost.mConfig.mHideModel = false;
    mData->removeAllFormulas();
    EXPECT_FALSE(has(QStringLiteral("导出公式")));
}

TEST_F(GraphMenuTest, AHostWithoutGroupsOfWorkHasNoEntryForThem) {
    showMain();
    EXPECT_EQ(choose(QStringLiteral("新建工作组")), (Events{{3159, 0, 0, "", nullptr}}));
    mGraph->setCreateNewWorkShow(false);
    EXPECT_FALSE(has(QStringLiteral("新建工作组")));
}

TEST_F(GraphMenuTest, AccountsOfSharesAreListedInOrderAndCheckedWhenShown) {
    mHost.mLinkage.mEnabled = true;
    mHost.mLinkage.mAccountIds = {{1, {"f"}}, {2, {"b", "a"}}};
    mUi->mStockAccounts = {"a"};
    mUi->mFutureAccounts = {"b"};
    showMain();
    EXPECT_TRUE(menu().contains(QStringLiteral("|显示交易数据{o全选|-|ob|+a|-|显示详细交易数据}|")));
    EXPECT_EQ(mHost.mLog.of("CLinkageManager::getAccountIds"), QStringList{"CLinkageManager::getAccountIds 2"});
    mUi->mStockAccounts = {"a", "b", "c"};
    EXPECT_TRUE(menu().contains(QStringLiteral("|显示交易数据{+全选|-|+b|+a|-|显示详细交易数据}|")));
    EXPECT_EQ(choose(QStringLiteral("显示交易数据/显示详细交易数据")), (Events{{3160, 0, 0, "", nullptr}}));
}

TEST_F(GraphMenuTest, AccountsOfFuturesAreOfAKindOfTheirOwn) {
    mHost.mLinkage.mEnabled = true;
    mHost.mLinkage.mAccountIds = {{1, {"f"}}, {2, {"a"}}};
    mUi->mFutureAccounts = {"f"};
    showMain();
    mDetail->mMarket = "INE";
    EXPECT_TRUE(menu().contains(QStringLiteral("|显示交易数据{+全选|-|+f|-|显示详细交易数据}|")));
    mDetail->mMarket = "ine";
    EXPECT_TRUE(menu().contains(QStringLiteral("|显示交易数据{o全选|-|oa|-|显示详细交易数据}|")));
}

TEST_F(GraphMenuTest, TheSettingsOfTheTradeDataAreChecked) {
    showMain();
    settings().mShowVwap = true;
    EXPECT_TRUE(menu().contains(QStringLiteral("+VWAP成交均价|o过滤重复股票")));
    settings().mFilterStock = 1;
    settings().mShowVwap = false;
    EXPECT_TRUE(menu().contains(QStringLiteral("oVWAP成交均价|+过滤重复股票")));
}

TEST_F(GraphMenuTest, APastDayOffersTheCounterpartOfEitherMarket) {
    mHost.mSectors.mAOfH.insert(QStringLiteral("HK00600"), QStringLiteral("SH600000"));
    showMain();
    mGraph->setStock(QStringLiteral("SH600000"), false);
    EXPECT_FALSE(has(QStringLiteral("AH股叠加")));
    mGraph->beHistory(true);
    EXPECT_TRUE(menu().endsWith(QStringLiteral("过滤重复股票|-|AH股叠加|-|复制请求信息|下载数据")));
    mGraph->setStock(QStringLiteral("HK00600"), false);
    EXPECT_EQ(choose(QStringLiteral("AH股叠加")), (Events{{209, 0, 1, "SH600000", nullptr}}));
    mGraph->setStock(QStringLiteral("SZ000001"), false);
    EXPECT_FALSE(has(QStringLiteral("AH股叠加")));
}

// Formula panes

TEST_F(GraphMenuTest, AFormulaPaneHasItsEntriesInOrder) {
    showSub();
    EXPECT_EQ(menu(), QStringLiteral("添加指标|-|关闭指标|复制|复制运行进度|导出公式|") + kClosing);
}

TEST_F(GraphMenuTest, EverythingThatAFormulaPaneCanHaveIsThereInOrder) {
    mHost.mConfig.mUserConfig.mEditorAuth = true;
    mHost.mTypes.mIndexes = {{"SH", "600000"}};
    mHost.mCatalogue.getFormula("MACD")->mStrParamNames = {"group"};
    addFolder(QStringLiteral("趋势"), {"MACD", "KDJ"});
    showSub();
    EXPECT_EQ(menu(),
              QStringLiteral(
                  "添加指标|-|更改副图指标{趋势{+MACD|KDJ}}|-|修改指标参数|编辑指标|-|刷新|-|关闭指标|复制|"
                  "复制运行进度|导出公式|") +
                  kClosing);
    mHost.mTypes.mIndexes.clear();
    EXPECT_FALSE(has(QStringLiteral("刷新")));
    mHost.mTypes.mIndexes = {{"SH", "600000"}};
    mHost.mCatalogue.getFormula("MACD")->mStrParamNames.clear();
    EXPECT_FALSE(has(QStringLiteral("刷新")));
}

TEST_F(GraphMenuTest, AnyOtherPaneHasTheCommonEntriesAlone) {
    makeGraph(EIndexDisplayType(2), {"MACD"});
    showGraph(482, 205);
    EXPECT_EQ(menu(), QStringLiteral("导出公式|") + kClosing);
}

// Regions

class GraphRegionMenu : public GraphMenuTest {
protected:
    void SetUp() override {
        showMain();
        crossLine(true);
    }
    /// A right drag over columns, and what the menu after it has.
    QString menuAfterDrag(int from, int to) {
        drag({from, 50}, {to, 60}, Qt::RightButton);
        return menu();
    }
    /// Makes the next menu that of a region, and then selects columns once more.
    void rearm(int from, int to) {
        drag({100, 50}, {200, 60}, Qt::RightButton);
        leave();
        press({from, 50}, Qt::RightButton);
        move({to, 60}, Qt::RightButton);
        release({to, 60}, Qt::RightButton);
    }
    static quint64 seconds(int hour, int minute) {
        return QDateTime(QDate(2024, 3, 15), QTime(hour, minute)).toSecsSinceEpoch();
    }
};

TEST_F(GraphRegionMenu, ARegionOffersItsStatisticAndItsReplay) {
    // Columns 101 and 201 belong to the indices 51 and 101: 10:21 and 11:11.
    EXPECT_EQ(menuAfterDrag(101, 201), QStringLiteral("时段统计|显示行情回放界面|") + kClosing);
    drag({101, 50}, {201, 60}, Qt::RightButton);
    const QString text = QStringLiteral("101,%1,%2").arg(seconds(10, 21)).arg(seconds(11, 11));
    EXPECT_EQ(choose(QStringLiteral("时段统计")), (Events{{191, 51, 7, text, nullptr}}));
    EXPECT_TRUE(regionLines().isVisible());
    drag({201, 50}, {101, 60}, Qt::RightButton);
    EXPECT_EQ(choose(QStringLiteral("显示行情回放界面")),
              (Events{{3268, int(seconds(10, 21)), int(seconds(11, 11)), "SH600000", nullptr}}));
}

TEST_F(GraphRegionMenu, AReplayOffersTheRangeOfItsRegion) {
    mGraph->beReplay(true);
    EXPECT_EQ(menuAfterDrag(101, 201), QStringLiteral("时段统计|生成千档区域范围|") + kClosing);
    drag({101, 50}, {201, 60}, Qt::RightButton);
    EXPECT_EQ(choose(QStringLiteral("生成千档区域范围")),
              (Events{{3268, int(seconds(10, 21)), int(seconds(11, 11)), "", nullptr}}));
}

TEST_F(GraphRegionMenu, TheMenuEndsTheSelection) {
    fillMain();
    drag({101, 50}, {201, 60}, Qt::RightButton);
    EXPECT_NE(paintedGraph(), chart());
    openMenu([this](QMenu &) { EXPECT_EQ(paintedGraph(), chart()); });
    EXPECT_FALSE(member(tests::Peek_mRightSelecting()));
    EXPECT_TRUE(member(tests::Peek_mNormalContextMenu()));
    EXPECT_EQ(member(tests::Peek_mRightRect()), QRect(0, 0, 0, 0));
    EXPECT_TRUE(menu().startsWith(QStringLiteral("添加指标")));
}

TEST_F(GraphRegionMenu, TheMenuRepaintsTheGraph) {
    drag({101, 50}, {201, 60}, Qt::RightButton);
    EXPECT_GE(paintsOf([this] { openMenu(); }), 1);
}

TEST_F(GraphRegionMenu, ADragOfThirtyPixelsOpensTheNormalMenuAndGoesOnSelecting) {
    EXPECT_TRUE(menuAfterDrag(100, 130).startsWith(QStringLiteral("添加指标")));
    EXPECT_TRUE(member(tests::Peek_mRightSelecting()));
    EXPECT_EQ(member(tests::Peek_mRightRect()).width(), 30);
    EXPECT_TRUE(menuAfterDrag(100, 131).startsWith(QStringLiteral("时段统计")));
}

TEST_F(GraphRegionMenu, ARegionOfTwentyOnePixelsIsOneOnlyAfterAWiderOneWasLeft) {
    EXPECT_TRUE(menuAfterDrag(100, 121).startsWith(QStringLiteral("添加指标")));
    leave();
    rearm(100, 121);
    EXPECT_EQ(menu(), QStringLiteral("时段统计|显示行情回放界面|") + kClosing);
}

TEST_F(GraphRegionMenu, ARegionOfTwentyPixelsHasTheExportInPlaceOfItsEntries) {
    rearm(100, 120);
    EXPECT_EQ(menu(), QStringLiteral("导出公式|") + kClosing);
    EXPECT_FALSE(member(tests::Peek_mRightSelecting()));
    EXPECT_TRUE(member(tests::Peek_mNormalContextMenu()));
    EXPECT_EQ(member(tests::Peek_mRightRect()), QRect(0, 0, 0, 0));
}

TEST_F(GraphRegionMenu, ARegionOfAReplayMayBeHalfAsWide) {
    mGraph->beReplay(true);
    rearm(100, 111);
    EXPECT_TRUE(menu().startsWith(QStringLiteral("时段统计|生成千档区域范围")));
    rearm(100, 110);
    EXPECT_TRUE(menu().startsWith(QStringLiteral("导出公式")));
}

TEST_F(GraphRegionMenu, ARegionIsOfTheMinutesThatItWasDrawnOverWhateverTheWidth) {
    drag({101, 50}, {201, 60}, Qt::RightButton);
    leave();
    ASSERT_NO_FATAL_FAILURE(showGraph(964, 205));
    const QString text = QStringLiteral("101,%1,%2").arg(seconds(10, 21)).arg(seconds(11, 11));
    EXPECT_EQ(choose(QStringLiteral("时段统计")), (Events{{191, 51, 7, text, nullptr}}));
}

TEST_F(GraphRegionMenu, AfterALeaveTheMenuIsThatOfTheOldRegion) {
    drag({101, 50}, {201, 60}, Qt::RightButton);
    leave();
    EXPECT_TRUE(menu().startsWith(QStringLiteral("时段统计")));
}

} // namespace
