// What the entries of a graph's menus do.

#include "host/records/CFormulaParameter.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/windows/CAddSelfStockDialog.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "tests/chartview/GraphMenuFixture.h"
#include "tests/support/LogCapture.h"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaMethod>
#include <QPushButton>

using namespace TC;

namespace {

class GraphSlots : public tests::GraphMenuFixture {
protected:
    /// Triggers an entry of a text that is connected to a slot, and answers the events.
    template <class Slot> Events send(Slot slot, const QString &text, const QVariant &data = {}) {
        takeEvents();
        QAction action(text);
        action.setData(data);
        QObject::connect(&action, &QAction::triggered, mGraph.get(), slot);
        action.trigger();
        return takeEvents();
    }
    template <class Call> Events eventsOf(Call call) {
        takeEvents();
        call();
        return takeEvents();
    }
    /// Answers the next dialog while an action runs; the dialog is shown to `look` first.
    template <class Dialog, class Look> static bool answering(const std::function<void()> &action, Look look) {
        bool seen = false;
        QTimer::singleShot(0, qApp, [&] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (dialog) {
                seen = true;
                look(*dialog);
            }
        });
        action();
        QCoreApplication::processEvents();
        return seen;
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }
    QStringList windowCalls() const { return mHost.mLog.of("CIndexMainWindowHelper::"); }
    void overlay(int count) {
        for (int i = 1; i <= count; ++i) {
            mHost.mStocks.add("SZ", "00000" + std::to_string(i));
            mUi->addStock(QStringLiteral("SZ00000%1").arg(i), QString(), true);
        }
    }
};

TEST_F(GraphSlots, ThereAreThirtyFiveOfThem) {
    const QMetaObject &meta = CRealtimeGraphWidget::staticMetaObject;
    int count = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        count += meta.method(i).methodType() == QMetaMethod::Slot ? 1 : 0;
    }
    EXPECT_EQ(count, 35);
    EXPECT_GE(meta.indexOfSlot("slotStatistic(bool,int,QString)"), 0);
    EXPECT_GE(meta.indexOfSlot("slotSetReplayTimeRegin(bool,int,QString)"), 0);
    EXPECT_STREQ(meta.method(meta.indexOfSlot("slotAddSelfStock()")).typeName(), "bool");
}

