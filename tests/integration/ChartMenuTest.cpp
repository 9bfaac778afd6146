// The menu of the chart in the terminal's window.

#include "containers/CRealtimeMainWidget.h"
#include "containers/CRealtimeWidget.h"
#include "host/windows/CAddSelfStockDialog.h"
#include "host/windows/CWatchPlateWidget.h"
#include "statistics/CRealtimeStatisticDialog.h"
#include "terminal/app/QuoteListDialog.h"
#include "terminal/app/ReplayPanel.h"
#include "terminal/market/TransactionTape.h"
#include "tests/integration/TerminalFixture.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QTreeWidget>

using namespace terminal;

namespace {

QAction *entryOf(const QMenu &menu, const QString &path) {
    const QString head = path.section('/', 0, 0);
    for (QAction *action : menu.actions()) {
        if (action->text() == head) {
            return head == path ? action : entryOf(*action->menu(), path.section('/', 1));
        }
    }
    return nullptr;
}

class ChartMenu : public tests::TerminalFixture {
protected:
    void showStock(const char *key) {
        ASSERT_TRUE(mWindow->showInstrument(QString::fromLatin1(key)));
        ASSERT_TRUE(waitUntilComplete());
    }
    void duringMenu(TC::CRealtimeGraphWidget *graph, const std::function<void(QMenu &)> &look) {
        QTimer watch;
        bool seen = false;
        QObject::connect(&watch, &QTimer::timeout, mWindow.get(), [&] {
            const QPointer<QMenu> menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (menu) {
                watch.stop();
                seen = true;
                look(*menu);
            }
            if (menu) {
                menu->close();
            }
        });
        watch.start(0);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {10, 10}, graph->mapToGlobal(QPoint(10, 10)));
        QCoreApplication::sendEvent(graph, &event);
        EXPECT_TRUE(seen);
    }
    void choose(const QString &path, TC::CRealtimeGraphWidget *graph = nullptr) {
        duringMenu(graph ? graph : view().graph(), [&](QMenu &menu) {
            QAction *entry = entryOf(menu, path);
            ASSERT_NE(entry, nullptr) << qPrintable(path);
            entry->trigger();
        });
    }
    bool has(const QString &path) {
        bool found = false;
        duringMenu(view().graph(), [&](QMenu &menu) { found = entryOf(menu, path) != nullptr; });
        return found;
    }
    QStringList overlaid() {
        QStringList keys;
        for (const TC::CInstrumentDetailPtr &detail : view().uiParam()->getAllAddStockList()) {
            keys.append(TC::getDetailQsKey(detail));
        }
        return keys;
    }
    template <class Dialog> Dialog *dialog(const char *name) {
        return mWindow->findChild<Dialog *>(QLatin1String(name));
    }
    static QStringList keysOf(const QTreeWidget &rows) {
        QStringList keys;
        for (int i = 0; i < rows.topLevelItemCount(); ++i) {
            keys.append(rows.topLevelItem(i)->text(0));
        }
        keys.sort();
        return keys;
    }
};

TEST_F(ChartMenu, TheIndexOfASectorIsOverlaidAndTakenAway) {
    showStock("SH600000");
    choose(QStringLiteral("叠加板块指数/申万一级"));
    EXPECT_EQ(overlaid(), QStringList{"BKZS801780"});
    choose(QStringLiteral("叠加板块指数/申万三级"));
    EXPECT_EQ(overlaid(), QStringList());
    showStock("SZ002594"); // has no sector
    choose(QStringLiteral("叠加板块指数/申万一级"));
    EXPECT_EQ(overlaid(), QStringList());
}

TEST_F(ChartMenu, ABondAndItsShareAreOverlaid) {
    showStock("SH601009");
    choose(QStringLiteral("自动叠加转债正股品种"));
    EXPECT_EQ(overlaid(), QStringList{"SH113050"});
    showStock("SH113050");
    EXPECT_EQ(overlaid(), QStringList{"SH601009"});
    showStock("SH510300");
    EXPECT_FALSE(has(QStringLiteral("自动叠加转债正股品种")));
}

TEST_F(ChartMenu, APastDayOffersTheCounterpartOfHongKong) {
    showStock("SH601318");
    EXPECT_FALSE(has(QStringLiteral("AH股叠加")));
    ASSERT_TRUE(mWindow->showInstrument("SH601318", mToday.addDays(-1)));
    ASSERT_TRUE(waitUntilComplete());
    choose(QStringLiteral("AH股叠加"));
    EXPECT_EQ(overlaid(), QStringList{"HK02318"});
}

