#include "statistics/StretchClock.h"

#include "host/toolkit/Text.h"

namespace TC {

qint64 secondOf(const QDate &date, const QTime &time) {
    return GZ::secondsOf(QDateTime(date, time));
}

QDate dateOf(qint64 second) {
    return GZ::secondToQDateTime(second).date();
}

QTime clockOf(qint64 second) {
    return GZ::secondToQDateTime(second).time();
}

} // namespace TC
