#pragma once

#include "terminal/feed/FeedAddress.h"
#include "terminal/servers/LineState.h"

#include <functional>
#include <memory>

namespace terminal {

/// The terminal's way to a feed's server. It comes back by itself, with what is listened to, however often it is lost.
/// Any thread.
class FeedLine {
public:
    /// Takes a message; on a thread of the line.
    using Take = std::function<void(const QByteArray &bytes)>;
    /// Hears of every change of the state; on the line's own thread.
    using StateListener = std::function<void(const LineFailure &state)>;

    virtual ~FeedLine() = default;

    /// Goes to the server, and again when it is lost. Once.
    virtual void start(StateListener listener) = 0;
    /// Ends that. Nothing is called afterwards.
    virtual void stop() = 0;

    /// Takes the messages of a subject from now on, and after each loss of the server again. Answers an id.
    virtual int listen(const QByteArray &subject, Take take) = 0;
    /// Ends it; after it has returned `take` is not called any more. Not from a call of it.
    virtual void forget(int id) = 0;
    /// Hands out what the stream of minutes has of a subject, the oldest first, on the calling thread. Waits for the
    /// server; false when not all of it came.
    virtual bool readKept(const QByteArray &subject, const Take &take) = 0;
};

/// The line to a NATS server; null when the program was built without its library.
std::unique_ptr<FeedLine> makeNatsLine(const FeedAddress &address);

} // namespace terminal
