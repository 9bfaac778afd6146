#include "terminal/feed/NatsSpentMessages.h"

#include <nats/nats.h>

namespace terminal {
namespace {

constexpr size_t kMostHeld = 256; ///< messages, some 80 KB when they are of single points
constexpr qint64 kMostBytes = 1 << 20; ///< what they carry; one message may be as large

} // namespace

void NatsSpentMessages::add(natsMsg *message) {
    bool isFull = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        mHeld.push_back(message);
        mBytes += natsMsg_GetDataLength(message);
        isFull = mHeld.size() >= kMostHeld || mBytes >= kMostBytes;
    }
    if (isFull) {
        giveBack();
    }
}

void NatsSpentMessages::giveBack() {
    std::vector<natsMsg *> held;
    {
        std::lock_guard<std::mutex> hold(mLock);
        held.swap(mHeld);
        mBytes = 0;
    }
    for (natsMsg *message : held) {
        natsMsg_Destroy(message);
    }
}

size_t NatsSpentMessages::held() const {
    std::lock_guard<std::mutex> hold(mLock);
    return mHeld.size();
}

} // namespace terminal
