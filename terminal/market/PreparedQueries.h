#pragma once

#include <QHash> // that of QString for the standard library too
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <unordered_map>

namespace terminal {

/// The questions that a thread has asked of its connection, kept ready to be asked again: to make one ready takes SQLite
/// several times as long as to answer it with a few rows.
///
/// Those of one connection are kept, which is the one that was asked last. A query that is out is not here: who asks the same
/// while it reads the rows gets another one. A query that lies here holds nothing of the store.
class PreparedQueries {
public:
    static constexpr int kMostKept = 64; ///< a program asks the same few questions

    /// Those of the calling thread.
    static PreparedQueries &ofThisThread();

    /// A query for one way through its rows, prepared with this statement; one whose lastError() tells when that failed.
    QSqlQuery take(const QSqlDatabase &database, const QString &statement);
    /// It was taken with this statement, and its rows are no longer needed.
    void giveBack(const QSqlDatabase &database, const QString &statement, QSqlQuery query);
    /// Before the connection is closed.
    void forget() { mQueries.clear(); }
    int count() const { return int(mQueries.size()); }

private:
    void turnTo(const QSqlDatabase &database);

    QString mConnection;
    std::unordered_map<QString, QSqlQuery> mQueries; ///< by statement
};

} // namespace terminal
