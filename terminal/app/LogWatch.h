#pragma once

#include "terminal/formula/FormulaError.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace terminal {

/// Tells once that lines of the log are being lost. On the user-interface thread.
class LogWatch : public QObject {
    Q_OBJECT
public:
    using Count = std::function<qint64()>;

    static constexpr int kLook = 1000; ///< milliseconds between looks

    /// `lost` counts the lines that were lost since the start of the program; `sink` hears of them.
    LogWatch(Count lost, FormulaErrorSink sink);
    void look();

private:
    const Count mLost;
    const FormulaErrorSink mSink;
    bool mIsTold = false;
    QTimer mTimer;
};

} // namespace terminal
