// Whom a server lets in, over which way, and what of it is told and written.

#ifdef TIMESHARE_WITH_NATS

#include "tests/feed/NatsFixture.h"
#include "tests/feed/RecordingProxy.h"

#include <QProcess>
#include <QUrl>

using namespace terminal;
using tests::eventually;

namespace {

QString dataFile(const char *name) {
    return QStringLiteral(TIMESHARE_SOURCE_DIR "/tests/feed/data/") + QString::fromLatin1(name);
}

class NatsSecretsTest : public tests::NatsFixture {
protected:
    QString write(const char *name, const QByteArray &content) const {
        QFile file(mServer.pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        return file.fileName();
    }
    static void setFile(const char *variable, const QString &path) {
        qputenv(variable, QFile::encodeName(path));
    }
    /// A server's certificate of a name, with its key; or one of a terminal.
    void makeCertificate(const char *name, const QString &subject, const QString &others) const {
        QProcess openssl;
        openssl.start("openssl",
                      {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                       "-days", "2", "-subj", "/CN=" + subject, "-addext", "subjectAltName=" + others,
                       "-keyout", mServer.pathOf(name) + ".key", "-out", mServer.pathOf(name)});
        ASSERT_TRUE(openssl.waitForFinished(60000));
        ASSERT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().constData();
    }
    QStringList encrypted(const char *name) const {
        return {"--tls", "--tlscert", mServer.pathOf(name), "--tlskey", mServer.pathOf(name) + ".key"};
    }
    QString urlOf(const QString &scheme, const QString &host, int port = 0) const {
        return QStringLiteral("%1://%2:%3")
            .arg(scheme, host)
            .arg(port == 0 ? QUrl(mServer.url()).port() : port);
    }
    static LineFailure failureOf(const QString &url) {
        LineFailure failure;
        EXPECT_EQ(NatsSession::open(addressOf(url), "timeshare-terminal", failure), nullptr);
        return failure;
    }
    /// The whole way, from a feed to a terminal.
    void expectMarket(const QString &url) {
        openSink(url);
        openLine(url);
        listen("SH600000");
        ASSERT_TRUE(eventually([&] { return isWhole(); })) << text();
        ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
        EXPECT_TRUE(eventually([&] { return heard("SH600000") == Bars{barOf(571, 10.1)}; }));
    }
};

} // namespace

TEST_F(NatsSecretsTest, UserAndPasswordComeFromAFile) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"--user", "desk", "--pass", "right-one"}));
    setFile("TIMESHARE_FEED_CREDENTIALS", write("secret", "user=desk\npassword=right-one\n"));
    expectMarket(mServer.url());
}

TEST_F(NatsSecretsTest, AWrongPasswordIsToldAndNowhereWritten) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"--user", "desk", "--pass", "right-one"}));
    qputenv("TIMESHARE_FEED_USER", "desk");
    qputenv("TIMESHARE_FEED_PASSWORD", "hush-hush");
    ::testing::internal::CaptureStderr();
    openLine(mServer.url());
    EXPECT_TRUE(eventually([&] { return mFeed->report().line == LineState::Refused; }));
    EXPECT_THAT(text(), ::testing::HasSubstr("行情服务器不接受登录凭据（自 "));
    const LineFailure failure = failureOf(mServer.url());
    EXPECT_EQ(failure.state, LineState::Refused);
    EXPECT_FALSE(failure.reason.contains("hush") || failure.reason.contains('\n'));
    mFeed->stop();
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::Not(::testing::HasSubstr("hush")));
    EXPECT_FALSE(mServer.log().contains("hush"));
    qputenv("TIMESHARE_FEED_PASSWORD", "right-one");
    openSink(mServer.url());
}

TEST_F(NatsSecretsTest, AFeedTellsAWrongPasswordOnceAndWritesItNowhere) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"--user", "desk", "--pass", "right-one"}));
    const QString credentials = write("secret", "user=desk\npassword=hush-hush\n");
    const QStringList arguments{
        "--server", mServer.url(), "--store", mServer.pathOf("market.db"), "--log", mServer.pathOf("feed.log")};
    const QStringList environment{"TIMESHARE_FEED_CREDENTIALS=" + credentials};
    const QString program = QStringLiteral(TIMESHARE_BINARY_DIR "/bin/timeshare-feed");
    const auto contentOf = [this](const char *name) {
        QFile file(mServer.pathOf(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    tests::ServerProcess feed;
    ASSERT_TRUE(feed.start(program, arguments, mServer.pathOf("feed.out"), environment));
    ASSERT_TRUE(eventually([&] { return mServer.log().count("authentication error") >= 3; })) << "tried again";
    write("secret", "user=desk\npassword=right-one\n");
    EXPECT_EQ(feed.end(SIGTERM), 0);
    const QByteArray told = contentOf("feed.out");
    EXPECT_EQ(told.count('\n'), 1) << told.constData();
    EXPECT_THAT(told.toStdString(),
                ::testing::ContainsRegex("^timeshare-feed: nats://.*: .*uthorization.*trying again\n$"));
    for (const QByteArray &text : {told, contentOf("feed.log"), mServer.log()}) {
        EXPECT_FALSE(text.contains("hush"));
    }
}

TEST_F(NatsSecretsTest, ATokenLetsIn) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"--auth", "one-token"}));
    qputenv("TIMESHARE_FEED_TOKEN", "another-token");
    EXPECT_EQ(failureOf(mServer.url()).state, LineState::Refused);
    setFile("TIMESHARE_FEED_CREDENTIALS", write("secret", "token=one-token\n"));
    expectMarket(mServer.url());
}

