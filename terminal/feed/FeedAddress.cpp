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
    return takeSecretLines(
        path, content, {{"user", &address.user}, {"password", &address.password}, {"token", &address.token}});
}

} // namespace

QString addressFault(const QString &url) {
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

QString readAddress(const QString &url, FeedAddress &address) {
    const QString fault = addressFault(url);
    if (!fault.isEmpty()) {
        return fault;
    }
    const QUrl parsed(url, QUrl::StrictMode);
    address = {};
    address.url = QStringLiteral("%1://%2:%3")
                      .arg(parsed.scheme(), parsed.host().contains(QLatin1Char(':'))
                                                ? QStringLiteral("[%1]").arg(parsed.host())
                                                : parsed.host())
                      .arg(parsed.port(kDefaultPort))
                      .toUtf8();
    address.user = qgetenv("TIMESHARE_FEED_USER");
    address.password = qgetenv("TIMESHARE_FEED_PASSWORD");
    address.token = qgetenv("TIMESHARE_FEED_TOKEN");
    address.caFile = qgetenv("TIMESHARE_FEED_CA");
    const QString wrong = certificateFault(QFile::decodeName(address.caFile));
    const QString file = QFile::decodeName(qgetenv("TIMESHARE_FEED_CREDENTIALS"));
    return !wrong.isEmpty() || file.isEmpty() ? wrong : readSecrets(file, address);
}

} // namespace terminal
