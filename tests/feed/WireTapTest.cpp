// What goes over the wire for what is shown, byte by byte.

#ifdef TIMESHARE_WITH_NATS

#include "tests/feed/NatsFixture.h"
#include "tests/feed/RecordingProxy.h"

#include <QUrl>

using namespace terminal;
using tests::eventually;

namespace {

constexpr int kRecordSize = 104;
constexpr int kInstruments = 60;
constexpr int kMinutes = 20;

/// What a recording of the server's side holds: messages and bytes of their contents, by subject.
struct Sent {
    std::map<std::string, int> messages;
    std::map<std::string, qint64> bytes;
};

/// Reads the lines of the protocol: MSG or HMSG, the subject, ids, and last the size of what follows.
Sent sentIn(const QByteArray &recording) {
    Sent sent;
    for (int at = 0, end = 0; (end = recording.indexOf("\r\n", at)) >= 0; at = end + 2) {
        const QList<QByteArray> words = recording.mid(at, end - at).split(' ');
        if (words[0] == "MSG" || words[0] == "HMSG") {
            const int size = words.last().toInt();
            ++sent.messages[words[1].toStdString()];
            sent.bytes[words[1].toStdString()] += size;
            end += 2 + size;
        }
    }
    return sent;
}

class WireTapTest : public tests::NatsFixture {
protected:
    static QString keyOf(int number) { return QStringLiteral("SH%1").arg(600000 + number); }
    static QString urlOf(const tests::RecordingProxy &proxy) {
        return QStringLiteral("nats://127.0.0.1:%1").arg(proxy.port());
    }
    /// A minute of each instrument of the market, its change and then the minute as it is kept.
    void publishMinute(int number) {
        const int minute = 570 + number;
        for (int i = 0; i < kInstruments; ++i) {
            const auto sequence = static_cast<quint64>(number);
            mSink->send(changeSubject(keyOf(i)), encodeWire(changeOf(sequence, minute, 10.0 + number)));
            mSink->keep(minuteSubject(keyOf(i)), encodeWire(keptOf(sequence, minute, 10.0 + number)));
        }
        ASSERT_TRUE(mSink->confirm());
    }
};

} // namespace

TEST_F(WireTapTest, OfAWholeMarketOnlyWhatIsShownIsSent) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    openLine(urlOf(proxy));
    listen(keyOf(7));
    listen(keyOf(11));
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    for (int number = 1; number <= kMinutes; ++number) {
        publishMinute(number);
    }
    ASSERT_TRUE(eventually([&] {
        return isWhole() && heard(keyOf(7)).size() == kMinutes && heard(keyOf(11)).size() == kMinutes;
    }));
    const std::set<std::string> changes{"md.tick.SH600007", "md.tick.SH600011"};
    const std::set<std::string> minutes{"md.min.SH600007", "md.min.SH600011"};
    const auto countOf = [](const Sent &sent, const std::string &subject) {
        const auto found = sent.messages.find(subject);
        return found == sent.messages.end() ? 0 : found->second;
    };
    ASSERT_TRUE(eventually([&] { // the last ones are on their way
        const Sent sent = sentIn(proxy.toClient());
        return std::all_of(changes.begin(), changes.end(),
                           [&](const std::string &subject) { return countOf(sent, subject) == kMinutes; }) &&
               std::all_of(minutes.begin(), minutes.end(),
                           [&](const std::string &subject) { return countOf(sent, subject) >= kMinutes; });
    }));
    const Sent sent = sentIn(proxy.toClient());
    for (const auto &[subject, bytes] : sent.bytes) {
        const bool isMinute = minutes.count(subject) > 0;
        if (isMinute || changes.count(subject) > 0) {
            EXPECT_EQ(bytes, countOf(sent, subject) * kRecordSize) << subject;
            // The first change has the stream read once more.
            EXPECT_LE(countOf(sent, subject), isMinute ? 2 * kMinutes : kMinutes) << subject;
        } else {
            EXPECT_EQ(subject.rfind("_INBOX.", 0), 0u) << subject << ": neither shown nor an answer";
        }
    }
    EXPECT_FALSE(proxy.toServer().contains("SH600008"));
    EXPECT_EQ(proxy.toServer().count("SUB md.tick."), 2);
    EXPECT_EQ(proxy.toServer().count("SUB md.min."), 2);
}

TEST_F(WireTapTest, TheMorningOfOneInstrumentIsReadAndNoOther) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    for (int number = 1; number <= kMinutes; ++number) {
        publishMinute(number);
    }
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    openLine(urlOf(proxy));
    listen(keyOf(7));
    ASSERT_TRUE(eventually([&] { return isWhole() && heard(keyOf(7)).size() == kMinutes; }));
    const Sent sent = sentIn(proxy.toClient());
    ASSERT_EQ(sent.messages.count("md.min.SH600007"), 1u);
    EXPECT_EQ(sent.messages.at("md.min.SH600007"), kMinutes);
    EXPECT_EQ(sent.bytes.at("md.min.SH600007"), kMinutes * kRecordSize);
    for (const auto &[subject, count] : sent.messages) {
        EXPECT_TRUE(subject == "md.min.SH600007" || subject.rfind("_INBOX.", 0) == 0) << subject;
    }
    EXPECT_FALSE(proxy.toClient().contains("SH600008"));
}

TEST_F(WireTapTest, WhatIsForgottenIsSentNoMore) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    LiveFeed::Times times;
    times.interest = 0;
    openLine(urlOf(proxy), times);
    listen(keyOf(7));
    const int gone = listen(keyOf(11));
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    mFeed->unsubscribe(gone);
    ASSERT_TRUE(eventually([&] { return proxy.toServer().count("UNSUB ") >= 2; }));
    ASSERT_TRUE(eventually([&] { return mFeed->followed() == 1; }));
    publishMinute(1);
    ASSERT_TRUE(eventually([&] { return heard(keyOf(7)).size() == 1; }));
    EXPECT_EQ(sentIn(proxy.toClient()).messages.count("md.tick.SH600011"), 0u);
}

#endif