TEST_F(ChartMenu, AFormulaIsPutOverTheChartAndTakenOff) {
    showStock("SH600000");
    choose(QStringLiteral("叠加指标/主图叠加/BOLL"));
    EXPECT_TRUE(view().data()->hasFormula("BOLL"));
    ASSERT_TRUE(waitUntilComplete());
    choose(QStringLiteral("取消叠加指标/BOLL"));
    EXPECT_FALSE(view().data()->hasFormula("BOLL"));
}

TEST_F(ChartMenu, TheFormulaOfAPaneIsReplacedAndShown) {
    mWindow->setFormulaPanes(1);
    showStock("SH600000");
    TC::CRealtimeGraphWidget *pane = view().main()->getSubIndexWidgets().first()->getGraphWidgets().first();
    choose(QStringLiteral("更改副图指标/摆动指标/RSI"), pane);
    EXPECT_EQ(pane->getIndexes(), QList<QString>{"RSI"});
    EXPECT_TRUE(waitUntilComplete());
}

TEST_F(ChartMenu, AReplacedFormulaIsThatOfAllDays) {
    mWindow->setFormulaPanes(2);
    showStock("SH600000");
    view().main()->scaleView(false);
    ASSERT_TRUE(waitUntilComplete());
    const auto panes = view().main()->getSubIndexWidgets();
    const auto formulas = [&](int pane) {
        QList<QString> all;
        for (TC::CRealtimeGraphWidget *graph : panes[pane]->getGraphWidgets()) {
            all += graph->getIndexes();
        }
        return all;
    };
    ASSERT_EQ(formulas(0), (QList<QString>{"KDJ", "KDJ"}));
    choose(QStringLiteral("更改副图指标/摆动指标/RSI"), panes[0]->getGraphWidgets().last()); // the older day
    EXPECT_EQ(formulas(0), (QList<QString>{"RSI", "RSI"}));
    choose(QStringLiteral("更改副图指标/摆动指标/CCI"), panes[0]->getGraphWidgets().first());
    EXPECT_EQ(formulas(0), (QList<QString>{"CCI", "CCI"}));
    EXPECT_EQ(formulas(1), (QList<QString>{"MACD", "MACD"}));
    EXPECT_TRUE(waitUntilComplete());
}

TEST_F(ChartMenu, ANewPaneIsCountedByTheBoxOfPanes) {
    mWindow->setFormulaPanes(5);
    showStock("SH600000");
    choose(QStringLiteral("添加指标"));
    auto *panes = dialog<QComboBox>("panes");
    EXPECT_TRUE(QTest::qWaitFor([&] { return panes->currentData().toInt() == 6; }, 5000));
    EXPECT_EQ(mServices->config().value("panes"), QStringLiteral("6"));
}

TEST_F(ChartMenu, TheSectorsOfAnInstrumentAreListedWithTheirMembers) {
    showStock("SH600000");
    choose(QStringLiteral("所属板块分析"));
    auto *sectors = dialog<QuoteListDialog>("sector_dialog");
    ASSERT_NE(sectors, nullptr);
    EXPECT_TRUE(sectors->isVisible());
    EXPECT_EQ(sectors->names()->count(), 3);
    EXPECT_EQ(sectors->names()->itemText(0), QStringLiteral("申万1级 银行"));
    EXPECT_EQ(keysOf(*sectors->rows()), (QStringList{"SH600000", "SH601009", "SZ000001"}));
    const QTreeWidget &rows = *sectors->rows();
    for (int i = 0; i < rows.topLevelItemCount(); ++i) {
        const QString key = rows.topLevelItem(i)->text(0);
        const MinuteBars bars = mServices->exchange().dayBars(key, dayOf(mToday));
        ASSERT_FALSE(bars.empty());
        EXPECT_EQ(rows.topLevelItem(i)->text(2), QString::number(bars.back().price, 'f', 2)) << qPrintable(key);
    }
    const auto change = [&](int row) { return rows.topLevelItem(row)->text(3).remove('%').toDouble(); };
    EXPECT_GE(change(0), change(1));
    EXPECT_GE(change(1), change(2));
    emit sectors->rows()->itemActivated(rows.topLevelItem(0), 0);
    EXPECT_EQ(view().instrument(), rows.topLevelItem(0)->text(0));
}

