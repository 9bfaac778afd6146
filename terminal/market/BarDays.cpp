#include "terminal/market/BarDays.h"

#include "terminal/market/DaySorter.h"

#include <algorithm>
#include <cmath>

namespace terminal {

QDate calendarDate(int yyyymmdd) {
    return QDate(yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100);
}

int dateNumber(const QDate &date) {
    return date.year() * 10000 + date.month() * 100 + date.day();
}

BarFault sortIntoDays(std::vector<BarRow> &rows, const BarReading &reading, BarDays &result) {
    DaySorter sorter(reading, result);
    for (const BarRow &row : rows) {
        const BarFault fault = sorter.check(row);
        if (!fault.isNone()) {
            return fault;
        }
    }
    const BarFault fault = sorter.add(rows);
    if (fault.isNone()) {
        sorter.completeDays();
    }
    return fault;
}

void fillAverages(MinuteBars &bars) {
    double money = 0.0;
    double weighed = 0.0;
    double volume = 0.0;
    for (const MinuteBar &bar : bars) {
        money += bar.amount;
        weighed += bar.price * bar.volume;
    }
    // What one unit of volume is worth at a price of 1: the size of a contract, 1 for a share.
    const double size = weighed > 0.0 ? std::max(std::floor(money / weighed + 0.5), 1.0) : 1.0;
    const bool hasMoney = money > 0.0;
    money = 0.0;
    weighed = 0.0;
    for (MinuteBar &bar : bars) {
        money += bar.amount;
        weighed += bar.price * bar.volume;
        volume += bar.volume;
        if (bar.average == 0.0) {
            const double sum = hasMoney ? money / size : weighed;
            bar.average = volume > 0.0 ? sum / volume : bar.price;
        }
    }
}

} // namespace terminal
