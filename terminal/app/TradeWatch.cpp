#include "terminal/app/TradeWatch.h"

#include "host/services/CLinkageManager.h"

#include <mutex>
#include <utility>

namespace terminal {

/// A signal may be running on a thread of the service while the watch goes: disconnecting does not wait for it, so it
/// reaches the watch through this.
struct TradeWatch::Bond {
    std::mutex lock;
    TradeWatch *watch = nullptr; ///< null when it has gone
    QSet<QString> untold;
};

TradeWatch::TradeWatch(QObject *parent) : QObject(parent), mBond(std::make_shared<Bond>()) {
    mBond->watch = this;
    const auto hear = [bond = mBond](const std::vector<std::string> &instruments) {
        const std::lock_guard<std::mutex> hold(bond->lock);
        const bool isFirst = bond->untold.isEmpty();
        for (const std::string &instrument : instruments) {
            bond->untold.insert(QString::fromStdString(instrument));
        }
        if (bond->watch && isFirst && !bond->untold.isEmpty()) {
            // The queued call carries nothing: what it is about stays under our own lock.
            QMetaObject::invokeMethod(bond->watch, "tell", Qt::QueuedConnection);
        }
    };
    TC::CLinkageManager &trade = TC::CSingletonT<TC::CLinkageManager>::instance();
    mLinkage = trade.sigLinkageChanged.connect(hear);
    mTasks = trade.sigTaskChanged.connect(hear);
}

TradeWatch::~TradeWatch() {
    const std::lock_guard<std::mutex> hold(mBond->lock);
    mBond->watch = nullptr;
}

void TradeWatch::tell() {
    QSet<QString> instruments;
    {
        const std::lock_guard<std::mutex> hold(mBond->lock);
        std::swap(instruments, mBond->untold);
    }
    Q_EMIT changed(instruments);
}

} // namespace terminal