TEST_F(NatsSecretsTest, AKeyLetsInAndAnothersSeedDoesNot) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"-c", dataFile("nkey.conf")}));
    setFile("TIMESHARE_FEED_CREDENTIALS", dataFile("stranger.nkey"));
    EXPECT_EQ(failureOf(mServer.url()).state, LineState::Refused);
    setFile("TIMESHARE_FEED_CREDENTIALS", dataFile("user.nkey"));
    expectMarket(mServer.url());
}

TEST_F(NatsSecretsTest, AFileOfTheServersToolsLetsIn) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"-c", dataFile("operator.conf")}));
    setFile("TIMESHARE_FEED_CREDENTIALS", dataFile("stranger.creds"));
    EXPECT_EQ(failureOf(mServer.url()).state, LineState::Refused);
    setFile("TIMESHARE_FEED_CREDENTIALS", dataFile("user.creds"));
    expectMarket(mServer.url());
}

TEST_F(NatsSecretsTest, AnEncryptedWayShowsNothingToThoseBeside) {
    TIMESHARE_NEEDS_NATS();
    makeCertificate("certificate", "localhost", "DNS:localhost");
    ASSERT_TRUE(mServer.start(QStringList{"--user", "desk", "--pass", "right-one"} + encrypted("certificate")));
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    qputenv("TIMESHARE_FEED_USER", "desk");
    qputenv("TIMESHARE_FEED_PASSWORD", "right-one");
    setFile("TIMESHARE_FEED_CA", mServer.pathOf("certificate"));
    openSink(urlOf("tls", "localhost"));
    openLine(urlOf("tls", "localhost", proxy.port()));
    listen("SH600000");
    ASSERT_TRUE(eventually([&] { return isWhole(); })) << text();
    ASSERT_TRUE(publish("SH600000", keptOf(1, 571, 10.1)));
    EXPECT_TRUE(eventually([&] { return heard("SH600000") == Bars{barOf(571, 10.1)}; }));
    for (const QByteArray &bytes : {proxy.toServer(), proxy.toClient()}) {
        EXPECT_GT(bytes.size(), 500);
        EXPECT_FALSE(bytes.contains("right-one") || bytes.contains("SH600000"));
    }
}

TEST_F(NatsSecretsTest, AServerOfAnotherNameOrAuthorityIsNotBelieved) {
    TIMESHARE_NEEDS_NATS();
    makeCertificate("certificate", "another.market", "DNS:another.market");
    makeCertificate("unrelated", "localhost", "DNS:localhost");
    ASSERT_TRUE(mServer.start(QStringList{"--user", "desk", "--pass", "right-one"} + encrypted("certificate")));
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    qputenv("TIMESHARE_FEED_USER", "desk");
    qputenv("TIMESHARE_FEED_PASSWORD", "right-one");
    for (const char *authority : {"certificate", "unrelated"}) {
        setFile("TIMESHARE_FEED_CA", mServer.pathOf(authority));
        const LineFailure failure = failureOf(urlOf("tls", "localhost", proxy.port()));
        EXPECT_EQ(failure.state, LineState::Connecting);
        EXPECT_TRUE(failure.reason.contains("SSL")) << failure.reason.toStdString();
    }
    EXPECT_FALSE(proxy.toServer().contains("right-one"));
}

TEST_F(NatsSecretsTest, AnEncryptedWayIsNotGivenUpForAPlainServer) {
    TIMESHARE_NEEDS_NATS();
    ASSERT_TRUE(mServer.start({"--user", "desk", "--pass", "right-one"}));
    const tests::RecordingProxy proxy(QUrl(mServer.url()).port());
    qputenv("TIMESHARE_FEED_USER", "desk");
    qputenv("TIMESHARE_FEED_PASSWORD", "right-one");
    EXPECT_NE(failureOf(urlOf("tls", "localhost", proxy.port())).reason, QString());
    EXPECT_FALSE(proxy.toServer().contains("right-one"));
}

TEST_F(NatsSecretsTest, ACertificateOfTheTerminalLetsIn) {
    TIMESHARE_NEEDS_NATS();
    makeCertificate("certificate", "localhost", "DNS:localhost");
    makeCertificate("terminal", "terminal", "DNS:terminal");
    ASSERT_TRUE(mServer.start(encrypted("certificate") +
                              QStringList{"--tlsverify", "--tlscacert", mServer.pathOf("terminal")}));
    setFile("TIMESHARE_FEED_CA", mServer.pathOf("certificate"));
    EXPECT_NE(failureOf(urlOf("tls", "localhost")).reason, QString()) << "without one";
    setFile("TIMESHARE_FEED_CERTIFICATE", mServer.pathOf("terminal"));
    setFile("TIMESHARE_FEED_KEY", mServer.pathOf("terminal") + ".key");
    expectMarket(urlOf("tls", "localhost"));
}

#endif
