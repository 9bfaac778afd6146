#pragma once

#include <QString>
#include <QVector>

namespace terminal {

/// Where history that the store lacks can be had. Any thread; blocks.
class HistorySource {
public:
    virtual ~HistorySource() = default;

    /// Trading days of an instrument, between two times in milliseconds since the epoch, that the store lacks and the
    /// source has; ascending.
    virtual QVector<int> missingDays(const QString &key, qint64 start, qint64 end) = 0;
    /// Brings one of them into the store. Answers an empty text or what went wrong.
    virtual QString fetchDay(const QString &key, int day) = 0;
};

} // namespace terminal
