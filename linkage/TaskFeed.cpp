#include "linkage/TaskFeed.h"

#include "host/services/CLinkageManager.h"

#include <QMetaObject>
#include <QThread>
#include <QTimer>

#include <utility>

namespace TC {

TaskFeed::TaskFeed(CLinkageManager &linkage) : mBond(SlotBond<TaskFeed>::make(this)) {
    mConnection = linkage.sigTaskChanged.connect(
        [this, bond = mBond, home = thread()](const std::vector<std::string> &stockKeys) {
            if (QThread::currentThread() == home) {
                Q_EMIT changed(stockKeys); // here it lives as long as it is connected
            } else {
                bond->with([&stockKeys](TaskFeed &feed) { feed.queue(stockKeys); });
            }
        });
}

TaskFeed::~TaskFeed() {
    mBond->end();
}

/// On a thread of the service, under the bond's lock.
void TaskFeed::queue(const std::vector<std::string> &stockKeys) {
    const bool isFirst = mUntold.empty();
    mUntold.insert(stockKeys.begin(), stockKeys.end());
    if (isFirst && !mUntold.empty()) {
        // The queued call carries nothing: what it is about stays under our own lock.
        QMetaObject::invokeMethod(this, "tellAfterInput", Qt::QueuedConnection);
    }
}

void TaskFeed::tellAfterInput() {
    QTimer::singleShot(0, this, [this] { tell(); });
}

void TaskFeed::tell() {
    std::set<std::string> untold;
    mBond->with([&untold](TaskFeed &feed) { std::swap(untold, feed.mUntold); });
    Q_EMIT changed({untold.begin(), untold.end()});
}

} // namespace TC
