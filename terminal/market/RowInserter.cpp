#include "terminal/market/RowInserter.h"

#include <QSqlDriver>
#include <QStringList>
#include <QVariant>

#include <cstring>

#include <sqlite3.h>

namespace terminal {
namespace {

/// The handle of Qt's driver; null for another driver, or while it is closed.
sqlite3 *handleOf(const QSqlDatabase &database) {
    const QVariant handle = database.isOpen() ? database.driver()->handle() : QVariant();
    return handle.isValid() && std::strcmp(handle.typeName(), "sqlite3*") == 0
               ? *static_cast<sqlite3 *const *>(handle.constData())
               : nullptr;
}

} // namespace

RowInserter::RowInserter(const QSqlDatabase &database, const QString &table, int columns)
    : mDatabase(database), mColumns(columns), mOne(prepare(table, 1)), mMany(prepare(table, kTogether)) {
    mWaiting.reserve(std::size_t(columns) * kTogether);
}

RowInserter::~RowInserter() {
    sqlite3_finalize(mOne);
    sqlite3_finalize(mMany);
}

sqlite3_stmt *RowInserter::prepare(const QString &table, int rows) {
    sqlite3 *handle = handleOf(mDatabase);
    if (!handle) {
        fail("the store is not open", SQLITE_MISUSE);
        return nullptr;
    }
    QStringList row, all;
    for (int i = 0; i < mColumns; ++i) {
        row.append(QStringLiteral("?"));
    }
    for (int i = 0; i < rows; ++i) {
        all.append(QLatin1Char('(') + row.join(QLatin1Char(',')) + QLatin1Char(')'));
    }
    const QByteArray text =
        QStringLiteral("INSERT INTO %1 VALUES %2").arg(table, all.join(QLatin1Char(','))).toUtf8();
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v3(handle, text.constData(), text.size(), SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr) != SQLITE_OK) {
        fail(sqlite3_errmsg(handle), sqlite3_extended_errcode(handle));
    }
    return statement;
}

void RowInserter::fail(const char *text, int code) {
    if (isGood()) {
        mError =
            QSqlError(QString(), QString::fromUtf8(text), QSqlError::StatementError, QString::number(code));
    }
}

RowInserter &RowInserter::add(qint64 value) {
    return add(Value{true, value, 0.0});
}

RowInserter &RowInserter::add(double value) {
    return add(Value{false, 0, value});
}

RowInserter &RowInserter::add(const Value &value) {
    mWaiting.push_back(value);
    if (mWaiting.size() == std::size_t(mColumns) * kTogether) {
        run(mMany, mWaiting.begin(), mWaiting.end());
        mWaiting.clear();
    }
    return *this;
}

bool RowInserter::flush() {
    for (auto row = mWaiting.begin(); mWaiting.end() - row >= mColumns; row += mColumns) {
        run(mOne, row, row + mColumns);
    }
    mWaiting.clear();
    return isGood();
}

void RowInserter::run(sqlite3_stmt *statement, Values::const_iterator from, Values::const_iterator to) {
    if (!isGood()) {
        return;
    }
    for (int place = 1; from != to; ++from, ++place) {
        const int code = from->isWhole ? sqlite3_bind_int64(statement, place, from->whole)
                                       : sqlite3_bind_double(statement, place, from->real);
        if (code != SQLITE_OK) {
            fail(sqlite3_errstr(code), code);
            return;
        }
    }
    if (sqlite3_step(statement) != SQLITE_DONE) {
        sqlite3 *handle = sqlite3_db_handle(statement);
        fail(sqlite3_errmsg(handle), sqlite3_extended_errcode(handle));
    }
    sqlite3_reset(statement);
}

} // namespace terminal
