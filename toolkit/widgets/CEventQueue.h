#pragma once

#include "host/toolkit/CEventDeliverer.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace GZ {

/// A participant as others hold it. Whoever is about to call the participant holds `mHandling`, so that retire()
/// on another thread waits; on the same thread it does not, and a handler may destroy whom it likes.
struct CEventDeliverer::Token {
    std::recursive_mutex mHandling;
    CEventDeliverer *mParticipant; ///< null once it has left the bus
};

/// Carries events of other threads to the user-interface thread, in the order of their arrival. All that have piled up
/// until then are handed over at once; those that come meanwhile wait behind the repaints that are due by then, so that a
/// flood of events does not keep the screen from being painted.
class CEventQueue : public QObject {
    Q_OBJECT
public:
    static CEventQueue &instance();
    /// Whether the caller runs on the user-interface thread; false as well when there is no application.
    static bool isUserInterfaceThread();

    /// Any thread; waits for nothing but the short lock of the queue.
    void post(const std::weak_ptr<CEventDeliverer::Token> &sender, int event, int first, int second,
              const QString &text, void *data);

private:
    struct Entry {
        std::weak_ptr<CEventDeliverer::Token> mSender;
        int mEvent;
        int mFirst;
        int mSecond;
        QString mText;
        void *mData;
    };

    CEventQueue();
    bool event(QEvent *event) override;
    void call(int priority);
    /// Hands over what is there.
    void drain();
    /// Takes the oldest event off; false when there is none. With others behind it drain() is called for, which an
    /// event loop inside the handler goes on with.
    bool take(Entry &entry);
    static void handOver(const Entry &entry);

    std::mutex mLock; ///< guards what follows; never held while an event is handled
    std::deque<Entry> mEntries;
    bool mIsCalled = false; ///< drain() is to come
    bool mIsDraining = false;
};

} // namespace GZ
