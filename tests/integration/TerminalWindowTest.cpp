#include "containers/CRealtimeMainWidget.h"
#include "host/toolkit/CUiResource.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/ImportDialog.h"
#include "tests/integration/TerminalFixture.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTextStream>

#include <cmath>

using namespace terminal;
using tests::TerminalFixture;

namespace {

/// Value range of a chart.
struct IndexRange {
    double max;
    double min;
};

class TerminalWindowTest : public TerminalFixture {
protected:
    static TC::CSmartKeyboardDialog &keyboard() { return *TC::CSmartKeyboardDialog::instance(); }
};

/// Rows of a column in which a colour stands.
QVector<int> rowsOf(const QImage &image, int column, const QColor &color) {
    QVector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(column, y) == color) {
            rows.append(y);
        }
    }
    return rows;
}

} // namespace

TEST_F(TerminalWindowTest, APastDayStandsOnTheScreenAsItIsStored) {
    const QDate day(2026, 11, 19);
    ASSERT_TRUE(mWindow->showInstrument("SH600000", day));
    ASSERT_TRUE(waitUntilComplete());
    const MinuteBars bars = mServices->exchange().dayBars("SH600000", dayOf(day));
    ASSERT_EQ(bars.size(), 241u);
    EXPECT_EQ(view().pointCount(), 241);
    EXPECT_EQ(view().day(), day);

    // The range as it has to be: as far up as down around the close of the day before.
    const double lastClose =
        TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose("SH600000", dayOf(day));
    const IndexRange range = [&] {
        const auto ranges = view().data()->getMaxMinMap();
        const auto pair = ranges.value(TC::CFormulaKey("SH600000", "REALTIME"));
        return IndexRange{pair.first, pair.second};
    }();
    EXPECT_NEAR(range.max - lastClose, lastClose - range.min, 1e-9);
    for (const MinuteBar &bar : bars) {
        ASSERT_LE(bar.price, range.max + 1e-9);
        ASSERT_GE(bar.price, range.min - 1e-9);
    }

    // The price part is the upper two thirds of the graph, less a margin of 3 rows above, 2 below and a column at either
    // side; its width stands for 240 minutes, its height for the range.
    view().uiParam()->mLinkageFlags = 1; // the user's trades would cover the line
    const QImage image = graphImage();
    const int split = static_cast<int>(2.0 * image.height() / 3.0 + 0.5);
    const QColor line = GZ::CUiResource::instance().getColor("ic_clr_index_line_1");
    int found = 0;
    for (int i = 1; i < 240; ++i) {
        const int column = 1 + static_cast<int>((image.width() - 2) / 240.0 * i);
        const double share = (range.max - bars[static_cast<size_t>(i)].price) / (range.max - range.min);
        const int row = 3 + static_cast<int>(std::lround(share * (split - 5)));
        for (const int drawn : rowsOf(image, column, line)) {
            if (std::abs(drawn - row) <= 1) {
                ++found;
                break;
            }
        }
    }
    EXPECT_GE(found, 230) << "of 239 minutes";
}

TEST_F(TerminalWindowTest, TheRunningDayShowsWhatHasHappenedAndGrowsByTheExchange) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_FALSE(view().isPastDay());
    EXPECT_EQ(view().day(), mToday);
    // 09:30 to 10:30 are 61 positions; the minute that has just begun may have its bar already.
    EXPECT_GE(view().pointCount(), 61);
    EXPECT_LE(view().pointCount(), 62);
    const QImage before = graphImage();
    mServices->clock().setTime(mNow + 30 * 60 * 1000);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view().pointCount() >= 91; }, 10000));
    EXPECT_LE(view().pointCount(), 92);
    EXPECT_NE(graphImage(), before);
    EXPECT_EQ(view().uiParam()->mDataCount, view().pointCount());
}

TEST_F(TerminalWindowTest, TypingOpensTheSmartKeyboardAndEnterPicksTheInstrument) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    QTest::keyClicks(mWindow.get(), "g");
    auto *edit = keyboard().findChild<QLineEdit *>();
    ASSERT_TRUE(keyboard().isVisible());
    EXPECT_EQ(edit->text(), "g");
    QTest::keyClicks(edit, "zmt"); // initials of 贵州茅台
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_FALSE(keyboard().isVisible());
    EXPECT_EQ(view().instrument(), "SH600519");
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_TRUE(mWindow->findChild<QPushButton *>("instrument")->text().startsWith("SH600519 "));
}

TEST_F(TerminalWindowTest, EscapeClosesTheSmartKeyboardAndTheChartStays) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    QTest::mouseClick(mWindow->findChild<QPushButton *>("instrument"), Qt::LeftButton);
    ASSERT_TRUE(keyboard().isVisible());
    QTest::keyClicks(keyboard().findChild<QLineEdit *>(), "600519");
    QTest::keyClick(keyboard().findChild<QLineEdit *>(), Qt::Key_Escape);
    EXPECT_FALSE(keyboard().isVisible());
    EXPECT_EQ(view().instrument(), "SH600000");
}

