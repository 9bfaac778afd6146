#include "terminal/feed/FeedAddress.h"

#include "terminal/servers/SecretLines.h"

#include <QFile>
#include <QUrl>

namespace terminal {
namespace {

constexpr int kDefaultPort = 4222;

/// Takes the secrets of a file; answers what is wrong with it.
QString readSecrets(const QString &path, FeedAddress &address) {
    QByteArray content;
    const QString unread = readSecretFile(path, content);
    if (!unread.isEmpty()) {
        return unread;
    }
    if (content.contains("-----BEGIN NATS USER JWT-----")) {
        address.credentialsFile = QFile::encodeName(path);
        return {};
    }
    return takeSecretLines(path, content,
                           {{"user", &address.user},
                            {"password", &address.password},
                            {"token", &address.token},
                            {"nkey", &address.nkey},
                            {"seed", &address.seed}});
}

/// What is wrong with secrets that go together; empty when nothing is.
QString pairFault(const FeedAddress &address) {
    if (address.nkey.isEmpty() != address.seed.isEmpty()) {
        return QStringLiteral("the credentials lack one of nkey= and seed=: give both");
    }
    if (address.certificateFile.isEmpty() != address.keyFile.isEmpty()) {
        return QStringLiteral("one of TIMESHARE_FEED_CERTIFICATE and TIMESHARE_FEED_KEY is missing: give both");
    }
    return {};
}

QString serverFault(const QString &url) {
    const QUrl parsed(url, QUrl::StrictMode);
    if (!parsed.isValid() || parsed.host().isEmpty() ||
        (parsed.scheme() != QLatin1String("nats") && parsed.scheme() != QLatin1String("tls"))) {
        return QStringLiteral(
            "not of the form nats://HOST:PORT or tls://HOST:PORT: give one, as in nats://market:4222");
    }
    if (!parsed.userInfo().isEmpty() || url.contains(QLatin1Char('@'))) {
        return QStringLiteral(
            "credentials do not go with the address, where others see them: give them by "
            "TIMESHARE_FEED_USER and TIMESHARE_FEED_PASSWORD, or a file by TIMESHARE_FEED_CREDENTIALS");
    }
    if (!(parsed.path().isEmpty() || parsed.path() == QLatin1String("/")) || parsed.hasQuery() ||
        parsed.hasFragment()) {
        return QStringLiteral("more than host and port: give an address as in nats://market:4222");
    }
    return {};
}

/// As the library takes it.
QByteArray serverUrl(const QString &url) {
    const QUrl parsed(url, QUrl::StrictMode);
    const bool isNumeric = parsed.host().contains(QLatin1Char(':'));
    return QStringLiteral("%1://%2:%3")
        .arg(parsed.scheme(), isNumeric ? QStringLiteral("[%1]").arg(parsed.host()) : parsed.host())
        .arg(parsed.port(kDefaultPort))
        .toUtf8();
}

} // namespace

QString FeedAddress::text() const {
    return QString::fromUtf8(urls.toList().join(','));
}

QString addressFault(const QString &url) {
    const QStringList servers = url.split(QLatin1Char(','));
    for (const QString &server : servers) {
        const QString fault = serverFault(server);
        if (!fault.isEmpty()) {
            return fault;
        }
        if (server.section(QLatin1Char(':'), 0, 0) != servers.first().section(QLatin1Char(':'), 0, 0)) {
            return QStringLiteral("one server is nats:// and another tls://: give all of one kind");
        }
    }
    return {};
}

QString readAddress(const QString &url, FeedAddress &address) {
    const QString fault = addressFault(url);
    if (!fault.isEmpty()) {
        return fault;
    }
    address = {};
    for (const QString &server : url.split(QLatin1Char(','))) {
        address.urls.append(serverUrl(server));
    }
    address.user = qgetenv("TIMESHARE_FEED_USER");
    address.password = qgetenv("TIMESHARE_FEED_PASSWORD");
    address.token = qgetenv("TIMESHARE_FEED_TOKEN");
    QString wrong;
    const auto certificate = [&wrong](const char *name) {
        const QByteArray path = qgetenv(name);
        wrong = wrong.isEmpty() ? certificateFault(QFile::decodeName(path)) : wrong;
        return path;
    };
    address.caFile = certificate("TIMESHARE_FEED_CA");
    address.certificateFile = certificate("TIMESHARE_FEED_CERTIFICATE");
    address.keyFile = certificate("TIMESHARE_FEED_KEY");
    const QString file = QFile::decodeName(qgetenv("TIMESHARE_FEED_CREDENTIALS"));
    wrong = wrong.isEmpty() && !file.isEmpty() ? readSecrets(file, address) : wrong;
    return wrong.isEmpty() ? pairFault(address) : wrong;
}

} // namespace terminal
