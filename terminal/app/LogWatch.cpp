#include "terminal/app/LogWatch.h"

#include <utility>

namespace terminal {

LogWatch::LogWatch(Count lost, FormulaErrorSink sink) : mLost(std::move(lost)), mSink(std::move(sink)) {
    connect(&mHeartbeat, &Heartbeat::beat, this, &LogWatch::look);
}

void LogWatch::look() {
    const qint64 lost = mIsTold ? 0 : mLost();
    if (lost > 0) {
        mIsTold = true;
        mSink({tr("日志"), 0, tr("日志写不进去，已丢失 %1 行；请检查磁盘空间").arg(lost)});
    }
}

} // namespace terminal