TEST_F(TerminalWindowTest, TheShortcutOfTheSmartKeyboardShowsTheIndex) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    QTest::keyClicks(mWindow.get(), "0");
    QTest::keyClicks(keyboard().findChild<QLineEdit *>(), "3");
    QTest::keyClick(keyboard().findChild<QLineEdit *>(), Qt::Key_Return);
    EXPECT_EQ(view().instrument(), "SH000001");
}

TEST_F(TerminalWindowTest, AnUnknownKeyIsToldWithTheNearestNames) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    EXPECT_FALSE(mWindow->showInstrument("SH60000X"));
    EXPECT_TRUE(mWindow->status().contains("SH60000X")) << qPrintable(mWindow->status());
    EXPECT_TRUE(mWindow->status().contains("SH600000")) << qPrintable(mWindow->status());
    EXPECT_EQ(view().instrument(), "SH600000");
}

TEST_F(TerminalWindowTest, TheArrowsWalkTheCrossLineAndEscapeTakesItAway) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000", QDate(2026, 11, 19)));
    ASSERT_TRUE(waitUntilComplete());
    QTest::keyClick(mWindow.get(), Qt::Key_Left);
    EXPECT_TRUE(view().main()->isShowCrossline());
    EXPECT_EQ(view().uiParam()->mCrossIndex, 240) << "the newest point";
    QTest::keyClick(mWindow.get(), Qt::Key_Left);
    EXPECT_EQ(view().uiParam()->mCrossIndex, 239);
    QTest::keyClick(mWindow.get(), Qt::Key_Home);
    EXPECT_EQ(view().uiParam()->mCrossIndex, 0);
    QTest::keyClick(mWindow.get(), Qt::Key_Right);
    EXPECT_EQ(view().uiParam()->mCrossIndex, 1);
    QTest::keyClick(mWindow.get(), Qt::Key_End);
    EXPECT_EQ(view().uiParam()->mCrossIndex, 240);
    QTest::keyClick(mWindow.get(), Qt::Key_Escape);
    EXPECT_FALSE(view().main()->isShowCrossline());
}

TEST_F(TerminalWindowTest, DownShowsMoreDaysUpToSixAndUpFewer) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    for (int days = 2; days <= 7; ++days) {
        QTest::keyClick(mWindow.get(), Qt::Key_Down);
        EXPECT_EQ(view().main()->getRealTimeWidget()->getGraphWidgets().size(), std::min(days, 6));
    }
    ASSERT_TRUE(waitUntilComplete());
    for (int days = 5; days >= 0; --days) {
        QTest::keyClick(mWindow.get(), Qt::Key_Up);
        EXPECT_EQ(view().main()->getRealTimeWidget()->getGraphWidgets().size(), std::max(days, 1));
    }
}

TEST_F(TerminalWindowTest, TheNumberOfFormulaPanesIsRemembered) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    mWindow->setFormulaPanes(3);
    EXPECT_EQ(view().formulaPanes(), 3);
    EXPECT_EQ(view().main()->getSubIndexWidgets()[1]->getIndexes(), QList<QString>{"MACD"});
    mWindow.reset();
    mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
    EXPECT_EQ(view().formulaPanes(), 3);
    mWindow->setFormulaPanes(-4);
    EXPECT_EQ(view().formulaPanes(), 0);
}

TEST_F(TerminalWindowTest, PanesThatComeAndGoTogetherAreDrawnInTheirLastSizes) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    for (const int panes : {5, 2, 4}) {
        mWindow->setFormulaPanes(panes);
        ASSERT_TRUE(waitUntilComplete());
        for (TC::CRealtimeGraphWidget *graph : mWindow->findChildren<TC::CRealtimeGraphWidget *>()) {
            if (graph->isVisible()) {
                const QImage shown = graph->grab().toImage();
                graph->getData()->redraw();
                EXPECT_EQ(graph->grab().toImage(), shown) << panes << " panes";
            }
        }
    }
}

TEST_F(TerminalWindowTest, WhatIsShownOfNewPanesIsDrawnAtOnce) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    mWindow->setFormulaPanes(0);
    ASSERT_TRUE(waitUntilComplete());
    const QImage alone = graphImage();
    mWindow->setFormulaPanes(3);
    const QImage among = graphImage();
    EXPECT_LT(among.height(), alone.height());
    view().graph()->getData()->redraw();
    EXPECT_EQ(graphImage(), among);
}

TEST_F(TerminalWindowTest, AUserDefinedIndexAndAPortfolioAreShownOnTheDaysOfTheirMembers) {
    const auto catalogue = mServices->store().catalogue();
    ASSERT_FALSE(catalogue->indexes.isEmpty());
    ASSERT_FALSE(catalogue->portfolios.isEmpty());
    for (const QString &key : {catalogue->indexes.firstKey(), catalogue->portfolios.firstKey()}) {
        ASSERT_TRUE(mWindow->showInstrument(key)) << qPrintable(key);
        EXPECT_EQ(view().uiParam()->getStock().toStdString(), key.toStdString());
        EXPECT_GT(mWindow->days()->count(), 20);
        EXPECT_EQ(view().day(), mToday);
    }
}

