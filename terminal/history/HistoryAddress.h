#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <chrono>
#include <utility>

namespace terminal {

/// Where a server of history is, and what it wants to see. The password comes from the environment or from a file that the
/// environment names, never with the address: that is seen by others.
///
/// TIMESHARE_HISTORY_USER and _PASSWORD; TIMESHARE_HISTORY_CREDENTIALS names a file with lines user=... and password=....
/// Whatever is given in none of these ways is what the client library of the server takes: PGPASSFILE, PGUSER, PGSSLMODE and so
/// on.
struct HistoryAddress {
    /// One of the machines that have the history.
    struct Host {
        QByteArray name;
        int port = 0; ///< 0 for the library's own
    };
    QVector<Host> hosts; ///< in the order in which they are tried
    /// Names and values as the library takes them, the same for all hosts, without the password.
    QVector<std::pair<QByteArray, QByteArray>> settings;
    QByteArray password; ///< empty for the library's own ways
    QByteArray session; ///< which of the hosts will do, as the library's target_session_attrs; empty for any
    std::chrono::seconds connectWait{0}; ///< for each host; 0 for the caller's patience
};

/// What is wrong with an address as a user has written it, of the form
/// postgres://USER@HOST:PORT,HOST:PORT/DATABASE?sslmode=...; empty when nothing is. The answer does not repeat it.
QString historyAddressFault(const QString &url);
/// Reads the secrets for a sound address. Answers an empty text, or what is wrong with them, without any of them.
QString readHistoryAddress(const QString &url, HistoryAddress &address);

} // namespace terminal
