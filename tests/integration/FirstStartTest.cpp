// A start with a store that has no days yet: the window is there while they are made.

#include "tests/integration/TerminalFixture.h"

#include "terminal/app/FillBehind.h"

#include <QTimer>

#include <functional>
#include <vector>

using namespace terminal;

namespace {

class FirstStartTest : public ::testing::Test {
protected:
    const QDate mToday{2026, 11, 20};
    const qint64 mNow = timeOf(mToday, 630);

    void open(bool leavesFill) {
        TerminalSettings settings;
        settings.store = mFolder.filePath("market.db");
        settings.config = mFolder.filePath("config.json");
        settings.start = mNow;
        settings.leavesFill = leavesFill;
        QString error;
        mServices = TerminalServices::open(settings, error);
        ASSERT_TRUE(mServices) << qPrintable(error);
        mServices->clock().setTime(mNow);
        mServices->clock().pause();
    }
    qint64 rowOf(const QString &key) { return mServices->store().catalogue()->find(key)->id; }

    QTemporaryDir mFolder;
    std::unique_ptr<TerminalServices> mServices;
};

/// Sees whether a window is painted while days are lacking.
class PaintWatch : public QObject {
public:
    PaintWatch(QWidget &window, TerminalServices &services, qint64 instrument)
        : mServices(services), mInstrument(instrument) {
        window.installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override {
        mSeen = mSeen || (event->type() == QEvent::Paint && mServices.store().days(mInstrument).isEmpty());
        return false;
    }
    bool hasSeen() const { return mSeen; }

private:
    TerminalServices &mServices;
    const qint64 mInstrument; ///< its row in the store
    bool mSeen = false;
};

} // namespace

TEST_F(FirstStartTest, TheWindowIsPaintedBeforeTheDaysAreThere) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    EXPECT_TRUE(mServices->isFillDue());
    EXPECT_TRUE(mServices->store().days(rowOf("SH600000")).isEmpty());
    TerminalWindow window(*mServices);
    window.resize(1200, 760);
    const PaintWatch watch(window, *mServices, rowOf("SH600000"));
    window.show();
    EXPECT_EQ(fillBehind(*mServices), QString());
    EXPECT_TRUE(watch.hasSeen());
    EXPECT_FALSE(mServices->isFillDue());
    EXPECT_TRUE(window.showInstrument("SH600000")) << qPrintable(window.status());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.view()->isComplete(); }, 10000));
    EXPECT_GT(window.view()->pointCount(), 0);
}

TEST_F(FirstStartTest, TheMarketIsTheOneThatIsFilledAtOnce) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    const int today = dayOf(mToday);
    mServices->feed().dayBars("SH600000", today); // of days that are not there yet
    ASSERT_EQ(fillBehind(*mServices), QString());
    CMarketStore other;
    ASSERT_EQ(other.open(mFolder.filePath("other.db")), QString());
    ASSERT_EQ(fillStore(other, mNow), QString());
    for (const Instrument &instrument : other.catalogue()->instruments) {
        const qint64 row = rowOf(instrument.key());
        const QVector<int> days = other.days(instrument.id);
        ASSERT_EQ(mServices->store().days(row), days) << qPrintable(instrument.key());
        EXPECT_TRUE(mServices->store().bars(row, days.first()) == other.bars(instrument.id, days.first()))
            << qPrintable(instrument.key());
    }
    SimulatedClock clock(mNow, 1.0);
    clock.pause();
    SimulatedExchange exchange(other, clock);
    clock.setTime(mNow);
    mServices->clock().setTime(mNow);
    mServices->clock().pause();
    EXPECT_FALSE(exchange.dayBars("SH600000", today).empty());
    EXPECT_TRUE(mServices->feed().dayBars("SH600000", today) == exchange.dayBars("SH600000", today));
}

