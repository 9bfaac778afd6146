#pragma once

#include <QSqlDatabase>
#include <QString>

#include <memory>

namespace terminal {

/// Milliseconds that a connection waits for another process that writes.
constexpr int kForeignPatience = 3000;

/// What a connection may keep of its file in memory, in kilobytes. Each thread has one, and fills it in hours of use: that of
/// one that only reads is small, since the system keeps the file's pages too.
constexpr int kReadersPages = 500;
constexpr int kWritersPages = 16000;
void keepPages(const QSqlDatabase &database, int kilobytes);

/// The connections of one SQLite file: each thread that asks gets its own, which ends with the thread or with this
/// object, whichever goes first. Other threads have to be done with the file by then.
class SqlConnections {
public:
    explicit SqlConnections(const QString &path);
    ~SqlConnections();
    SqlConnections(const SqlConnections &) = delete;
    SqlConnections &operator=(const SqlConnections &) = delete;

    /// The calling thread's connection, opened when it is new. It is not open when that failed; lastError() says why.
    QSqlDatabase forThisThread();
    /// The calling thread's connection has failed in a way that may pass, as one that was opened for reading alone while
    /// the program had too many files open: it is opened anew when the thread asks next.
    void reopenForThisThread();

private:
    struct State;
    struct ThreadEnd;
    std::shared_ptr<State> mState;
};

} // namespace terminal
