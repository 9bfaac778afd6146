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

/// The column behind those of a question, which tells whether the row is sound.
int soundColumn(const StoreQuestion &question) {
    return question.columns.count(QLatin1Char(',')) + 1;
}

} // namespace

QSqlError StoreRows::start(QSqlQuery &query, const QString &select, const QVariantList &values) const {
    query.setForwardOnly(true);
    const bool isPrepared = query.prepare(select);
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    if (isPrepared && query.exec()) {
        return {};
    }
    const QSqlError error = query.lastError();
    // A connection that never was open tells none.
    return error.isValid()
               ? error
               : QSqlError(QString(), QStringLiteral("the store is not open"), QSqlError::ConnectionError);
}

QSqlError StoreRows::readDistinct(const StoreQuestion &question,
                                  const std::function<void(const QSqlQuery &row)> &take) {
    QSqlQuery query(mDatabase);
    const QSqlError error =
        start(query,
              QStringLiteral("SELECT DISTINCT %1, (%2) IS TRUE FROM %3 %4")
                  .arg(question.columns, storeRule(question.table).condition, question.table, question.rest),
              question.values);
    if (error.isValid()) {
        return error;
    }
    while (query.next()) {
        if (query.value(soundColumn(question)).toBool()) {
            take(query);
        }
    }
    return query.lastError();
}

QSqlError StoreRows::read(const StoreQuestion &question, const Take &take) {
    const StoreRule &rule = storeRule(question.table);
    const int sound = soundColumn(question);
    QSqlQuery query(mDatabase);
    const QSqlError error =
        start(query,
              QStringLiteral("SELECT %1, (%2) IS TRUE, %3 FROM %4 %5")
                  .arg(question.columns, rule.condition, rule.key, question.table, question.rest),
              question.values);
    if (error.isValid()) {
        return error;
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
