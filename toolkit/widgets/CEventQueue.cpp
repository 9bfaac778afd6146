#include "toolkit/widgets/CEventQueue.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QThread>

namespace GZ {

CEventQueue::CEventQueue() {
    if (const QCoreApplication *application = QCoreApplication::instance()) {
        moveToThread(application->thread());
    }
}

CEventQueue &CEventQueue::instance() {
    // Lives as long as the process: a service thread may deliver until the very end.
    static auto *queue = new CEventQueue;
    return *queue;
}

bool CEventQueue::isUserInterfaceThread() {
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

void CEventQueue::post(const std::weak_ptr<CEventDeliverer::Token> &sender, int event, int first, int second,
                       const QString &text, void *data) {
    std::lock_guard<std::mutex> hold(mLock);
    mEntries.push_back({sender, event, first, second, text, data});
    if (!mIsCalled) {
        call(mIsDraining ? Qt::LowEventPriority : Qt::NormalEventPriority);
    }
}

/// Has drain() called. The call carries nothing: what it is about stays here.
void CEventQueue::call(int priority) {
    mIsCalled = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), priority);
}

bool CEventQueue::event(QEvent *event) {
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    drain();
    return true;
}

bool CEventQueue::take(Entry &entry) {
    std::lock_guard<std::mutex> hold(mLock);
    if (mEntries.empty()) {
        return false;
    }
    entry = std::move(mEntries.front());
    mEntries.pop_front();
    if (mEntries.empty()) {
        return true;
    }
    if (!mIsCalled) {
        call(Qt::LowEventPriority);
    } else {
        // An event loop inside the handler would not look again at a call from before it began.
        QAbstractEventDispatcher::instance()->wakeUp();
    }
    return true;
}

void CEventQueue::drain() {
    std::size_t count = 0; // what comes meanwhile has a call of its own
    {
        std::lock_guard<std::mutex> hold(mLock);
        count = mEntries.size();
        mIsCalled = false;
        mIsDraining = true;
    }
    Entry entry;
    for (; count > 0 && take(entry); --count) {
        handOver(entry);
    }
    std::lock_guard<std::mutex> hold(mLock);
    mIsDraining = false;
    // The call for what has come meanwhile goes behind the repaints that the handlers have asked for.
    QCoreApplication::removePostedEvents(this, QEvent::User);
    mIsCalled = false;
    if (!mEntries.empty()) {
        call(Qt::LowEventPriority);
    }
}

void CEventQueue::handOver(const Entry &entry) {
    // Both stay on the bus until the event has been handled, unless the handler itself destroys them. The tokens
    // outlive the locks on them.
    const std::shared_ptr<CEventDeliverer::Token> sender = entry.mSender.lock();
    if (!sender) {
        return;
    }
    std::lock_guard<std::recursive_mutex> holdSender(sender->mHandling);
    CEventDeliverer *next = sender->mParticipant ? sender->mParticipant->nextParticipant() : nullptr;
    if (!next) {
        return;
    }
    const std::shared_ptr<CEventDeliverer::Token> receiver = next->mToken;
    std::lock_guard<std::recursive_mutex> holdReceiver(receiver->mHandling);
    if (receiver->mParticipant) {
        CEventDeliverer::handOver(*receiver->mParticipant, entry.mEvent, entry.mFirst, entry.mSecond,
                                  entry.mText, entry.mData);
    }
}

} // namespace GZ