TEST_F(ChartMenu, AnInstrumentOfNoSectorIsToldSo) {
    showStock("SZ002594");
    choose(QStringLiteral("所属板块分析"));
    EXPECT_EQ(mWindow->status(), QStringLiteral("SZ002594 比亚迪 不属于任何板块"));
    EXPECT_EQ(dialog<QuoteListDialog>("sector_dialog"), nullptr);
}

TEST_F(ChartMenu, TheUsersListsAreShownAndChanged) {
    showStock("SH600000");
    constexpr int kInMenuAndDialog = 2; // event loops: an answer before the dialog's own one runs is not heard
    constexpr int kBetweenTries = 10; // ms
    constexpr int kAllTries = 30000; // ms
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, mWindow.get(), [&] {
        auto *add = qobject_cast<TC::CAddSelfStockDialog *>(QApplication::activeModalWidget());
        if (add && QThread::currentThread()->loopLevel() >= kInMenuAndDialog) {
            add->accept(); // refused, and tried again, while the trades of the morning are being written
        }
    });
    answer.start(kBetweenTries);
    choose(QStringLiteral("加入自选股"));
    answer.stop();
    mWindow->showSelfStocks();
    auto *lists = dialog<QuoteListDialog>("self_stocks_dialog");
    ASSERT_NE(lists, nullptr);
    EXPECT_EQ(keysOf(*lists->rows()), QStringList{"SH600000"});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return mServices->selfStocks()
                .addStocks(QStringLiteral("自选股"), {"CD100001", "TZZH1", "SH600519"})
                .isEmpty();
        },
        kAllTries));
    EXPECT_EQ(keysOf(*lists->rows()), (QStringList{"CD100001", "SH600000", "SH600519", "TZZH1"}));
    lists->rows()->setCurrentItem(lists->rows()->findItems("SH600519", Qt::MatchExactly).first());
    const QStringList left{"CD100001", "SH600000", "TZZH1"};
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            QTest::mouseClick(lists->findChild<QPushButton *>("remove"), Qt::LeftButton);
            return keysOf(*lists->rows()) == left;
        },
        kAllTries));
}

TEST_F(ChartMenu, AFormulaIsExportedToAFile) {
    showStock("SH600000");
    choose(QStringLiteral("导出公式"));
    EXPECT_EQ(mWindow->status(), QStringLiteral("主图只有系统公式，没有可导出的公式"));
    const QString path = mFolder.path() + "/macd.lua";
    mWindow->exportFormula("MACD", path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), mServices->catalogue().source("MACD").mText);
    EXPECT_TRUE(mWindow->status().endsWith(path));
    mWindow->exportFormula("MACD", mFolder.path() + "/none/macd.lua");
    EXPECT_TRUE(mWindow->status().contains(QStringLiteral("无法写入")));
    mWindow->exportFormula("GONE", path);
    EXPECT_EQ(mWindow->status(), QStringLiteral("GONE 没有可导出的内容"));
}

TEST_F(ChartMenu, DataIsDownloadedForTheInstrument) {
    showStock("SH600000");
    choose(QStringLiteral("下载数据"));
    EXPECT_GT(mServices->formulas().downloadsUnderWay(), 0);
    mServices->formulas().stopDownloads();
}

TEST_F(ChartMenu, TheTradeDataStaysWithTheNextInstrument) {
    showStock("SH600000");
    choose(QStringLiteral("VWAP成交均价"));
    EXPECT_TRUE(view().data()->hasFormula(QStringLiteral("VWAP成交均价")));
    EXPECT_TRUE(waitUntilComplete());
    choose(QStringLiteral("过滤重复股票"));
    EXPECT_TRUE(mWindow->status().contains(QStringLiteral("已过滤重复股票")));
    showStock("SHFEAU2612");
    EXPECT_TRUE(view().data()->hasFormula(QStringLiteral("VWAP成交均价")));
    choose(QStringLiteral("VWAP成交均价"));
    EXPECT_FALSE(view().data()->hasFormula(QStringLiteral("VWAP成交均价")));
}

TEST_F(ChartMenu, AccountsOfTheMenuAreThoseOfTheTradesButton) {
    mWindow->setTradesShown(false);
    showStock("SH600000");
    choose(QStringLiteral("显示交易数据/全选"));
    EXPECT_TRUE(view().areTradesShown());
    auto *trades = dialog<QPushButton>("trades");
    EXPECT_TRUE(QTest::qWaitFor([&] { return trades->isChecked(); }, 5000));
}

// Replay

