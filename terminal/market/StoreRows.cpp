#include "terminal/market/StoreRows.h"

#include "terminal/market/StoreRules.h"

#include <QSqlRecord>
#include <QStringList>

namespace terminal {
namespace {

/// The key of a row, which stands behind its other columns.
QString nameOfRow(const QSqlQuery &row, const QString &key) {
    constexpr int kMost = 40; ///< characters of a value
    const QStringList columns = key.split(QStringLiteral(", "));
    const int first = row.record().count() - columns.size();
    QStringList parts;
    for (int i = 0; i < columns.size(); ++i) {
        QString value = row.value(first + i).toString().left(kMost);
        for (QChar &c : value) {
            c = c.isPrint() ? c : QChar('?');
        }
        parts.append(columns[i] + QLatin1Char(' ') + value);
    }
    return QLatin1Char('(') + parts.join(QStringLiteral(", ")) + QLatin1Char(')');
}

} // namespace

QSqlError StoreRows::read(const StoreQuestion &question, const Take &take) {
    const StoreRule &rule = storeRule(question.table);
    const int sound = question.columns.count(QLatin1Char(',')) + 1;
    QSqlQuery query(mDatabase);
    query.setForwardOnly(true);
    const bool isPrepared =
        query.prepare(QStringLiteral("SELECT %1, (%2) IS TRUE, %3 FROM %4 %5")
                          .arg(question.columns, rule.condition, rule.key, question.table, question.rest));
    for (const QVariant &value : question.values) {
        query.addBindValue(value);
    }
    if (!isPrepared || !query.exec()) {
        const QSqlError error = query.lastError();
        // A connection that never was open tells none.
        return error.isValid()
                   ? error
                   : QSqlError(QString(), QStringLiteral("the store is not open"), QSqlError::ConnectionError);
    }
    while (query.next()) {
        if (!query.value(sound).toBool()) {
            mFaults.tell(question.table, nameOfRow(query, rule.key), QStringLiteral("a value out of range"));
        } else if (!take(query)) {
            mFaults.tell(question.table, nameOfRow(query, rule.key),
                         QStringLiteral("refers to what is not there"));
        }
    }
    return query.lastError();
}

} // namespace terminal
