#include "terminal/history/HistoryAddress.h"

#include "terminal/servers/SecretLines.h"

#include <QFile>
#include <QSet>
#include <QUrl>
#include <QUrlQuery>

namespace terminal {
namespace {

/// What of the library's settings goes with an address: those about the encrypted way.
const QSet<QString> kAddressOptions{QStringLiteral("sslmode"),        QStringLiteral("sslrootcert"),
                                    QStringLiteral("sslcert"),        QStringLiteral("sslkey"),
                                    QStringLiteral("sslcrl"),         QStringLiteral("channel_binding"),
                                    QStringLiteral("connect_timeout")};

/// Those of them that are paths, which the library opens.
const QSet<QString> kAddressFiles{QStringLiteral("sslrootcert"), QStringLiteral("sslcert"),
                                  QStringLiteral("sslkey"), QStringLiteral("sslcrl")};

bool holdsPassword(const QString &url, const QUrl &parsed) {
    const QString authority =
        url.section(QStringLiteral("://"), 1).section(QLatin1Char('/'), 0, 0).section(QLatin1Char('?'), 0, 0);
    const bool hasPassword = authority.section(QLatin1Char('@'), 0, -2).contains(QLatin1Char(':'));
    const QString query = parsed.query().toLower();
    return hasPassword || !parsed.password().isEmpty() || query.contains(QLatin1String("passw")) ||
           query.contains(QLatin1String("passfile")) || query.contains(QLatin1String("sslpass"));
}

QUrl parsedAddress(const QString &url) {
    return QUrl(url, QUrl::StrictMode);
}

} // namespace

QString historyAddressFault(const QString &url) {
    const QUrl parsed = parsedAddress(url);
    if (holdsPassword(url, parsed)) {
        return QStringLiteral("a password does not go with the address, where others see it: give it by "
                              "TIMESHARE_HISTORY_PASSWORD, a "
                              "file by TIMESHARE_HISTORY_CREDENTIALS, or PGPASSFILE");
    }
    const bool isPostgres =
        parsed.scheme() == QLatin1String("postgres") || parsed.scheme() == QLatin1String("postgresql");
    const QString database = parsed.path().mid(1);
    if (!parsed.isValid() || parsed.host().isEmpty() || !isPostgres || database.isEmpty() ||
        database.contains(QLatin1Char('/')) || parsed.hasFragment()) {
        return QStringLiteral("not of the form postgres://HOST:PORT/DATABASE: give one, as in "
                              "postgres://reader@market:5432/history");
    }
    for (const auto &item : QUrlQuery(parsed).queryItems()) {
        if (!kAddressOptions.contains(item.first) || item.second.isEmpty()) {
            return QStringLiteral(
                "a setting behind the ? that is none: give sslmode, sslrootcert, sslcert, sslkey, "
                "sslcrl, channel_binding or connect_timeout, each with a value");
        }
    }
    return {};
}

QString readHistoryAddress(const QString &url, HistoryAddress &address) {
    const QString fault = historyAddressFault(url);
    if (!fault.isEmpty()) {
        return fault;
    }
    const QUrl parsed = parsedAddress(url);
    address = {};
    QByteArray user = parsed.userName(QUrl::FullyDecoded).toUtf8();
    if (qEnvironmentVariableIsSet("TIMESHARE_HISTORY_USER")) {
        user = qgetenv("TIMESHARE_HISTORY_USER");
    }
    address.password = qgetenv("TIMESHARE_HISTORY_PASSWORD");
    const QString file = QFile::decodeName(qgetenv("TIMESHARE_HISTORY_CREDENTIALS"));
    QByteArray content;
    QString wrong = file.isEmpty() ? QString() : readSecretFile(file, content);
    wrong = wrong.isEmpty() ? takeSecretLines(file, content, {{"user", &user}, {"password", &address.password}})
                            : wrong;
    if (!wrong.isEmpty()) {
        return wrong;
    }
    address.settings = {{"host", parsed.host().toUtf8()},
                        {"dbname", parsed.path(QUrl::FullyDecoded).mid(1).toUtf8()}};
    if (parsed.port() > 0) {
        address.settings.append({"port", QByteArray::number(parsed.port())});
    }
    if (!user.isEmpty()) {
        address.settings.append({"user", user});
    }
    for (const auto &item : QUrlQuery(parsed).queryItems(QUrl::FullyDecoded)) {
        address.settings.append({item.first.toLatin1(), item.second.toUtf8()});
        wrong = wrong.isEmpty() && kAddressFiles.contains(item.first) ? certificateFault(item.second) : wrong;
    }
    return wrong;
}

} // namespace terminal
