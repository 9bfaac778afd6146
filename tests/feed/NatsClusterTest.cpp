// Three servers that keep the stream together, and one of them fails.

#ifdef TIMESHARE_WITH_NATS

#include "tests/feed/NatsFixture.h"

#include <QStringList>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

using namespace terminal;
using tests::eventually;

namespace {

class NatsClusterTest : public tests::NatsFixture {
protected:
    /// A port that nobody has just now.
    static int freePort() {
        const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        bind(socket, reinterpret_cast<sockaddr *>(&place), size);
        getsockname(socket, reinterpret_cast<sockaddr *>(&place), &size);
        ::close(socket);
        return ntohs(place.sin_port);
    }
    void startAll() {
        QStringList routes;
        for (size_t i = 0; i < mServers.size(); ++i) {
            routes.append(QStringLiteral("nats://127.0.0.1:%1").arg(freePort()));
        }
        QStringList urls;
        for (size_t i = 0; i < mServers.size(); ++i) {
            ASSERT_TRUE(mServers[i].start({"--server_name", QStringLiteral("market-%1").arg(i),
                                           "--cluster_name", "market", "--cluster", routes[static_cast<int>(i)],
                                           "--routes", routes.join(',')}));
            urls.append(mServers[i].url());
        }
        mUrl = urls.join(',');
    }

    std::array<tests::NatsServer, 3> mServers;
    QString mUrl;
};

} // namespace

TEST_F(NatsClusterTest, WhenOneServerFailsTheOthersHaveItAll) {
    TIMESHARE_NEEDS_NATS();
    startAll();
    openSink(mUrl, 3);
    openLine(mUrl);
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole(); })) << text();
    ASSERT_TRUE(publish("SH600000", changeOf(1, 571, 10.1)));
    ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
    ASSERT_TRUE(eventually([&] { return heard("SH600000").size() == 1; }));
    mServers[0].kill(); // the one that both are connected to, the first of the list
    ASSERT_TRUE(eventually([&] { return mFeed->report().line != LineState::Connected; }));
    openSink(mUrl, 3);
    const WireBar second = keptOf(2, 572, 10.2);
    ASSERT_TRUE(eventually([&] { // the two that are left agree on a new leader first
        if (publish("SH600000", second)) {
            return true;
        }
        openSink(mUrl, 3);
        return false;
    }));
    const Bars both{barOf(571, 10.1), barOf(572, 10.2)};
    EXPECT_TRUE(eventually([&] { return isWhole() && heard("SH600000") == both; })) << text();
    EXPECT_EQ(mEverHeard.size(), 2u) << "nothing is told twice";
    // A terminal that comes now has the morning from before the failure.
    tests::LiveFeedFixture::Bars morning;
    const std::unique_ptr<FeedLine> late = makeNatsLine(addressOf(mUrl));
    late->start([](const LineFailure &) {});
    EXPECT_TRUE(eventually([&] {
        morning.clear();
        return late->readKept(minuteSubject("SH600000"), [&morning](const QByteArray &bytes) {
            morning.push_back(std::get<WireBar>(decodeWire(bytes)).bar);
        }) && morning == both;
    }));
    late->stop();
}

TEST_F(NatsClusterTest, AServerThatIsMissingDoesNotHoldUpTheReadingOfTheMorning) {
    TIMESHARE_NEEDS_NATS();
    startAll();
    openSink(mUrl, 3);
    ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
    mServers[2].kill();
    const std::unique_ptr<FeedLine> line = makeNatsLine(addressOf(mUrl));
    line->start([](const LineFailure &) {});
    const auto read = [&line] {
        int messages = 0;
        return line->readKept(minuteSubject("SH600000"), [&messages](const QByteArray &) { ++messages; }) &&
               messages > 0;
    };
    ASSERT_TRUE(eventually(read)); // the two that are left agree on a leader
    // A third of the readings is given to the one that is not there, and none is lost by that.
    int lost = 0;
    for (int i = 0; i < 24; ++i) {
        lost += read() ? 0 : 1;
    }
    EXPECT_LE(lost, 1);
    line->stop();
}

#endif
