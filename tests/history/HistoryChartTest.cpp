// Charts over a server of history, with no running market beside it.

#ifdef TIMESHARE_WITH_POSTGRES

#include "terminal/app/ChartView.h"
#include "terminal/app/ControlRow.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/TerminalWindow.h"
#include "terminal/app/WallWindow.h"
#include "tests/history/PgHistoryFixture.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

using namespace terminal;
using tests::kDate;

namespace {

constexpr int kPositions = 241; // 240 minutes, and 09:30 in front of them
const QDate kEarlier(2025, 11, 20);
const QString kNoMarket = QStringLiteral("没有实时行情（没有给出 --feed），显示的是历史行情");

class HistoryChartTest : public tests::PgHistoryFixture {
protected:
    ~HistoryChartTest() override { qunsetenv("TIMESHARE_HISTORY_PASSWORD"); }
    /// A terminal with an empty store, on the Monday after both days.
    void openTerminal() {
        qputenv("TIMESHARE_HISTORY_PASSWORD", "reader-secret");
        TerminalSettings settings;
        settings.store = mFolder.filePath("history.db");
        settings.config = mFolder.filePath("config.json");
        settings.start = timeOf(QDate(2025, 11, 24), 600);
        settings.history = server()->url("reader");
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_NE(mServices, nullptr) << qPrintable(error);
    }
    static bool turns(const std::function<bool()> &holds) {
        return tests::eventually([&holds] {
            QCoreApplication::processEvents();
            return holds();
        });
    }
    static bool shows(const ChartView &view, const QDate &day) {
        return view.isComplete() && view.pointCount() == kPositions && view.isPastDay() && view.day() == day;
    }
    static QString trouble(const QWidget &window) {
        const auto *label = window.findChild<QLabel *>("trouble");
        return label->isVisible() ? label->text() : QString();
    }

    std::unique_ptr<TerminalServices> mServices;
};

} // namespace

TEST_F(HistoryChartTest, AChartIsFilledWhenItsDayComes) {
    ASSERT_EQ(load({"600000"}, {kEarlier, kDate}).reason, QString());
    openTerminal();
    TerminalWindow window(*mServices);
    window.resize(900, 600);
    window.show();
    const auto *view = window.findChild<ChartView *>();
    ASSERT_NE(view, nullptr);
    server()->freeze(); // the window is there and shows nothing yet
    window.showInstrument("SH600000", QDate());
    EXPECT_EQ(view->pointCount(), 0);
    server()->thaw();
    ASSERT_TRUE(turns([&] { return shows(*view, kDate); })) << "the newest, of itself";
    EXPECT_EQ(window.days()->count(), 2);
    EXPECT_TRUE(turns([&] { return trouble(window) == kNoMarket; }));
    EXPECT_FALSE(window.findChild<QPushButton *>("pause")->isEnabled()) << "there is nothing to stop";
    ASSERT_TRUE(window.showInstrument("SH600000", kEarlier));
    EXPECT_TRUE(turns([&] { return shows(*view, kEarlier); }));
}

TEST_F(HistoryChartTest, ADayThatWasChosenStaysWhenANewerOneComes) {
    ASSERT_EQ(load({"600000"}, {QDate(2025, 11, 19), kEarlier}).reason, QString());
    openTerminal();
    TerminalWindow window(*mServices);
    window.resize(900, 600);
    window.show();
    const auto *view = window.findChild<ChartView *>();
    window.showInstrument("SH600000", QDate());
    ASSERT_TRUE(turns([&] { return shows(*view, kEarlier); }));
    ASSERT_TRUE(window.showInstrument("SH600000", QDate(2025, 11, 19)));
    ASSERT_TRUE(turns([&] { return shows(*view, QDate(2025, 11, 19)); }));
    ASSERT_EQ(load({"600000"}, {kDate}).reason, QString());
    mServices->pastDays().want("SH600000", dayOf(QDate(2025, 11, 24)));
    ASSERT_TRUE(turns([&] { return window.days()->count() == 3; }));
    EXPECT_TRUE(turns([&] { return shows(*view, QDate(2025, 11, 19)); }));
    // The latest one is shown again: it goes on to what comes.
    ASSERT_TRUE(window.showInstrument("SH600000", QDate()));
    EXPECT_TRUE(turns([&] { return shows(*view, kDate); }));
}

TEST_F(HistoryChartTest, AWallShowsTheNewestDaysAndSaysThatThereIsNoMarket) {
    ASSERT_EQ(load({"600000", "600519"}, {kEarlier, kDate}).reason, QString());
    openTerminal();
    WallWindow wall(*mServices, 2);
    wall.resize(1200, 700);
    wall.show();
    server()->freeze(); // the store is empty yet
    wall.showFrom("SH600000");
    EXPECT_EQ(wall.views()[0]->pointCount(), 0);
    server()->thaw();
    ASSERT_EQ(wall.views()[0]->instrument(), QString("SH600000"));
    EXPECT_TRUE(turns([&] { return shows(*wall.views()[0], kDate); }));
    EXPECT_TRUE(turns([&] { return trouble(wall) == kNoMarket; }));
    server()->kill();
    mServices->pastDays().want("SH600519", dayOf(kDate));
    EXPECT_TRUE(turns([&] {
        return trouble(wall).startsWith("历史服务器连接不上（自 ") && trouble(wall).endsWith(kNoMarket);
    }));
    EXPECT_TRUE(shows(*wall.views()[0], kDate)) << "it goes on with what it has";
    ASSERT_TRUE(server()->restart());
    EXPECT_TRUE(turns([&] { return trouble(wall) == kNoMarket; }));
}

#endif
