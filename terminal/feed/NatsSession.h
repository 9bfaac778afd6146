#pragma once

#include "terminal/feed/FeedAddress.h"
#include "terminal/servers/LineState.h"

#include <memory>

struct __natsConnection;
struct __jsCtx;

namespace terminal {

/// One connection to a NATS server, from connect to its first failure: it does not come back by itself. Any thread.
class NatsSession {
public:
    /// Goes to the first of the servers that is there, and waits for each for two seconds at most. Null when there is none, for the
    /// last one's reason.
    static std::unique_ptr<NatsSession> open(const FeedAddress &address, const char *name,
                                             LineFailure &failure);
    ~NatsSession();
    NatsSession(const NatsSession &) = delete;
    NatsSession &operator=(const NatsSession &) = delete;

    bool isOpen() const;
    __natsConnection *connection() const { return mConnection; }

private:
    explicit NatsSession(__natsConnection *connection) : mConnection(connection) {}

    __natsConnection *const mConnection;
};

} // namespace terminal
