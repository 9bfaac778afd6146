#pragma once

#include "terminal/feed/NatsSession.h"
#include "terminal/feeder/FeedSink.h"

#include <memory>

namespace terminal {

/// A NATS server with the stream of minutes, which is made when it is not there. It works until its first failure; then a
/// new one is made. One thread.
class NatsSink : public FeedSink {
public:
    /// Null when the server is not there or has no streams, for the reason that is told.
    /// The stream has so many copies when it is made.
    static std::unique_ptr<NatsSink> open(const FeedAddress &address, LineFailure &failure, int copies = 1);
    ~NatsSink() override;

    bool send(const QByteArray &subject, const QByteArray &bytes) override;
    bool keep(const QByteArray &subject, const QByteArray &bytes) override;
    bool confirm() override;

private:
    struct Receipts;

    explicit NatsSink(std::unique_ptr<NatsSession> session) : mSession(std::move(session)) {}
    QString openStream(int copies);

    std::unique_ptr<NatsSession> mSession;
    __jsCtx *mStreams = nullptr;
    Receipts *mReceipts = nullptr;
    quint64 mKept = 0; ///< messages given to the stream
};

} // namespace terminal
