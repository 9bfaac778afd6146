#include "tests/integration/TerminalFixture.h"

#include <QEventLoop>
#include <QLabel>

#include <chrono>
#include <map>
#include <thread>

#include <sys/syscall.h>
#include <unistd.h>

using namespace terminal;
using tests::TerminalFixture;

namespace {

constexpr int kSeconds = 3; ///< of a look
constexpr int kMostLooks = 60;

/// How often each thread of the process but the calling one has gone to sleep.
std::map<QString, qint64> sleepsOfThreads() {
    const QByteArray field = "voluntary_ctxt_switches:";
    const QString own = QString::number(::syscall(SYS_gettid));
    std::map<QString, qint64> sleeps;
    for (const QString &thread :
         QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(QStringLiteral("/proc/self/task/%1/status").arg(thread));
        if (thread == own || !status.open(QIODevice::ReadOnly)) {
            continue;
        }
        for (const QByteArray &line : status.readAll().split('\n')) {
            if (line.startsWith(field)) {
                sleeps[thread] = line.mid(field.size()).trimmed().toLongLong();
            }
        }
    }
    return sleeps;
}

/// How often threads were woken in a stretch of time, those that have ended left out.
qint64 wakeUpsIn(std::chrono::seconds time) {
    const std::map<QString, qint64> before = sleepsOfThreads();
    std::this_thread::sleep_for(time);
    qint64 wakeUps = 0;
    for (const auto &[thread, sleeps] : sleepsOfThreads()) {
        const auto known = before.find(thread);
        wakeUps += known == before.end() ? 1 : sleeps - known->second;
    }
    return wakeUps;
}

/// The fewest wake-ups of all threads in a look, of as many as it takes until there is none. The event loop runs meanwhile.
qint64 fewestWakeUps() {
    qint64 fewest = -1;
    QEventLoop loop;
    std::thread looking([&] {
        for (int i = 0; i < kMostLooks && fewest != 0; ++i) {
            const qint64 wakeUps = wakeUpsIn(std::chrono::seconds(kSeconds));
            fewest = fewest < 0 ? wakeUps : std::min(fewest, wakeUps);
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    looking.join();
    return fewest;
}

} // namespace

class IdleTest : public TerminalFixture {
protected:
    QString marketTime() const {
        for (const QLabel *label : mWindow->findChildren<QLabel *>()) {
            if (label->text().startsWith(QStringLiteral("市场时间"))) {
                return label->text();
            }
        }
        return {};
    }
};

// What is left is told within a minute: the clock of the status line goes on, and messages of other threads are looked at.
// So a few seconds of a minute without any thread waking are what has to be found.
TEST_F(IdleTest, NothingWakesWhileTheMarketIsClosed) {
    mServices->clock().setTime(timeOf(mToday, 16 * 60));
    mServices->clock().resume();
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(fewestWakeUps(), 0);
    EXPECT_EQ(marketTime().size(), QStringLiteral("市场时间 2026-11-20 16:00").size())
        << qPrintable(marketTime());
}

TEST_F(IdleTest, TheTimeOfATradedMarketHasSeconds) {
    ASSERT_TRUE(mWindow->showInstrument("SH600000"));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return marketTime() == QStringLiteral("市场时间 2026-11-20 10:30:00"); }, 10000));
    mServices->clock().setTime(timeOf(mToday, 12 * 60));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return marketTime() == QStringLiteral("市场时间 2026-11-20 12:00"); }, 10000))
        << "at noon: " << qPrintable(marketTime());
    mServices->clock().setTime(timeOf(mToday, 12 * 60 + 55));
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return marketTime() == QStringLiteral("市场时间 2026-11-20 12:55:00"); }, 10000));
}