TEST_F(FirstStartTest, WhatWasAskedBeforeTheDaysWereThereIsAskedAgain) {
    const std::set<std::string> accounts{"80010001", "80020002"};
    const auto told = [&] {
        int deals = 0;
        for (const auto &account : mServices->trade().getDealDetails(dayOf(mToday), "SH600000", accounts)) {
            deals += static_cast<int>(account.second.size());
        }
        return std::pair(
            TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail("SH600000")->mLastClose, deals);
    };
    ASSERT_NO_FATAL_FAILURE(open(false));
    const auto [close, deals] = told();
    EXPECT_GT(close, 0.0);
    EXPECT_LT(close, TC::kUnsetValue);
    EXPECT_GT(deals, 0);
    mServices.reset();
    QFile::remove(mFolder.filePath("market.db"));
    ASSERT_NO_FATAL_FAILURE(open(true));
    TerminalWindow window(*mServices);
    window.show();
    window.showInstrument("SH600000");
    EXPECT_FALSE(told().first < TC::kUnsetValue);
    ASSERT_EQ(fillBehind(*mServices), QString());
    EXPECT_EQ(told(), std::pair(close, deals));
}

TEST_F(FirstStartTest, TheDaysHaveTheirWholeWidth) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    TerminalWindow window(*mServices);
    window.show();
    ASSERT_EQ(fillBehind(*mServices), QString());
    ASSERT_TRUE(window.showInstrument("SH600000"));
    QApplication::processEvents();
    EXPECT_GE(window.days()->width(), window.days()->sizeHint().width());
    EXPECT_GT(window.days()->sizeHint().width(),
              window.days()->fontMetrics().horizontalAdvance(window.days()->currentText()));
}

TEST_F(FirstStartTest, AStoppedFillIsMadeGoodByTheNextStart) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    EXPECT_NE(mServices->fill([](int done, int) { return done < 3; }), QString());
    EXPECT_TRUE(mServices->store().days(rowOf("SH600000")).isEmpty());
    mServices.reset();
    ASSERT_NO_FATAL_FAILURE(open(false));
    EXPECT_FALSE(mServices->isFillDue());
    EXPECT_EQ(mServices->store().days(rowOf("SH600000")).size(), kFilledDays);
    mServices.reset();
    ASSERT_NO_FATAL_FAILURE(open(true)); // nothing is lacking
    EXPECT_FALSE(mServices->isFillDue());
}

TEST_F(FirstStartTest, TheUserMayActWhileTheDaysAreMade) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    TerminalWindow window(*mServices);
    window.show();
    const std::vector<std::function<void()>> actions{
        [&] { window.showInstrument("SZ000001"); },
        [&] { window.showInstrument("CFFEXIF2612", mToday.addDays(-7)); },
        [&] { window.setFormulaPanes(4); },
        [&] { QTest::keyClick(&window, Qt::Key_PageDown); },
        [&] { QTest::keyClick(&window, Qt::Key_End); },
        [&] { QTest::keyClick(&window, Qt::Key_Up); },
        [&] { QTest::keyClick(&window, Qt::Key_Space); },
        [&] { window.setThemeName("light"); },
        [&] { window.setTradesShown(false); },
        [&] { window.setTradesShown(true); },
        [&] { window.setFormulasShown(true); },
        [&] { window.startReplay(mNow / 1000 - 3600, mNow / 1000); },
        [&] { mServices->clock().setTime(mNow); },
        [&] { window.resize(480, 320); },
        [&] { window.resize(1200, 760); },
    };
    size_t done = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] { actions[done++ % actions.size()](); });
    timer.start(2);
    EXPECT_EQ(fillBehind(*mServices), QString());
    timer.stop();
    EXPECT_GE(done, actions.size()) << "the window was held up";
    mServices->clock().setTime(mNow);
    window.resize(1200, 760);
    window.setThemeName("dark");
    EXPECT_TRUE(window.showInstrument("SH600000")) << qPrintable(window.status());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.view()->isComplete(); }, 10000));
    EXPECT_GT(window.view()->pointCount(), 0);
}

TEST_F(FirstStartTest, AWindowThatIsClosedMeanwhileEndsTheFill) {
    ASSERT_NO_FATAL_FAILURE(open(true));
    TerminalWindow window(*mServices);
    window.show();
    QTimer::singleShot(20, &window, &QWidget::close); // the last window: the application quits
    // In the application's own loop, whose end makes good the quitting for the tests after this one.
    QTimer::singleShot(0, &window, [&] { fillBehind(*mServices); });
    QApplication::exec();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(mServices->store().days(rowOf("SH600000")).isEmpty())
        << "it was stopped, and nothing half is kept";
}
