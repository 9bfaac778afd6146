#include "terminal/market/PreparedQueries.h"

#include <QSqlError>

#include <utility>

namespace terminal {

PreparedQueries &PreparedQueries::ofThisThread() {
    static thread_local PreparedQueries queries;
    return queries;
}

void PreparedQueries::turnTo(const QSqlDatabase &database) {
    if (mConnection != database.connectionName()) {
        mQueries.clear();
        mConnection = database.connectionName();
    }
}

QSqlQuery PreparedQueries::take(const QSqlDatabase &database, const QString &statement) {
    turnTo(database);
    if (auto kept = mQueries.extract(statement)) {
        return std::move(kept.mapped()); // NOLINT(performance-move-const-arg): a query moves in Qt 6
    }
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(statement);
    return query;
}

void PreparedQueries::giveBack(const QSqlDatabase &database, const QString &statement, QSqlQuery query) {
    query.finish();
    if (database.isOpen() && mConnection == database.connectionName() && count() < kMostKept) {
        mQueries.emplace(statement, std::move(query));
    }
}

} // namespace terminal
