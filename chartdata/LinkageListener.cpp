#include "chartdata/LinkageListener.h"

#include "chartdata/UiThread.h"
#include "host/services/CLinkageManager.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace TC {

struct LinkageListener::Bond {
    explicit Bond(Hear hear) : hear(std::move(hear)) {}

    const Hear hear;
    std::recursive_mutex lock; ///< guards the following, and is held while something is told
    bool isCut = false;
    std::mutex untoldLock; ///< guards the following; nothing else is locked under it
    std::vector<std::string> untold; ///< instruments that have changed on other threads
    std::atomic<bool> hasUntold{false};

    void take(const std::vector<std::string> &instruments) {
        if (isUserInterfaceThread()) {
            const std::lock_guard<std::recursive_mutex> hold(lock);
            if (!isCut) {
                hear(instruments);
            }
            return;
        }
        const std::lock_guard<std::mutex> hold(untoldLock);
        for (const std::string &instrument : instruments) {
            if (std::count(untold.begin(), untold.end(), instrument) == 0) {
                untold.push_back(instrument);
            }
        }
        hasUntold = !untold.empty();
    }
};

LinkageListener::LinkageListener(CLinkageManager &linkage, Hear hear)
    : mBond(std::make_shared<Bond>(std::move(hear))) {
    mConnection = linkage.sigLinkageChanged.connect(
        [bond = mBond](const std::vector<std::string> &instruments) { bond->take(instruments); });
}

LinkageListener::~LinkageListener() {
    cut();
}

void LinkageListener::cut() {
    mConnection.disconnect();
    const std::lock_guard<std::recursive_mutex> hold(mBond->lock);
    mBond->isCut = true;
}

std::vector<std::string> LinkageListener::takeUntold() {
    if (!mBond->hasUntold) {
        return {};
    }
    const std::lock_guard<std::mutex> hold(mBond->untoldLock);
    mBond->hasUntold = false;
    return std::exchange(mBond->untold, {});
}

} // namespace TC
