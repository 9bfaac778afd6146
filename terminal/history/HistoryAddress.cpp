#include "terminal/history/HistoryAddress.h"

#include "terminal/servers/SecretLines.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

namespace terminal {
namespace {

const QString kSession = QStringLiteral("target_session_attrs");
const QString kConnectWaitOption = QStringLiteral("connect_timeout");

/// What of the library's settings goes with an address: those about the encrypted way, and about which of several hosts.
const QSet<QString> kAddressOptions{QStringLiteral("sslmode"), QStringLiteral("sslrootcert"),
                                    QStringLiteral("sslcert"), QStringLiteral("sslkey"),
                                    QStringLiteral("sslcrl"),  QStringLiteral("channel_binding"),
                                    kConnectWaitOption,        kSession};

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

/// The address of each host by itself, with what they have in common.
QVector<QUrl> addressesOfHosts(const QString &url) {
    static const QRegularExpression kParts(QStringLiteral("^([^:]*://(?:[^/?#]*@)?)([^/?#]*)(.*)$"),
                                           QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch parts = kParts.match(url);
    QVector<QUrl> addresses;
    for (const QString &host : parts.captured(2).split(QLatin1Char(','))) {
        addresses.append(QUrl(parts.captured(1) + host + parts.captured(3), QUrl::StrictMode));
    }
    return addresses;
}

QString formFault(const QUrl &parsed) {
    const bool isPostgres =
        parsed.scheme() == QLatin1String("postgres") || parsed.scheme() == QLatin1String("postgresql");
    const QString database = parsed.path().mid(1);
    return parsed.isValid() && !parsed.host().isEmpty() && isPostgres && !database.isEmpty() &&
                   !database.contains(QLatin1Char('/')) && !parsed.hasFragment()
               ? QString()
               : QStringLiteral("not of the form postgres://HOST:PORT/DATABASE: give one, as in "
                                "postgres://reader@market:5432/history");
}

QString settingFault(const QString &name, const QString &value) {
    if (!kAddressOptions.contains(name) || value.isEmpty()) {
        return QStringLiteral(
            "a setting behind the ? that is none: give sslmode, sslrootcert, sslcert, sslkey, "
            "sslcrl, channel_binding, connect_timeout or target_session_attrs, each with a value");
    }
    static const QSet<QString> kSessions{QStringLiteral("any"),       QStringLiteral("read-write"),
                                         QStringLiteral("read-only"), QStringLiteral("primary"),
                                         QStringLiteral("standby"),   QStringLiteral("prefer-standby")};
    if (name == kSession && !kSessions.contains(value)) {
        return QStringLiteral("target_session_attrs: give any, read-write, read-only, primary, standby or "
                              "prefer-standby");
    }
    bool isNumber = false;
    return name == kConnectWaitOption && (value.toInt(&isNumber) < 0 || !isNumber)
               ? QStringLiteral("connect_timeout: give a number of seconds")
               : QString();
}

} // namespace

QString historyAddressFault(const QString &url) {
    const QVector<QUrl> addresses = addressesOfHosts(url);
    const QUrl &parsed = addresses.first();
    if (holdsPassword(url, parsed)) {
        return QStringLiteral("a password does not go with the address, where others see it: give it by "
                              "TIMESHARE_HISTORY_PASSWORD, a "
                              "file by TIMESHARE_HISTORY_CREDENTIALS, or PGPASSFILE");
    }
    for (const QUrl &address : addresses) {
        const QString fault = formFault(address);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    for (const auto &item : QUrlQuery(parsed).queryItems(QUrl::FullyDecoded)) {
        const QString fault = settingFault(item.first, item.second);
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    return {};
}

QString readHistoryAddress(const QString &url, HistoryAddress &address) {
    const QString fault = historyAddressFault(url);
    if (!fault.isEmpty()) {
        return fault;
    }
    const QVector<QUrl> addresses = addressesOfHosts(url);
    const QUrl &parsed = addresses.first();
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
    for (const QUrl &host : addresses) {
        address.hosts.append({host.host().toUtf8(), std::max(0, host.port())});
    }
    address.settings = {{"dbname", parsed.path(QUrl::FullyDecoded).mid(1).toUtf8()}};
    if (!user.isEmpty()) {
        address.settings.append({"user", user});
    }
    for (const auto &item : QUrlQuery(parsed).queryItems(QUrl::FullyDecoded)) {
        if (item.first == kSession) {
            address.session = item.second.toLatin1();
        } else if (item.first == kConnectWaitOption) {
            address.connectWait = std::chrono::seconds(item.second.toInt());
        } else {
            address.settings.append({item.first.toLatin1(), item.second.toUtf8()});
        }
        wrong = wrong.isEmpty() && kAddressFiles.contains(item.first) ? certificateFault(item.second) : wrong;
    }
    return wrong;
}

} // namespace terminal
