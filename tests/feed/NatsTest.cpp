// The line and the sink over a real server.

#ifdef TIMESHARE_WITH_NATS

#include "tests/feed/NatsFixture.h"

#include <QJsonDocument>
#include <arpa/inet.h>
#include <sys/socket.h>

using namespace terminal;
using tests::eventually;

namespace {

class NatsTest : public tests::NatsFixture {
protected:
    /// What the server's monitor says of the terminal's connection, with its subscriptions.
    QByteArray connections() {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_port = htons(static_cast<uint16_t>(mServer.monitorPort()));
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const QByteArray question = "GET /connz?subs=1 HTTP/1.0\r\n\r\n";
        QByteArray answer;
        if (connect(socket, reinterpret_cast<const sockaddr *>(&place), sizeof place) == 0 &&
            write(socket, question.constData(), static_cast<size_t>(question.size())) == question.size()) {
            char bytes[4096];
            for (ssize_t size = 0; (size = read(socket, bytes, sizeof bytes)) > 0;) {
                answer.append(bytes, static_cast<int>(size));
            }
        }
        close(socket);
        return answer.mid(answer.indexOf("\r\n\r\n") + 4);
    }
    std::set<std::string> terminalSubjects() {
        std::set<std::string> subjects;
        const QJsonObject all = QJsonDocument::fromJson(connections()).object();
        for (const auto &connection : all["connections"].toArray()) {
            if (connection.toObject()["name"] == QLatin1String("timeshare-terminal")) {
                for (const auto &subject : connection.toObject()["subscriptions_list"].toArray()) {
                    if (!subject.toString().startsWith("_INBOX")) { // answers to questions
                        subjects.insert(subject.toString().toStdString());
                    }
                }
            }
        }
        return subjects;
    }
};

} // namespace

TEST_F(NatsTest, AMorningComesFromTheStreamAndTheRestLive) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    Bars whole;
    for (int minute = 571; minute < 691; ++minute) {
        ASSERT_TRUE(
            mSink->keep(minuteSubject("SH600000"), encodeWire(keptOf(minute - 570, minute, minute * 0.01))));
        whole.push_back(barOf(minute, minute * 0.01));
    }
    ASSERT_TRUE(mSink->confirm());
    openLine(mServer.url());
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole() && heard("SH600000") == whole; }));
    whole.push_back(barOf(691, 7.0));
    ASSERT_TRUE(publish("SH600000", changeOf(121, 691, 7.0)));
    EXPECT_TRUE(eventually([&] { return heard("SH600000") == whole; }));
    EXPECT_EQ(text(), "");
}

TEST_F(NatsTest, TheServerSendsWhatIsShownAndNothingElse) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    openLine(mServer.url());
    listen("SH600000");
    listen("SZ000001");
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    const std::set<std::string> wanted{"md.clock", "md.tick.SH600000", "md.min.SH600000", "md.tick.SZ000001",
                                       "md.min.SZ000001"};
    EXPECT_TRUE(eventually([&] { return terminalSubjects() == wanted; }));
}

TEST_F(NatsTest, AServerThatIsKilledComesBackAndNothingIsLost) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    openLine(mServer.url());
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    ASSERT_TRUE(publish("SH600000", changeOf(1, 571, 10.1)));
    ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 1; }));
    mServer.kill();
    ASSERT_TRUE(eventually([&] { return mFeed->report().line != LineState::Connected; }));
    EXPECT_THAT(text(), ::testing::HasSubstr("行情服务器连接不上（自 "));
    EXPECT_EQ(heard("SH600000"), Bars{barOf(571, 10.1)});
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    // Before the terminal is back.
    ASSERT_TRUE(publish("SH600000", changeOf(2, 572, 10.2)));
    ASSERT_TRUE(publish("SH600000", keptOf(2, 572, 10.2)));
    const Bars both{barOf(571, 10.1), barOf(572, 10.2)};
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000") == both; }));
    ASSERT_TRUE(publish("SH600000", changeOf(3, 573, 10.3)));
    EXPECT_TRUE(eventually([&] { return heard("SH600000").size() == 3; })) << "listened to as before";
    EXPECT_EQ(mEverHeard.size(), 3u) << "nothing is told twice";
}

TEST_F(NatsTest, AGapIsFilledFromTheStream) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    openLine(mServer.url());
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    ASSERT_TRUE(publish("SH600000", changeOf(1, 571, 10.1)));
    ASSERT_TRUE(publish("SH600000", changeOf(3, 573, 10.3))); // 2 was of 09:32
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 2; }));
    EXPECT_EQ(mFeed->report().behind, 1);
    ASSERT_TRUE(publish("SH600000", keptOf(2, 572, 10.2)));
    const Bars whole{barOf(571, 10.1), barOf(572, 10.2), barOf(573, 10.3)};
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000") == whole; }));
}

TEST_F(NatsTest, DoubledAndLateMessagesChangeNothing) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    openLine(mServer.url());
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole(); }));
    for (const WireBar &record :
         {changeOf(1, 571, 10.1), changeOf(1, 571, 10.1), changeOf(3, 571, 10.3, 2), changeOf(2, 571, 10.2, 1),
          changeOf(4, 572, 10.4), changeOf(3, 571, 10.3, 2)}) {
        ASSERT_TRUE(publish("SH600000", record));
    }
    const Bars both{barOf(571, 10.3), barOf(572, 10.4)};
    EXPECT_TRUE(eventually([&] { return heard("SH600000") == both; }));
    EXPECT_EQ(std::count(mEverHeard.begin(), mEverHeard.end(), barOf(571, 10.2)), 0);
    EXPECT_TRUE(eventually([&] { return isWhole(); }));
}

TEST_F(NatsTest, AServerThatStandsStillIsToldAsASilentMarket) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    LiveFeed::Times times;
    times.silence = 100;
    openSink(mServer.url());
    openLine(mServer.url(), times);
    ASSERT_TRUE(eventually([&] { return mFeed->report().line == LineState::Connected; }));
    quint64 beat = 0;
    ASSERT_TRUE(eventually([&] {
        return mSink->send(clockSubject(), beatAt(++beat, 571)) && mSink->confirm() && mMarketTime != 0;
    }));
    mServer.freeze();
    EXPECT_TRUE(eventually([&] { return mFeed->report().silentSince != 0; }));
    EXPECT_THAT(text(), ::testing::HasSubstr("行情源没有消息（自 "));
    mServer.thaw();
    EXPECT_TRUE(eventually([&] {
        return mSink->send(clockSubject(), beatAt(++beat, 572)) && mSink->confirm() &&
               mMarketTime == (kDay + 572 * 60) * 1000LL;
    }));
}

TEST_F(NatsTest, AServerThatComesLaterIsFound) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start());
    mServer.kill(); // its port is known now
    openLine(mServer.url());
    listen("SH600000");
    ASSERT_TRUE(mServer.start());
    openSink(mServer.url());
    ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000").size() == 1; }));
}

#endif
