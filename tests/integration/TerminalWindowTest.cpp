#include "host/toolkit/CUiResource.h"
#include "terminal/app/ImportDialog.h"
#include "tests/integration/TerminalFixture.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QComboBox>
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

class TerminalWindowTest : public TerminalFixture {};

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
    EXPECT_EQ(pane().pointCount(), 241);
    EXPECT_EQ(pane().day(), day);

    // The range as it has to be: as far up as down around the close of the day before.
    const double lastClose =
        TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose("SH600000", dayOf(day));
    const IndexRange range = [&] {
        const auto ranges = pane().data()->getMaxMinMap();
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
    EXPECT_FALSE(pane().isPastDay());
    EXPECT_EQ(pane().day(), mToday);
    // 09:30 to 10:30 are 61 positions; the minute that has just begun may have its bar already.
    EXPECT_GE(pane().pointCount(), 61);
    EXPECT_LE(pane().pointCount(), 62);
    const QImage before = graphImage();
    mServices->clock().setTime(mNow + 30 * 60 * 1000);
    ASSERT_TRUE(QTest::qWaitFor([&] { return pane().pointCount() >= 91; }, 10000));
    EXPECT_LE(pane().pointCount(), 92);
    EXPECT_NE(graphImage(), before);
    EXPECT_EQ(pane().uiParam()->mDataCount, pane().pointCount());
}

TEST_F(TerminalWindowTest, TypingInitialsAndEnterChangesTheInstrument) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    const QString code = "600519";
    ASSERT_TRUE(mServices->store().catalogue()->find("SH" + code)) << "the made-up market has it";
    QTest::keyClicks(mWindow.get(), code.left(1));
    QTest::keyClicks(mWindow->box(), code.mid(1));
    ASSERT_TRUE(mWindow->box()->matches()->isVisible());
    QTest::keyClick(mWindow->box(), Qt::Key_Return);
    EXPECT_EQ(pane().instrument(), "SH" + code);
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(pane().title()->data().code, "SH" + code);
    EXPECT_FALSE(mWindow->box()->matches()->isVisible());
}

TEST_F(TerminalWindowTest, AnUnknownTextIsToldWithTheNearestNames) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    mWindow->box()->setFocus();
    mWindow->box()->clear();
    QTest::keyClicks(mWindow->box(), "SH60000X");
    QTest::keyClick(mWindow->box(), Qt::Key_Return);
    EXPECT_TRUE(mWindow->status().contains("SH60000X")) << qPrintable(mWindow->status());
    EXPECT_TRUE(mWindow->status().contains("SH600000")) << qPrintable(mWindow->status());
    EXPECT_EQ(pane().instrument(), "SH600000");
    QTest::keyClick(mWindow->box(), Qt::Key_Escape);
    EXPECT_TRUE(mWindow->box()->text().startsWith("SH600000"));
}

TEST_F(TerminalWindowTest, PageKeysGoThroughTheTradingDays) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    QTest::keyClick(mWindow.get(), Qt::Key_PageUp);
    EXPECT_EQ(pane().day(), QDate(2026, 11, 19));
    EXPECT_TRUE(pane().isPastDay());
    QTest::keyClick(mWindow.get(), Qt::Key_PageUp);
    EXPECT_EQ(pane().day(), QDate(2026, 11, 18));
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    QTest::keyClick(mWindow.get(), Qt::Key_PageDown);
    EXPECT_EQ(pane().day(), mToday);
    EXPECT_FALSE(pane().isPastDay());
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_LE(pane().pointCount(), 62) << "the day so far again";
}

TEST_F(TerminalWindowTest, ADayWithoutBarsIsRefused) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    EXPECT_FALSE(mWindow->showInstrument("SH600000", QDate(2026, 11, 21)));
    EXPECT_TRUE(mWindow->status().contains("2026-11-21"));
    EXPECT_EQ(pane().day(), mToday);
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
        QTest::qWaitFor([&] { return pane().instrument() == "SH600999" && pane().isComplete(); }, 10000))
        << qPrintable(mWindow->status());
    EXPECT_EQ(pane().day(), QDate(2026, 3, 23));
    EXPECT_EQ(pane().pointCount(), 121) << "09:30 is a position of its own, before the first bar";
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
    QFile::remove(mFolder.path() + "/config.json");
    ASSERT_TRUE(QDir().mkpath(mFolder.path() + "/config.json")); // a folder in place of the file
    ASSERT_TRUE(mWindow->showInstrument("SH600519"));
    EXPECT_TRUE(mWindow->status().contains("config.json")) << qPrintable(mWindow->status());
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
}