class ChartReplay : public ChartMenu {
protected:
    /// Marks the minutes from 09:45 to 10:00 with the right button and chooses in the menu.
    void chooseInRegion(const QString &entry) {
        TC::CRealtimeGraphWidget *graph = view().graph();
        const int left = view().uiParam()->getXAxisByIndex(15);
        const int right = view().uiParam()->getXAxisByIndex(30);
        view().uiParam()->mCrossShown = true;
        const auto send = [&](QEvent::Type type, int x, Qt::MouseButton button, Qt::MouseButtons held) {
            QMouseEvent event(type, QPoint(x, 50), graph->mapToGlobal(QPoint(x, 50)), button, held, {});
            QCoreApplication::sendEvent(graph, &event);
        };
        send(QEvent::MouseButtonPress, left, Qt::RightButton, Qt::RightButton);
        send(QEvent::MouseMove, right, Qt::NoButton, Qt::RightButton);
        send(QEvent::MouseButtonRelease, right, Qt::RightButton, Qt::NoButton);
        choose(entry);
    }
    ReplayPanel *panel() { return dialog<ReplayPanel>("replay_panel"); }
    qint64 replayMinute() { return (mServices->replay().replayTime() - timeOf(mToday, 0)) / 60000; }
};

TEST_F(ChartReplay, StatisticsOfARegionShowItsTransactions) {
    showStock("SH600000");
    chooseInRegion(QStringLiteral("时段统计"));
    auto *statistics = mWindow->findChild<TC::CRealtimeStatisticDialog *>();
    ASSERT_NE(statistics, nullptr);
    EXPECT_TRUE(statistics->isVisible());
    EXPECT_EQ(statistics->windowTitle(), QStringLiteral("浦发银行 时段统计"));
    const auto *plate = statistics->findChild<TC::CWatchPlateWidget *>();
    ASSERT_TRUE(QTest::qWaitFor([&] { return plate->rowCount() > 0; }, 10000));
    const Ticks known =
        TransactionTape(mServices->store(), mServices->exchange())
            .between(QStringLiteral("SH600000"), timeOf(mToday, 585), timeOf(mToday, 600), 1000000);
    ASSERT_EQ(static_cast<size_t>(plate->rowCount()), known.size());
    EXPECT_GT(known.size(), 16u); // more than the bars
    EXPECT_EQ(plate->rowTexts(0)[1], QString::number(known.front().price, 'f', 2));
    // The clock of the program's zone, which the terminal's own start sets to that of the exchange.
    const QDateTime first = QDateTime::fromMSecsSinceEpoch(known.front().time);
    EXPECT_EQ(plate->rowTexts(0)[0], first.toString(QStringLiteral("hh:mm:ss")));
}

TEST_F(ChartReplay, ARegionIsPlayedAgainAndTheMarketComesBack) {
    showStock("SH600000");
    const int points = view().pointCount();
    EXPECT_GT(points, 40);
    chooseInRegion(QStringLiteral("显示行情回放界面"));
    ASSERT_NE(panel(), nullptr);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_TRUE(view().isReplay());
    mServices->replay().setPace(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return replayMinute() == 600; }, 10000)) << replayMinute();
    EXPECT_EQ(view().pointCount(), 31);
    QTest::mouseClick(panel()->findChild<QPushButton *>("replay_end"), Qt::LeftButton);
    EXPECT_FALSE(view().isReplay());
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().pointCount() == points; }, 10000)) << view().pointCount();
}

TEST_F(ChartReplay, APanelThatWasClosedComesBackByTheMenu) {
    showStock("SH600000");
    chooseInRegion(QStringLiteral("显示行情回放界面"));
    panel()->hide();
    choose(QStringLiteral("显示行情回放控制面板"));
    EXPECT_TRUE(panel()->isVisible());
}

TEST_F(ChartReplay, ARegionOfTheReplayIsPlayedInItsPlace) {
    showStock("SH600000");
    mWindow->startReplay(timeOf(mToday, 570) / 1000, timeOf(mToday, 620) / 1000);
    mServices->replay().setThousandRange(timeOf(mToday, 570), timeOf(mToday, 620));
    mServices->replay().setPaused(true);
    chooseInRegion(QStringLiteral("生成千档区域范围"));
    EXPECT_TRUE(view().isReplay());
    EXPECT_GE(replayMinute(), 585);
}

TEST_F(ChartReplay, AnotherInstrumentEndsTheReplay) {
    showStock("SH600000");
    chooseInRegion(QStringLiteral("显示行情回放界面"));
    showStock("SH600519");
    EXPECT_FALSE(view().isReplay());
    EXPECT_FALSE(panel()->isVisible());
}

} // namespace
