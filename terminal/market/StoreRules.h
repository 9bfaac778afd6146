#pragma once

#include <QString>
#include <QVector>

namespace terminal {

/// What every row of a table has to fulfil. The tables hold new rows to it, and each reading looks at the old ones.
struct StoreRule {
    QString table;
    QString key; ///< columns that name a row, separated by ", "
    QString condition; ///< in SQL, of the row's own columns
};

/// The rules of all tables whose rows are read, in the order in which the tables refer to each other.
const QVector<StoreRule> &storeRules();
/// The rule of one of those tables.
const StoreRule &storeRule(const QString &table);

} // namespace terminal
