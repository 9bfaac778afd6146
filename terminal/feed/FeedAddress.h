#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace terminal {

/// Where a feed's server is, and what it wants to see. The secrets come from the environment or from a file that the
/// environment names, never with the address: that is seen by others.
///
/// TIMESHARE_FEED_USER and _PASSWORD, or _TOKEN; TIMESHARE_FEED_CREDENTIALS names a file with lines user=... and password=...,
/// token=..., or nkey=U... and seed=SU..., or one that the server's own tools have made. TIMESHARE_FEED_CA names a file of the
/// certificates that are trusted, TIMESHARE_FEED_CERTIFICATE and _KEY those by which this side is known.
struct FeedAddress {
    QVector<QByteArray> urls; ///< nats://HOST:PORT or tls://HOST:PORT, of each server of a cluster
    QByteArray user;
    QByteArray password;
    QByteArray token;
    QByteArray nkey; ///< public key
    QByteArray seed; ///< of its private one
    QByteArray credentialsFile; ///< of the server's tools
    QByteArray caFile;
    QByteArray certificateFile;
    QByteArray keyFile;

    QString text() const; ///< the servers, with commas between
};

/// What is wrong with an address as a user has written it, of one server or of several with commas between; empty when nothing is.
/// The answer does not repeat it.
QString addressFault(const QString &url);
/// Reads the secrets for a sound address. Answers an empty text, or what is wrong with them, without any of them.
QString readAddress(const QString &url, FeedAddress &address);

} // namespace terminal
