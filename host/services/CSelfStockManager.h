#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QString>
#include <QVector>

namespace TC {

/// The user's own lists of instruments. User-interface thread.
class TIMESHARE_EXPORT CSelfStockManager {
public:
    virtual ~CSelfStockManager() = default;

    /// Names of the lists, in the order of showing; there is always one at least.
    virtual QVector<QString> groups() = 0;
    /// Keys of a list, in order; empty for an unknown one.
    virtual QVector<QString> stocks(const QString &group) = 0;
    /// Adds those that a list lacks at its end; a list that is not there is made. Answers why not, in words for the
    /// user, and then nothing has changed; an empty text when it is done.
    virtual QString addStocks(const QString &group, const QVector<QString> &keys) = 0;
    /// Takes instruments off a list. Answers as addStocks does.
    virtual QString removeStocks(const QString &group, const QVector<QString> &keys) = 0;
};

} // namespace TC
