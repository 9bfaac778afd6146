#include "terminal/formula/FormulaCosts.h"

namespace terminal {

void FormulaCosts::note(const QString &formula, bool isLong) {
    std::lock_guard<std::mutex> hold(mLock);
    mLong[formula] = isLong;
}

WorkLane FormulaCosts::firstLane(const QString &formula, WorkLane wanted) const {
    std::lock_guard<std::mutex> hold(mLock);
    const auto known = mLong.constFind(formula);
    if (known == mLong.constEnd()) {
        return wanted;
    }
    const WorkLane whenShort = wanted == WorkLane::First ? WorkLane::Quick : wanted;
    return *known ? WorkLane::Slow : whenShort;
}

} // namespace terminal
