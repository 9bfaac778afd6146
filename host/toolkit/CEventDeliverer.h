#pragma once

#include "host/Export.h"

#include <QString>

#include <memory>

class QWidget;

namespace GZ {

/// A participant of the event bus. Events are numbered and travel upwards: whoever answers that it did not consume an
/// event, and did not pass it on itself, lets it travel on to the next participant.
///
/// On the user-interface thread deliverEvent is synchronous. On any other thread it queues the event to the
/// user-interface thread and returns at once, without waiting for anything. A queued event holds its sender and
/// receiver weakly: when either has gone by the time it is due, it is dropped with whatever its pointer pointed
/// at. A participant that may be destroyed on another thread calls retire() first thing in its destructor.
class TIMESHARE_EXPORT CEventDeliverer {
public:
    /// `next` hears of what this participant delivers. It may go before this one does.
    explicit CEventDeliverer(CEventDeliverer *next = nullptr);
    virtual ~CEventDeliverer();
    CEventDeliverer(const CEventDeliverer &) = delete;
    CEventDeliverer &operator=(const CEventDeliverer &) = delete;

    /// Hands the event to handleEvent of the next participant up the chain. True when it was consumed, and
    /// always false from a thread other than the user-interface one.
    bool deliverEvent(int event, int first, int second, const QString &text, void *data);

    /// Receives an event; true when it was consumed. Unless overridden, passes it on up the chain.
    virtual bool handleEvent(int event, int first, int second, QString text, void *data);

    /// Hands an event to every participant below a widget, the widget included, from the top down, whether or not
    /// one takes it; none passes it on up the chain. User-interface thread.
    static void broadcast(QWidget *root, int event, int first, int second, const QString &text, void *data);

protected:
    /// The next participant up the chain, null at its end. User-interface thread.
    virtual CEventDeliverer *nextParticipant() const;
    /// Leaves the bus. Waits for a queued event of this participant that is being handled just now.
    void retire();

private:
    friend class CEventQueue;
    struct Token;
    /// Lets a participant handle an event, and those above it when it neither consumed it nor passed it on.
    static bool handOver(CEventDeliverer &receiver, int event, int first, int second, const QString &text,
                         void *data);
    std::shared_ptr<Token> mToken;
    std::weak_ptr<Token> mNext;
};

} // namespace GZ
