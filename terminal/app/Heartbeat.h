#pragma once

#include <QBasicTimer>
#include <QObject>

namespace terminal {

/// Beats a moment after something has happened in the event loop of the user interface, and not at all while nothing does,
/// but for one beat after each rest, for what other threads may have to tell: a program that has nothing to do sleeps.
///
/// What a beat itself brings about at once does not count, nor do the timers of other heartbeats. On the user-interface
/// thread.
class Heartbeat : public QObject {
    Q_OBJECT
public:
    static constexpr int kRest =
        60000; ///< milliseconds from one beat to the next while nothing happens, likewise

    static constexpr int kInterval =
        1000; ///< milliseconds from what happens to the beat, when nothing else is said

    explicit Heartbeat(int interval = kInterval, int rest = kRest, QObject *parent = nullptr);

    bool eventFilter(QObject *receiver, QEvent *event) override;

Q_SIGNALS:
    void beat();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    const int mInterval;
    const int mRest;
    QBasicTimer mTimer;
    bool mIsSoon = false; ///< the timer runs for `interval`, not for a rest
};

} // namespace terminal
