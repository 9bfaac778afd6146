#include "terminal/history/HistoryServer.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketLimits.h"

#include <cmath>

#ifdef TIMESHARE_WITH_POSTGRES
#include "terminal/history/PgHistoryServer.h"
#endif

namespace terminal {
namespace {

constexpr qint64 kLongestBefore = 16 * 86400 * 1000LL; ///< a night may be held two weeks before its day
constexpr qint64 kLongestAfter = 2 * 86400 * 1000LL;
constexpr double kLargestSum = 1e30; ///< what the store takes of volumes and amounts

bool isServedPrice(double price) {
    return price >= 0.0 && price <= kLargestPrice;
}

bool isServedBar(const MinuteBar &bar, int day) {
    const qint64 midnight = day * 1000LL;
    const auto isSum = [](double sum) { return sum >= 0.0 && sum <= kLargestSum; };
    return bar.time % kMinuteLength == 0 && bar.time >= midnight - kLongestBefore &&
           bar.time <= midnight + kLongestAfter && isServedPrice(bar.open) && isServedPrice(bar.high) &&
           isServedPrice(bar.low) && isServedPrice(bar.price) && bar.price > 0.0 && bar.low <= bar.high &&
           isSum(bar.average) && isSum(bar.volume) && isSum(bar.amount);
}

} // namespace

DaySessions sessionsOf(const QVector<int> &minutes) {
    DaySessions::Table table;
    for (int i = 0; i + 1 < minutes.size(); i += 2) {
        const int first = minutes[i];
        const int last = minutes[i + 1];
        if (first < 1 || last > 1440 || first > last) {
            return {};
        }
        table.append({first, last});
    }
    return minutes.size() % 2 == 0 && areApart(table) ? DaySessions(table) : DaySessions();
}

QString faultOf(const ServedDay &day) {
    qint64 before = 0;
    for (const MinuteBar &bar : day.bars) {
        if (!isServedBar(bar, day.day) || bar.time <= before) {
            return QStringLiteral("no bar at %1")
                .arg(std::abs(bar.time) < 4102444800000LL
                         ? marketDateTime(bar.time).toString(QStringLiteral("yyyy-MM-dd HH:mm"))
                         : QString::number(bar.time));
        }
        before = bar.time;
    }
    if (day.bars.empty() || day.count != static_cast<int>(day.bars.size())) {
        return QStringLiteral("%1 bars of %2").arg(day.bars.size()).arg(day.count);
    }
    return isServedPrice(day.previousClose) ? QString() : QStringLiteral("no close before it");
}

std::unique_ptr<HistoryServer> makePgHistoryServer(const HistoryAddress &address,
                                                   std::chrono::milliseconds patience) {
#ifdef TIMESHARE_WITH_POSTGRES
    return std::make_unique<PgHistoryServer>(address, patience);
#else
    Q_UNUSED(address)
    Q_UNUSED(patience)
    return nullptr;
#endif
}

} // namespace terminal
