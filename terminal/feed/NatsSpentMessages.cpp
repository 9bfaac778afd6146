#include "terminal/feed/NatsSpentMessages.h"

#include <nats/nats.h>

namespace terminal {
namespace {

constexpr size_t kMostHeld = 256; ///< messages, some 80 KB

} // namespace

void NatsSpentMessages::add(natsMsg *message) {
    bool isFull = false;
    {
        std::lock_guard<std::mutex> hold(mLock);
        mHeld.push_back(message);
        isFull = mHeld.size() >= kMostHeld;
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
    }
    for (natsMsg *message : held) {
        natsMsg_Destroy(message);
    }
}

} // namespace terminal
