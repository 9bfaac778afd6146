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

/// Carries events of other threads to the user-interface thread, in the order of their arrival.
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
    /// Hands over what is there. Called once for every event, so that an event loop inside a handler goes on with
    /// the events after it.
    Q_INVOKABLE void drain();
    /// Takes the oldest event off; false when there is none. `more` tells whether others wait behind it.
    bool take(Entry &entry, bool &more);
    static void handOver(const Entry &entry);

    std::mutex mLock; ///< guards mEntries; never held while an event is handled
    std::deque<Entry> mEntries;
};

} // namespace GZ
