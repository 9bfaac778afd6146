#pragma once

#include <QSqlDatabase>
#include <QSqlError>

#include <vector>

struct sqlite3_stmt;

namespace terminal {

/// Inserts rows of numbers into a table of an SQLite store, many with one statement, and without a QVariant for each value.
/// Rows wait until there are enough of them or flush() is called. The database has to stay open; rows that still wait when
/// this goes are not written. The first error stays, and nothing is written after it.
class RowInserter {
public:
    static constexpr int kTogether = 24; ///< rows of one statement

    RowInserter(const QSqlDatabase &database, const QString &table, int columns);
    ~RowInserter();
    RowInserter(const RowInserter &) = delete;
    RowInserter &operator=(const RowInserter &) = delete;

    /// The next value of the row. A row is whole with its last column.
    RowInserter &add(qint64 value);
    RowInserter &add(double value);
    /// Writes what waits. False after an error, as is every addition.
    bool flush();
    bool isGood() const { return !mError.isValid(); }
    const QSqlError &error() const { return mError; }

private:
    struct Value {
        bool isWhole = true;
        qint64 whole = 0;
        double real = 0.0;
    };
    using Values = std::vector<Value>;

    RowInserter &add(const Value &value);
    sqlite3_stmt *prepare(const QString &table, int rows);
    void run(sqlite3_stmt *statement, Values::const_iterator from, Values::const_iterator to);
    void fail(const char *text, int code);

    QSqlDatabase mDatabase;
    const int mColumns;
    Values mWaiting; ///< of whole rows and one that is being made
    QSqlError mError;
    sqlite3_stmt *const mOne; ///< of a row, of kTogether rows; null after an error
    sqlite3_stmt *const mMany;
};

} // namespace terminal
