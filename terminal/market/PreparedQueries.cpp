#include "terminal/market/PreparedQueries.h"

#include <QSqlError>

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
    const auto found = mQueries.find(statement);
    if (found != mQueries.end()) {
        QSqlQuery query = *found;
        mQueries.erase(found);
        return query;
    }
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.prepare(statement);
    return query;
}

void PreparedQueries::giveBack(const QSqlDatabase &database, const QString &statement, QSqlQuery query) {
    query.finish();
    if (database.isOpen() && mConnection == database.connectionName() && mQueries.size() < kMostKept) {
        mQueries.insert(statement, query);
    }
}

} // namespace terminal
