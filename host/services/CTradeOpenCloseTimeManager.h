#pragma once

#include "host/Export.h"
#include "host/services/CSingletonT.h"

#include <QPair>
#include <QString>
#include <QVector>

namespace TC {

/// Trading sessions of instruments.
class TIMESHARE_EXPORT CTradeOpenCloseTimeManager {
public:
    virtual ~CTradeOpenCloseTimeManager() = default;

    /// When there is a table for the instrument, fills the sessions, pairs of first and last minute since
    /// midnight, and the number of positions of a day, and answers true. False leaves both alone.
    virtual bool getTradeTime(const QString &market, const QString &code, QVector<QPair<int, int>> &sessions,
                              int &count) = 0;
    /// Whether the instrument trades in a night session.
    virtual bool hasNightQuoter(const QString &market, const QString &code) = 0;
};

} // namespace TC
