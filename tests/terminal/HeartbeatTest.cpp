#include "terminal/app/Heartbeat.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using terminal::Heartbeat;

namespace {

/// Lets the event loop run until it has been left alone for some milliseconds, with one event at the end of them.
void rest(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace

TEST(Heartbeat, BeatsOnceAfterWhatHasHappened) {
    Heartbeat heart(20);
    int beats = 0;
    QObject::connect(&heart, &Heartbeat::beat, [&beats] { ++beats; });
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::postEvent(qApp, new QEvent(QEvent::User));
    }
    ASSERT_TRUE(QTest::qWaitFor([&beats] { return beats > 0; }, 5000));
    beats = 0;
    rest(200); // what is left of before
    beats = 0;
    rest(400); // begins after the event that ended the rest before
    EXPECT_LE(beats, 1);
}

TEST(Heartbeat, SeveralDoNotKeepEachOtherAwake) {
    Heartbeat one(10);
    Heartbeat other(15);
    int beats = 0;
    const auto count = [&beats] {
        ++beats;
        QEvent made(QEvent::User); // what a beat brings about at once
        QCoreApplication::sendEvent(qApp, &made);
    };
    QObject::connect(&one, &Heartbeat::beat, count);
    QObject::connect(&other, &Heartbeat::beat, count);
    rest(200);
    beats = 0;
    rest(600);
    EXPECT_LE(beats, 2) << "one each for the end of the rest before";
}