TEST_F(GraphSlots, ThoseThatNeedASenderDoNothingWithoutOne) {
    mHost.mCatalogue.add("VWAP成交均价", 1);
    showMain();
    EXPECT_EQ(eventsOf([this] {
                  mGraph->slotAddIndex();
                  mGraph->slotDelIndex();
                  mGraph->slotAddBkzsCode();
                  mGraph->slotSelectAllAccount(true);
                  mGraph->slotSelectShowAccount(true);
                  mGraph->slotAddVWAPFormula();
              }),
              Events());
    EXPECT_EQ(mUi->mAddSwBkzsLevel, -1);
    EXPECT_EQ(eventsOf([this] { mGraph->slotUpdateIndex(); }), (Events{{180, 0, 0, "", nullptr}}));
    EXPECT_EQ(mData->getFormulas(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(GraphSlots, SomeOnlyTellTheHost) {
    showMain();
    const auto of = [this](void (CRealtimeGraphWidget::*slot)()) {
        return eventsOf([&] { ((*mGraph).*slot)(); });
    };
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotAddIndexWidget), (Events{{3023, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotRestoreGraph), (Events{{3021, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotCreateNewWork), (Events{{3159, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotShowLinkageData), (Events{{3160, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotAutoChangePeriod), (Events{{3254, 7, -1, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotShowControlDialog), (Events{{3267, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotDelAllStock), (Events{{209, 0, 0, "", nullptr}}));
    EXPECT_EQ(of(&CRealtimeGraphWidget::slotDownloadDatas), (Events{{3265, 1, 60, "600000.SH", nullptr}}));
    for (const bool checked : {false, true}) {
        EXPECT_EQ(eventsOf([&] { mGraph->slotShowAfterTradeFixedPriceDeal(checked); }),
                  (Events{{3226, 0, 0, "", nullptr}}));
    }
}

// Formulas

TEST_F(GraphSlots, OnlyAnAttachedFormulaIsPutOverTheMainPane) {
    mHost.mCatalogue.add("MA", 1);
    showMain();
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotAddIndex, "MA"), (Events{{208, 0, 1, "MA", nullptr}}));
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotAddIndex, "MACD"), Events());
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotAddIndex, "GONE"), Events());
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotDelIndex, "GONE"), (Events{{208, 0, 0, "GONE", nullptr}}));
    showSub();
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotAddIndex, "MA"), Events());
    EXPECT_EQ(send(&CRealtimeGraphWidget::slotDelIndex, "MA"), Events());
}

TEST_F(GraphSlots, ClosingTakesTheFormulasOffAndTellsTheFirst) {
    showSub();
    mGraph->addIndex("KDJ");
    EXPECT_EQ(eventsOf([this] { mGraph->slotCloseFormula(); }),
              (Events{{3020, 7, 0, "MACD", nullptr}, {3029, 0, 0, "", nullptr}}));
    EXPECT_TRUE(mData->getFormulas().isEmpty());
    EXPECT_EQ(eventsOf([this] { mGraph->slotCloseFormula(); }),
              (Events{{3020, 7, 0, "", nullptr}, {3029, 0, 0, "", nullptr}}));
}

TEST_F(GraphSlots, ClosingLeavesTheMainFormulas) {
    showMain();
    mGraph->addIndex("KDJ");
    EXPECT_EQ(eventsOf([this] { mGraph->slotCloseFormula(); }).front(),
              (tests::Event{3020, 7, 0, "REALTIME", nullptr}));
    EXPECT_EQ(mData->getFormulas(), (QList<QString>{"REALTIME", "REALTIMEVOL"}));
}

TEST_F(GraphSlots, AGraphMayGoWhenItIsClosed) {
    showSub();
    mKeeper->mOnEvent = [this](int event) {
        if (event == 3020) {
            mGraph.reset();
        }
    };
    mGraph->slotCloseFormula();
    EXPECT_TRUE(mKeeper->of(3029).empty());
    mKeeper->mOnEvent = {};
}

TEST_F(GraphSlots, ARefreshAsksAnew) {
    showSub();
    EXPECT_TRUE(mHost.mFormulas.mLive.all().isEmpty());
    mGraph->slotRefresh();
    EXPECT_EQ(mHost.mFormulas.mLive.all().size(), 1);
}

TEST_F(GraphSlots, TheFirstFormulaBesideTheMainOnesIsExported) {
    showMain();
    mGraph->slotExportFormula();
    mGraph->addIndex("MACD");
    mGraph->addIndex("KDJ");
    mGraph->slotExportFormula();
    EXPECT_EQ(windowCalls(), (QStringList{"CIndexMainWindowHelper::exportFormula ",
                                          "CIndexMainWindowHelper::exportFormula MACD"}));
}

TEST_F(GraphSlots, ASystemFormulaIsNotEdited) {
    showMain();
    EXPECT_TRUE(answering<QMessageBox>([this] { mGraph->slotEditFormula(); },
                                       [](QMessageBox &box) {
                                           EXPECT_EQ(box.windowTitle(), QStringLiteral("Velmar指标终端"));
                                           EXPECT_EQ(box.text(), QStringLiteral("系统指标不可编辑!"));
                                           EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
                                           box.accept();
                                       }));
}

TEST_F(GraphSlots, TheFirstFormulaThatIsNoMainOneIsEdited) {
    mHost.mCatalogue.mSources["MACD"].mText = "macd";
    showMain();
    mGraph->addIndex("MACD");
    mGraph->addIndex("KDJ");
    const QWidgetList before = QApplication::topLevelWidgets();
    mGraph->slotEditFormula();
    QWidget *editor = CFormulaEditorManager::createWindow("MACD", 0, nullptr); // the one that is open
    EXPECT_FALSE(before.contains(editor));
    EXPECT_EQ(QApplication::topLevelWidgets().size(), before.size() + 1);
    delete editor;
}

TEST_F(GraphSlots, AnEmptyFormulaPaneEditsANewFormula) {
    showSub();
    mData->removeAllFormulas();
    const QWidgetList before = QApplication::topLevelWidgets();
    mGraph->slotEditFormula();
    int opened = 0;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!before.contains(window)) {
            ++opened;
            delete window;
        }
    }
    EXPECT_EQ(opened, 1);
}

TEST_F(GraphSlots, TheParametersOfTheLastFormulaAreShownInOneDialog) {
    showSub();
    mGraph->addIndex("KDJ");
    mGraph->slotModifyModelParam();
    auto *dialog = mGraph->findChild<CModifyModelParamDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->name(), QStringLiteral("KDJ"));
    dialog->hide();
    mData->removeFormula("KDJ", false);
    mGraph->slotModifyModelParam();
    EXPECT_EQ(mGraph->findChildren<CModifyModelParamDialog *>(), QList<CModifyModelParamDialog *>{dialog});
    EXPECT_EQ(dialog->name(), QStringLiteral("MACD"));
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(GraphSlots, APaneWithoutFormulasHasNoParameters) {
    showSub();
    mData->removeAllFormulas();
    mGraph->slotModifyModelParam();
    EXPECT_EQ(mGraph->findChild<CModifyModelParamDialog *>(), nullptr);
}

TEST_F(GraphSlots, AFormulaThatTradesIsChangedOnlyAfterAQuestion) {
    mHost.mStrategies.mStrategies["MACD"].mRunning = true;
    showSub();
    const auto answer = [this](QMessageBox::StandardButton button) {
        return answering<QMessageBox>(
            [this] { mGraph->slotModifyModelParam(); },
            [&](QMessageBox &box) {
                EXPECT_EQ(box.windowTitle(), QStringLiteral("提示"));
                EXPECT_EQ(box.text(),
                          QStringLiteral("该策略正在模型交易中运行,编辑策略不会影响运行情况,是否继续编辑?"));
                EXPECT_EQ(box.standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
                box.button(button)->click();
            });
    };
    EXPECT_TRUE(answer(QMessageBox::Cancel));
    EXPECT_EQ(mGraph->findChild<CModifyModelParamDialog *>(), nullptr);
    EXPECT_TRUE(answer(QMessageBox::Ok));
    EXPECT_NE(mGraph->findChild<CModifyModelParamDialog *>(), nullptr);
}

TEST_F(GraphSlots, AGraphMayGoWhileTheQuestionIsOpen) {
    mHost.mStrategies.mStrategies["MACD"].mRunning = true;
    showSub();
    EXPECT_TRUE(answering<QMessageBox>([this] { mGraph->slotModifyModelParam(); },
                                       [this](QMessageBox &) { mGraph.reset(); }));
}

// Overlays

TEST_F(GraphSlots, AnOverlayIsPickedWithAndWithoutAnAxis) {
    mHost.mStocks.add("SZ", "000001");
    mHost.mSmartKeys.add("SZ000001", "000001", "平安银行", "PAYH");
    showMain();
    CSmartKeyboardDialog *keyboard = CSmartKeyboardDialog::instance();
    const auto pick = [&](const QString &title) {
        EXPECT_TRUE(keyboard->isVisible());
        EXPECT_EQ(keyboard->windowTitle(), title);
        takeEvents();
        auto *edit = keyboard->findChild<QLineEdit *>();
        edit->setText("000001");
        QTest::keyClick(edit, Qt::Key_Return);
        return takeEvents();
    };
    mGraph->slotOverlayStock();
    EXPECT_EQ(pick(QStringLiteral("叠加品种")), (Events{{209, 0, 1, "SZ000001", nullptr}}));
    mGraph->slotOverlayNoAxisStock();
    EXPECT_EQ(pick(QStringLiteral("叠加无坐标品种")), (Events{{209, 0, 11, "SZ000001", nullptr}}));
}

TEST_F(GraphSlots, TheLimitOfOverlaysIsToldAsThreeWhateverItIs) {
    mUi->mMaxAddStock = 1;
    overlay(1);
    showMain();
    for (const auto slot :
         {&CRealtimeGraphWidget::slotOverlayStock, &CRealtimeGraphWidget::slotOverlayNoAxisStock,
          &CRealtimeGraphWidget::slotOverlayAHStock}) {
        EXPECT_TRUE(answering<QMessageBox>([&] { ((*mGraph).*slot)(); },
                                           [](QMessageBox &box) {
                                               EXPECT_EQ(box.windowTitle(), QStringLiteral("提示"));
                                               EXPECT_EQ(box.text(),
                                                         QStringLiteral("已达到允许叠加最大限制数3!"));
                                               EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
                                               box.accept();
                                           }));
    }
    EXPECT_FALSE(CSmartKeyboardDialog::instance()->isVisible());
}

TEST_F(GraphSlots, TheSectorOfTheViewIsOverlaidByASetting) {
    showMain();
    mUi->mSector = "BKZS801780";
    EXPECT_EQ(eventsOf([this] { mGraph->slotOverlaySector(); }), (Events{{209, 0, 1, "BKZS801780", nullptr}}));
    EXPECT_TRUE(settings().mOverlaySector);
    EXPECT_EQ(eventsOf([this] { mGraph->slotOverlaySector(); }), (Events{{209, 0, 0, "", nullptr}}));
    EXPECT_FALSE(settings().mOverlaySector);
}

class GraphSectorSlots : public GraphSlots {
protected:
    void SetUp() override {
        mHost.mStocks.add("BKZS", "1");
        mHost.mStocks.add("BKZS", "2");
        mHost.mSectors.mSectorOfStock = {
            {{"SH600000", 1}, "银行"}, {{"SH600000", 2}, "股份制"}, {{"SH600000", 3}, "无指数"}};
        mHost.mSectors.mIndexOfSector = {{"银行", "BKZS1"}, {"股份制", "BKZS2"}};
        showMain();
    }
    Events level(int level) { return send(&CRealtimeGraphWidget::slotAddBkzsCode, "申万", level); }
    QStringList overlaid() const {
        QStringList keys;
        for (const CInstrumentDetailPtr &detail : mUi->getAllAddStockList()) {
            keys.append(getDetailQsKey(detail));
        }
        return keys;
    }
    const Events kRenew{{209, 0, 2, "", nullptr}};
};

TEST_F(GraphSectorSlots, TheIndexOfTheSectorOfALevelIsOverlaid) {
    EXPECT_EQ(level(2), kRenew);
    EXPECT_EQ(mUi->mAddSwBkzsLevel, 2);
    EXPECT_EQ(overlaid(), QStringList{"BKZS2"});
}

TEST_F(GraphSectorSlots, AnyLevelOnlyCancelsTheOneThatIsOverlaid) {
    level(1);
    EXPECT_EQ(level(2), kRenew);
    EXPECT_EQ(mUi->mAddSwBkzsLevel, -1);
    EXPECT_EQ(overlaid(), QStringList());
    level(1);
    EXPECT_EQ(level(1), kRenew);
    EXPECT_EQ(overlaid(), QStringList());
}

TEST_F(GraphSectorSlots, ASectorWithoutAnIndexIsLoggedAndNotTold) {
    tests::LogCapture log;
    EXPECT_EQ(level(3), Events());
    EXPECT_EQ(mUi->mAddSwBkzsLevel, 3);
    EXPECT_EQ(
        log.lines(),
        QStringList(QStringLiteral("[%1] [TC::CRealtimeGraphWidget::slotAddBkzsCode] get bkzs code empty. "
                                   "mainID:%2, curStock:SH600000, swLevel:3, swSector:无指数")
                        .arg(reinterpret_cast<qint64>(mGraph.get()))
                        .arg(mUi->getMainPanelID())));
    EXPECT_EQ(log.lastSource(), QStringLiteral("CRealtimeGraphWidget"));
    EXPECT_EQ(log.lastLevel(), 20000);
}

TEST_F(GraphSectorSlots, AFormulaPaneHasNoSectors) {
    showSub();
    EXPECT_EQ(level(1), Events());
    EXPECT_EQ(mUi->mAddSwBkzsLevel, -1);
}

TEST_F(GraphSlots, WhatABondConvertsToIsOverlaidAndTakenAway) {
    mHost.mStocks.add("SH", "113050");
    mHost.mSectors.mConvertibles["SH600000"] = {"SH113050"};
    showMain();
    const Events renew{{209, 0, 2, "", nullptr}};
    EXPECT_EQ(eventsOf([this] { mGraph->slotAddConvertibleCode(); }), renew);
    EXPECT_EQ(mUi->mAddStockFlags, 1);
    EXPECT_EQ(mUi->getAllAddStockList().size(), 1);
    EXPECT_EQ(eventsOf([this] { mGraph->slotAddConvertibleCode(); }), renew);
    EXPECT_EQ(mUi->mAddStockFlags, 0);
    EXPECT_TRUE(mUi->getAllAddStockList().isEmpty());
}

TEST_F(GraphSlots, WithoutSomethingToConvertToOnlyTheSwitchIsOn) {
    showMain();
    mUi->mAddStockFlags = 4;
    EXPECT_EQ(eventsOf([this] { mGraph->slotAddConvertibleCode(); }), Events());
    EXPECT_EQ(mUi->mAddStockFlags, 5);
    EXPECT_EQ(eventsOf([this] { mGraph->slotAddConvertibleCode(); }), (Events{{209, 0, 2, "", nullptr}}));
    EXPECT_EQ(mUi->mAddStockFlags, 4);
    showSub();
    EXPECT_EQ(eventsOf([this] { mGraph->slotAddConvertibleCode(); }), Events());
    EXPECT_EQ(mUi->mAddStockFlags, 4);
}

// View and settings

TEST_F(GraphSlots, VolumeIsSwitchedAndToldByTheMainPaneAlone) {
    showMain();
    EXPECT_EQ(eventsOf([this] { mGraph->slotShowVolume(); }), (Events{{207, 0, 0, "", nullptr}}));
    EXPECT_TRUE(mUi->mShowVolume);
    showSub();
    EXPECT_EQ(eventsOf([this] { mGraph->slotShowVolume(); }), Events());
    EXPECT_FALSE(mUi->mShowVolume);
}

TEST_F(GraphSlots, TheGradientIsASettingThatIsKept) {
    showMain();
    EXPECT_EQ(eventsOf([this] { mGraph->slotShowGradient(); }), (Events{{207, 0, 0, "", nullptr}}));
    EXPECT_EQ(settings().mShowGradient, 0);
    mGraph->slotShowGradient();
    EXPECT_EQ(settings().mShowGradient, 1);
}

TEST_F(GraphSlots, OtherSettingsStayAsTheyAre) {
    settings().mOverlaySector = true;
    settings().mShowVwap = true;
    settings().mFilterStock = 1;
    showMain();
    mGraph->slotShowGradient();
    EXPECT_TRUE(settings().mOverlaySector);
    EXPECT_TRUE(settings().mShowVwap);
    EXPECT_EQ(settings().mFilterStock, 1);
}

TEST_F(GraphSlots, TheFilterChangesOnlyWhileTheTradeDataIsShown) {
    showMain();
    EXPECT_EQ(choose(QStringLiteral("过滤重复股票")), Events());
    EXPECT_EQ(settings().mFilterStock, 0);
    settings().mShowVwap = true;
    EXPECT_EQ(choose(QStringLiteral("过滤重复股票")), (Events{{3262, 0, 1, "", nullptr}}));
    EXPECT_EQ(settings().mFilterStock, 1);
    EXPECT_EQ(choose(QStringLiteral("过滤重复股票")), (Events{{3262, 0, 0, "", nullptr}}));
    EXPECT_EQ(settings().mFilterStock, 0);
}

TEST_F(GraphSlots, TheTradeDataIsShownWithTheAccountsOfTheFormula) {
    mHost.mCatalogue.add("VWAP成交均价", 1);
    mUi->setFormulaAccount("a,b");
    showMain();
    const QString entry = QStringLiteral("VWAP成交均价");
    EXPECT_EQ(choose(entry), (Events{{208, 0, 1, entry, nullptr}, {3163, 0, 0, "", nullptr}}));
    EXPECT_TRUE(settings().mShowVwap);
    EXPECT_EQ(mUi->mStockAccounts, (QList<QString>{"a", "b"}));
    EXPECT_EQ(choose(entry), (Events{{208, 0, 0, entry, nullptr}, {3163, 0, 0, "", nullptr}}));
    EXPECT_FALSE(settings().mShowVwap);
    EXPECT_TRUE(mUi->mStockAccounts.isEmpty());
}

TEST_F(GraphSlots, AFormulaPaneAndAnUnknownFormulaOnlyChangeTheSetting) {
    showMain();
    EXPECT_EQ(choose(QStringLiteral("VWAP成交均价")), Events()); // the catalogue does not have it
    EXPECT_TRUE(settings().mShowVwap);
    mHost.mCatalogue.add("VWAP成交均价", 1);
    showSub();
    EXPECT_EQ(choose(QStringLiteral("VWAP成交均价")), Events());
    EXPECT_FALSE(settings().mShowVwap);
}

// Clipboard

TEST_F(GraphSlots, SeriesAreCopied) {
    showSub();
    mGraph->request(corvane::ERunMode::Ordinary);
    answer("MACD", {1.0, 2.0});
    mGraph->slotCopy();
    EXPECT_FALSE(clipboard().isEmpty());
    EXPECT_EQ(clipboard(), mData->getResultText());
}

TEST_F(GraphSlots, RequestsAreCopied) {
    showMain();
    mGraph->request(corvane::ERunMode::Ordinary);
    mGraph->slotCopyRequestInfo();
    EXPECT_EQ(clipboard(), QStringLiteral("code:SH600000\nformulas:REALTIME;REALTIMEVOL\nreqIDs:%1")
                               .arg(QStringList(mData->reqIds().toList()).join(';')));
    EXPECT_EQ(mData->reqIds().size(), 2);
}

TEST_F(GraphSlots, TheProgressOfEveryRunIsCopied) {
    showSub();
    mGraph->addIndex("KDJ");
    mGraph->request(corvane::ERunMode::Ordinary);
    const QVector<QString> ids = mData->reqIds();
    ASSERT_EQ(ids.size(), 2);
    mHost.mFormulas.mProgress[ids[0].toStdString()] = bson::BSONObjBuilder().append("done", 3).obj();
    choose(QStringLiteral("复制运行进度"));
    const QStringList lines = clipboard().split('\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(bson::BSONObj::fromJson(lines[0].toStdString()).getNumber("done"), 3.0);
    EXPECT_TRUE(bson::BSONObj::fromJson(lines[1].toStdString()).isEmpty());
}

// The host's windows

TEST_F(GraphSlots, TheSectorIsAnalysedByTheHost) {
    showMain();
    mGraph->slotContrastSector(false);
    mGraph->slotContrastSector(true);
    mGraph->showContrastSector();
    const QString call = "CIndexMainWindowHelper::showContrast SH600000";
    EXPECT_EQ(windowCalls(), (QStringList{call, call, call}));
}

TEST_F(GraphSlots, TheHostHearsOfAnotherInstrumentOnce) {
    showMain();
    mGraph->setStock("SH600000", false);
    mGraph->setStock("SH600000", false);
    mGraph->setStock("SZ000001", false);
    EXPECT_EQ(windowCalls(), (QStringList{"CIndexMainWindowHelper::instrumentChanged SH600000",
                                          "CIndexMainWindowHelper::instrumentChanged SZ000001"}));
}

TEST_F(GraphSlots, AnInstrumentIsAddedToAList) {
    showMain();
    bool done = false;
    EXPECT_TRUE(answering<CAddSelfStockDialog>([&] { done = mGraph->slotAddSelfStock(); },
                                               [](CAddSelfStockDialog &dialog) { dialog.accept(); }));
    EXPECT_TRUE(done);
    EXPECT_EQ(mHost.mSelfStocks.mStocks[QStringLiteral("自选股")], QVector<QString>{"SH600000"});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(mGraph->findChild<CAddSelfStockDialog *>(), nullptr);
}

TEST_F(GraphSlots, WithoutAnInstrumentThereIsNothingToAdd) {
    mUi->clearStock();
    showMain();
    EXPECT_FALSE(mGraph->slotAddSelfStock());
    mHost.mConfig.mClientType = EClientType::Trading;
    bool done = false;
    EXPECT_EQ(eventsOf([&] { done = mGraph->slotAddSelfStock(); }), (Events{{4001, 0, 0, "", nullptr}}));
    EXPECT_TRUE(done);
}

TEST_F(GraphSlots, ATradingClientKeepsItsListsItself) {
    mHost.mConfig.mClientType = EClientType::Trading;
    showMain();
    EXPECT_EQ(eventsOf([this] { EXPECT_TRUE(mGraph->slotAddSelfStock()); }),
              (Events{{4001, 0, 0, "SH600000", nullptr}}));
}

} // namespace
