#include "terminal/market/StoreRows.h"

#include "terminal/market/PreparedQueries.h"
#include "terminal/market/StoreRules.h"

#include <QSqlRecord>
#include <QStringList>

#include <utility>

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

QSqlError StoreRows::ask(const QString &statement, const QVariantList &values,
                         const std::function<void(const QSqlQuery &row)> &take) const {
    PreparedQueries &queries = PreparedQueries::ofThisThread();
    QSqlQuery query = queries.take(mDatabase, statement);
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    if (query.lastError().isValid() || !query.exec()) {
        const QSqlError error = query.lastError();
        // A connection that never was open tells none.
        return error.isValid()
                   ? error
                   : QSqlError(QString(), QStringLiteral("the store is not open"), QSqlError::ConnectionError);
    }
    while (query.next()) {
        take(query);
    }
    const QSqlError error = query.lastError();
    if (!error.isValid()) {
        queries.giveBack(mDatabase, statement, std::move(query)); // NOLINT(performance-move-const-arg)
    }
    return error;
}

QSqlError StoreRows::readDistinct(const StoreQuestion &question,
                                  const std::function<void(const QSqlQuery &row)> &take) {
    return ask(QStringLiteral("SELECT DISTINCT %1, (%2) IS TRUE FROM %3 %4")
                   .arg(question.columns, storeRule(question.table).condition, question.table, question.rest),
               question.values, [sound = soundColumn(question), &take](const QSqlQuery &row) {
                   if (row.value(sound).toBool()) {
                       take(row);
                   }
               });
}

QSqlError StoreRows::read(const StoreQuestion &question, const Take &take) {
    const StoreRule &rule = storeRule(question.table);
    const auto takeSound = [&, sound = soundColumn(question)](const QSqlQuery &row) {
        if (!row.value(sound).toBool()) {
            mFaults.tell(question.table, nameOfRow(row, rule.key), QStringLiteral("a value out of range"));
        } else if (!take(row)) {
            mFaults.tell(question.table, nameOfRow(row, rule.key),
                         QStringLiteral("refers to what is not there"));
        }
    };
    return ask(QStringLiteral("SELECT %1, (%2) IS TRUE, %3 FROM %4 %5")
                   .arg(question.columns, rule.condition, rule.key, question.table, question.rest),
               question.values, takeSound);
}

} // namespace terminal