TEST_F(TerminalWindowTest, PageKeysGoThroughTheTradingDays) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    QTest::keyClick(mWindow.get(), Qt::Key_PageUp);
    EXPECT_EQ(view().day(), QDate(2026, 11, 19));
    EXPECT_TRUE(view().isPastDay());
    QTest::keyClick(mWindow.get(), Qt::Key_PageUp);
    EXPECT_EQ(view().day(), QDate(2026, 11, 18));
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    EXPECT_EQ(view().day(), mToday);
    EXPECT_FALSE(view().isPastDay());
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_LE(view().pointCount(), 62) << "the day so far again";
}

TEST_F(TerminalWindowTest, ADayWithoutBarsIsRefused) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    EXPECT_FALSE(mWindow->showInstrument("SH600000", QDate(2026, 11, 21)));
    EXPECT_TRUE(mWindow->status().contains("2026-11-21"));
    EXPECT_EQ(view().day(), mToday);
    EXPECT_FALSE(mWindow->showInstrument("XX1"));
}

TEST_F(TerminalWindowTest, SpacePausesTheExchangeAndLetsItGoOn) {
    ASSERT_TRUE(mServices->clock().isPaused());
    QTest::keyClick(mWindow.get(), Qt::Key_Space);
    EXPECT_FALSE(mServices->clock().isPaused());
    QTest::keyClick(mWindow.get(), Qt::Key_Space);
    EXPECT_TRUE(mServices->clock().isPaused());
}

TEST_F(TerminalWindowTest, AnImportedFileIsShown) {
    const QString path = mFolder.path() + "/bars.csv";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QTextStream out(&file);
    out << "symbol,exchange,datetime,open,high,low,close,volume,amount\n";
    for (int minute = 571; minute <= 690; ++minute) {
        const double price = 20.0 + (minute % 7) * 0.01;
        out << QStringLiteral("600999,SSE,2026-03-23 %1:%2:00,%3,%3,%3,%3,1000,%4\n")
                   .arg(minute / 60, 2, 10, QLatin1Char('0'))
                   .arg(minute % 60, 2, 10, QLatin1Char('0'))
                   .arg(price, 0, 'f', 2)
                   .arg(price * 1000, 0, 'f', 2);
    }
    out.flush();
    file.close();
    terminal::ImportDialog *dialog = mWindow->openImport({path});
    QTest::mouseClick(dialog->findChild<QPushButton *>("start"), Qt::LeftButton);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return view().instrument() == "SH600999" && view().isComplete(); }, 10000))
        << qPrintable(mWindow->status());
    EXPECT_EQ(view().day(), QDate(2026, 3, 23));
    EXPECT_EQ(view().pointCount(), 121) << "09:30 is a position of its own, before the first bar";
    EXPECT_EQ(mServices->search().exact("600999"), "SH600999");
}

TEST_F(TerminalWindowTest, TheThemeChangesEveryColourAndIsRemembered) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    const QImage dark = graphImage();
    mWindow->setThemeName("light");
    ASSERT_TRUE(waitUntilComplete());
    const QImage light = graphImage();
    EXPECT_GT(light.pixelColor(light.width() - 5, 5).lightness(),
              dark.pixelColor(dark.width() - 5, 5).lightness());
    EXPECT_EQ(mServices->config().value("theme"), "light");
    mWindow->setThemeName("dark");
}

TEST_F(TerminalWindowTest, AConfigurationThatCannotBeWrittenIsToldInTheStatusLine) {
    const QString path = mFolder.path() + "/config.json";
    // A folder in place of the file, which may just be on its way to the disk once more.
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::remove(path), QDir().mkpath(path); }, 60000));
    ASSERT_TRUE(mWindow->showInstrument("SH600519"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return mWindow->status().contains("config.json"); }, 60000))
        << qPrintable(mWindow->status());
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    EXPECT_TRUE(mWindow->status().contains("config.json")) << "it is no trouble of the instrument";
}

TEST_F(TerminalWindowTest, ADamagedConfigurationIsToldAtTheStart) {
    mWindow.reset();
    mServices.reset();
    QFile file(mFolder.path() + "/config.json");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"theme\": ");
    file.close();
    terminal::TerminalSettings settings;
    settings.store = mFolder.path() + "/market.db";
    settings.config = file.fileName();
    settings.start = mNow;
    QString error;
    mServices = terminal::TerminalServices::open(settings, error);
    ASSERT_TRUE(mServices) << qPrintable(error);
    mWindow = std::make_unique<terminal::TerminalWindow>(*mServices);
    ASSERT_TRUE(mWindow->showInstrument("SH600519"));
    EXPECT_TRUE(mWindow->status().contains("config.json.damaged")) << qPrintable(mWindow->status());
    const auto &listed = mServices->messages().messages();
    ASSERT_TRUE(QTest::qWaitFor([&listed] { return !listed.isEmpty(); }, 10000));
    EXPECT_EQ(listed.first().error.formula, "配置");
    EXPECT_TRUE(listed.first().error.text.contains("config.json.damaged"));
}
