#pragma once

#include "terminal/feeder/NatsSink.h"
#include "tests/feed/LiveFeedFixture.h"
#include "tests/feed/NatsServer.h"

namespace tests {

/// A real server with a feed's side and a terminal's.
class NatsFixture : public LiveFeedFixture {
protected:
    ~NatsFixture() override {
        mFeed.reset();
        mLine.reset();
        for (const char *name :
             {"TIMESHARE_FEED_USER", "TIMESHARE_FEED_PASSWORD", "TIMESHARE_FEED_TOKEN", "TIMESHARE_FEED_CA",
              "TIMESHARE_FEED_CREDENTIALS", "TIMESHARE_FEED_CERTIFICATE", "TIMESHARE_FEED_KEY"}) {
            qunsetenv(name);
        }
    }
    /// Where the server is, with the secrets of the environment.
    static terminal::FeedAddress addressOf(const QString &url) {
        terminal::FeedAddress address;
        EXPECT_EQ(terminal::readAddress(url, address).toStdString(), "");
        return address;
    }
    void openLine(const QString &url, const terminal::LiveFeed::Times &times = {}) {
        mLine = terminal::makeNatsLine(addressOf(url));
        openFeed(*mLine, times);
    }
    void openSink(const QString &url, int copies = 1) {
        const terminal::FeedAddress address = addressOf(url);
        terminal::LineFailure failure;
        ASSERT_TRUE(eventually([&] {
            return (mSink = terminal::NatsSink::open(address, failure, copies)) != nullptr;
        })) << failure.reason.toStdString();
    }
    bool publish(const QString &key, const terminal::WireBar &record) {
        const QByteArray bytes = encodeWire(record);
        const bool isSent = record.kind == terminal::WireKind::Minute
                                ? mSink->keep(terminal::minuteSubject(key), bytes)
                                : mSink->send(terminal::changeSubject(key), bytes);
        return isSent && mSink->confirm();
    }

    NatsServer mServer;
    std::unique_ptr<terminal::NatsSink> mSink;
    std::unique_ptr<terminal::FeedLine> mLine;
};

} // namespace tests
