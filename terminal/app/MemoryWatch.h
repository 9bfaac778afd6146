#pragma once

#include "terminal/app/Heartbeat.h"
#include "terminal/formula/FormulaError.h"

#include <QDeadlineTimer>
#include <QObject>

namespace terminal {

/// Tells once that the system is short of memory, and gives back what is free in the heaps, at most once in a pause and not while
/// nothing happens: what has been made and freed between pieces that stay would be kept for good. On the user-interface
/// thread.
class MemoryWatch : public QObject {
    Q_OBJECT
public:
    static constexpr int kPause = 60000; ///< milliseconds

    explicit MemoryWatch(FormulaErrorSink sink, int pause = kPause);
    void look();

private:
    const FormulaErrorSink mSink;
    const int mPause;
    QDeadlineTimer mNext;
    bool mIsTold = false;
    Heartbeat mHeartbeat;
};

} // namespace terminal
