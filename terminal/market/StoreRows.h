#pragma once

#include "terminal/market/StoreFaults.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <functional>

namespace terminal {

/// A reading of one table.
struct StoreQuestion {
    QString table;
    QString columns; ///< separated by ", "
    QString rest; ///< conditions and order, and tables that are joined
    QVariantList values{}; ///< of the placeholders
};

/// The one place where rows of a store enter the program. A row that breaks the rule of its table is told and passed
/// over, so that the ranges and enumerations of what is taken are sound, whoever has written the file.
class StoreRows {
public:
    /// Hears of a sound row; answers whether what it refers to is there, else the row is told and passed over.
    using Take = std::function<bool(const QSqlQuery &row)>;

    StoreRows(const QSqlDatabase &database, StoreFaults &faults) : mDatabase(database), mFaults(faults) {}

    /// Hands over each different combination of the columns once, of the sound rows. The others are told where they are
    /// read whole.
    QSqlError readDistinct(const StoreQuestion &question,
                           const std::function<void(const QSqlQuery &row)> &take);
    /// Hands over the rows of a table in their order. The answer is invalid when all went well.
    QSqlError read(const StoreQuestion &question, const Take &take);

private:
    /// Hands over the rows of a statement. The answer is invalid when all went well.
    QSqlError ask(const QString &statement, const QVariantList &values,
                  const std::function<void(const QSqlQuery &row)> &take) const;

    QSqlDatabase mDatabase;
    StoreFaults &mFaults;
};

} // namespace terminal
