#include "terminal/feed/NatsSession.h"

#include <QUrl>

#include <nats/nats.h>

namespace terminal {
namespace {

constexpr int kConnectWait = 2000; ///< milliseconds
constexpr int kPingInterval = 1000; ///< milliseconds; a server that is still there answers within
constexpr int kPingsUnanswered = 3;

/// Signs what the server asks, by the seed of an address.
natsStatus sign(char **, unsigned char **signature, int *length, const char *question, void *address) {
    return nats_Sign(static_cast<const FeedAddress *>(address)->seed.constData(), question, signature, length);
}

/// Why the last call of this thread has failed, in one line.
QString reasonOf(natsStatus status) {
    const QString detail = QString::fromUtf8(nats_GetLastError(nullptr)).simplified();
    const QString text = QString::fromUtf8(natsStatus_GetText(status));
    return detail.isEmpty() || detail == text ? text : QStringLiteral("%1: %2").arg(text, detail);
}

/// One of the address's servers. The address stays where it is until the connection is made.
natsStatus setUp(natsOptions *options, const FeedAddress &address, const QByteArray &url, const char *name) {
    natsStatus status = natsOptions_SetURL(options, url.constData());
    const auto then = [&status](auto &&set, auto &&...values) {
        status = status == NATS_OK ? set(values...) : status;
    };
    then(natsOptions_SetName, options, name);
    then(natsOptions_SetTimeout, options, kConnectWait);
    then(natsOptions_SetAllowReconnect, options, false);
    then(natsOptions_SetPingInterval, options, kPingInterval);
    then(natsOptions_SetMaxPingsOut, options, kPingsUnanswered);
    then(natsOptions_UseGlobalMessageDelivery, options, true);
    if (!address.user.isEmpty()) {
        then(natsOptions_SetUserInfo, options, address.user.constData(), address.password.constData());
    }
    if (!address.token.isEmpty()) {
        then(natsOptions_SetToken, options, address.token.constData());
    }
    if (!address.nkey.isEmpty()) {
        then(natsOptions_SetNKey, options, address.nkey.constData(), &sign,
             const_cast<FeedAddress *>(&address));
    }
    if (!address.credentialsFile.isEmpty()) {
        then(natsOptions_SetUserCredentialsFromFiles, options, address.credentialsFile.constData(), nullptr);
    }
    if (url.startsWith("tls://")) {
        const QByteArray host = QUrl(QString::fromUtf8(url)).host().toUtf8();
        then(natsOptions_SetSecure, options, true);
        then(natsOptions_SetExpectedHostname, options, host.constData()); // else any name would do
    }
    if (!address.caFile.isEmpty()) {
        then(natsOptions_LoadCATrustedCertificates, options, address.caFile.constData());
    }
    if (!address.certificateFile.isEmpty()) {
        then(natsOptions_LoadCertificatesChain, options, address.certificateFile.constData(),
             address.keyFile.constData());
    }
    return status;
}

} // namespace

std::unique_ptr<NatsSession> NatsSession::open(const FeedAddress &address, const char *name,
                                               LineFailure &failure) {
    for (const QByteArray &url : address.urls) {
        natsOptions *options = nullptr;
        natsConnection *connection = nullptr;
        natsStatus status = natsOptions_Create(&options);
        status = status == NATS_OK ? setUp(options, address, url, name) : status;
        status = status == NATS_OK ? natsConnection_Connect(&connection, options) : status;
        natsOptions_Destroy(options);
        if (status == NATS_OK) {
            return std::unique_ptr<NatsSession>(new NatsSession(connection));
        }
        const bool isRefused = status == NATS_CONNECTION_AUTH_FAILED || status == NATS_NOT_PERMITTED;
        failure = {isRefused ? LineState::Refused : LineState::Connecting, reasonOf(status)};
    }
    return nullptr;
}

NatsSession::~NatsSession() {
    natsConnection_Destroy(mConnection);
    nats_ReleaseThreadMemory();
}

bool NatsSession::isOpen() const {
    return natsConnection_Status(mConnection) == NATS_CONN_STATUS_CONNECTED;
}

} // namespace terminal
