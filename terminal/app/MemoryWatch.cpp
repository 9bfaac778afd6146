#include "terminal/app/MemoryWatch.h"

#include "terminal/app/ProgramGuard.h"
#include "terminal/threads/SmallHeaps.h"

#include <utility>

namespace terminal {

MemoryWatch::MemoryWatch(FormulaErrorSink sink, int pause)
    : mSink(std::move(sink)), mPause(pause), mNext(pause) {
    connect(&mHeartbeat, &Heartbeat::beat, this, &MemoryWatch::look);
}

void MemoryWatch::look() {
    if (!mIsTold && isMemoryShort()) {
        mIsTold = true;
        mSink({QObject::tr("内存"), 0, QObject::tr("系统内存不足，请关闭其他程序，并尽快重新启动本程序")});
    }
    if (mNext.hasExpired()) {
        mNext.setRemainingTime(mPause);
        giveBackFreeMemory();
    }
}

} // namespace terminal
