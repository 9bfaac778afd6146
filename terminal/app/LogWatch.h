#pragma once

#include "terminal/app/Heartbeat.h"
#include "terminal/formula/FormulaError.h"

#include <QObject>

#include <functional>

namespace terminal {

/// Tells once that lines of the log are being lost. On the user-interface thread.
class LogWatch : public QObject {
    Q_OBJECT
public:
    using Count = std::function<qint64()>;

    /// `lost` counts the lines that were lost since the start of the program; `sink` hears of them.
    LogWatch(Count lost, FormulaErrorSink sink);
    void look();

private:
    const Count mLost;
    const FormulaErrorSink mSink;
    bool mIsTold = false;
    Heartbeat mHeartbeat;
};

} // namespace terminal
