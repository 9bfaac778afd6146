#include "statistics/OrderMoment.h"

#include "host/toolkit/Text.h"
#include "statistics/StretchClock.h"

namespace TC {

std::optional<qint64> orderMoment(const kvservice::COrderDetail &order) {
    const QDate date = QDate::fromString(GZ::sToQs(order.mDate).trimmed(), QStringLiteral("yyyyMMdd"));
    const QString clock = GZ::sToQs(order.mTime).trimmed();
    const bool hasColons = clock.contains(QLatin1Char(':'));
    const QTime time =
        QTime::fromString(clock, hasColons ? QStringLiteral("hh:mm:ss") : QStringLiteral("hhmmss"));
    // Read apart: a time that cannot be read would be midnight in a joined value.
    if (!date.isValid() || !time.isValid()) {
        return std::nullopt;
    }
    return secondOf(date, time);
}

} // namespace TC
