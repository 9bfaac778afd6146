#include "terminal/feed/FeedAddress.h"

#include <QFile>
#include <QUrl>

namespace terminal {
namespace {

constexpr int kDefaultPort = 4222;
constexpr qint64 kLargestCredentials = 64 * 1024; ///< bytes

/// Takes the secrets of a file; answers what is wrong with it.
QString readSecrets(const QString &path, FeedAddress &address) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("%1: the file of credentials cannot be read: %2").arg(path, file.errorString());
    }
    const QByteArray content = file.read(kLargestCredentials);
    if (content.contains("-----BEGIN NATS USER JWT-----")) {
        address.credentialsFile = QFile::encodeName(path);
        return {};
    }
    int number = 0;
    for (const QByteArray &text : content.split('\n')) {
        ++number;
        const QByteArray line = text.trimmed();
        if (line.isEmpty() || line.startsWith('#')) {
            continue;
        }
        const int equals = line.indexOf('=');
        const QByteArray name = line.left(equals).trimmed();
        const QByteArray value = equals < 0 ? QByteArray() : line.mid(equals + 1).trimmed();
        if (equals >= 0 && name == "user") {
            address.user = value;
        } else if (equals >= 0 && name == "password") {
            address.password = value;
        } else if (equals >= 0 && name == "token") {
            address.token = value;
        } else {
            return QStringLiteral("%1:%2: no line of credentials: give user=, password= or token=")
                .arg(path)
                .arg(number);
        }
    }
    return {};
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
    const QString file = QFile::decodeName(qgetenv("TIMESHARE_FEED_CREDENTIALS"));
    return file.isEmpty() ? QString() : readSecrets(file, address);
}

} // namespace terminal
