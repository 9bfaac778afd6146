#pragma once

#include <QByteArray>

namespace terminal {

/// Where records are published.
class FeedSink {
public:
    virtual ~FeedSink() = default;
    /// To those who listen now.
    virtual bool send(const QByteArray &subject, const QByteArray &bytes) = 0;
    /// To those who listen now and to the stream.
    virtual bool keep(const QByteArray &subject, const QByteArray &bytes) = 0;
    /// Waits until the server has all that was sent and kept. False when it may lack something.
    virtual bool confirm() = 0;
};

} // namespace terminal
