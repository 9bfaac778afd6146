#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace TC {

/// Range of a market replay, as the text of a region tells it.
struct ReplayRange {
    qint64 start = 0; ///< seconds since the epoch
    qint64 end = 0;
    QString key; ///< of the instrument; may be empty

    /// Reads "end index,start,end" or "end index,start,end,key". A number that cannot be read is 0.
    static ReplayRange fromText(const QString &text) {
        const QStringList fields = text.split(QLatin1Char(','));
        return {fields.value(1).toLongLong(), fields.value(2).toLongLong(), fields.value(3)};
    }
};

/// Milliseconds of seconds, held to what 64 bits can take.
inline qint64 toMilliseconds(qint64 seconds) {
    constexpr qint64 most = std::numeric_limits<qint64>::max() / 1000;
    return std::clamp(seconds, -most, most) * 1000;
}

} // namespace TC
