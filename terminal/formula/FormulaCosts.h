#pragma once

#include "terminal/threads/WorkLanes.h"

#include <QHash>
#include <QString>

#include <mutex>

namespace terminal {

/// Which formulas are known to run long, so that a new request of one starts on the right lane. Any thread.
class FormulaCosts {
public:
    /// The last run of a formula was long or short.
    void note(const QString &formula, bool isLong);
    /// Where the first run of a request belongs, when `wanted` is where that of a formula belongs which has not run.
    WorkLane firstLane(const QString &formula, WorkLane wanted) const;

private:
    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, bool> mLong; ///< by name; a formula that is not there has not run
};

} // namespace terminal
