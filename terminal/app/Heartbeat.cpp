#include "terminal/app/Heartbeat.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScopedValueRollback>

namespace terminal {
namespace {

bool isAnyBeating = false; ///< of the user-interface thread

} // namespace

Heartbeat::Heartbeat(int interval, int rest, QObject *parent)
    : QObject(parent), mInterval(interval), mRest(rest) {
    qApp->installEventFilter(this);
    mTimer.start(mRest, this);
}

bool Heartbeat::eventFilter(QObject *receiver, QEvent *event) {
    const bool isBeat = event->type() == QEvent::Timer && qobject_cast<Heartbeat *>(receiver);
    if (!mIsSoon && !isAnyBeating && !isBeat) {
        mIsSoon = true;
        mTimer.start(mInterval, this);
    }
    return false;
}

void Heartbeat::timerEvent(QTimerEvent * /*event*/) {
    mIsSoon = false;
    mTimer.start(mRest, this);
    const QScopedValueRollback<bool> beating(isAnyBeating, true);
    Q_EMIT beat();
}

} // namespace terminal
