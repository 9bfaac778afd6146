#include "terminal/market/BarRowParser.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketLimits.h"

#include <QTime>

namespace terminal {
QString BarRowParser::takeMinute(const RowTime &time, BarRow &row) {
    if (time.clock % kMinuteLength != 0) {
        const bool wholeSecond = time.clock % 1000 == 0;
        return QStringLiteral("unknown time \"%1\"")
            .arg(QTime::fromMSecsSinceStartOfDay(time.clock)
                     .toString(wholeSecond ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm:ss.zzz")));
    }
    row.clock = time.clock / kMinuteLength;
    row.digits = false;
    return {};
}

QString BarRowParser::parse(std::string_view line, BarRow &row) {
    mFields.split(line, mColumns.separator);
    if (mFields.count() != mColumns.count) {
        return QStringLiteral("%1 fields where the heading has %2").arg(mFields.count()).arg(mColumns.count);
    }
    RowTime time;
    QString trouble = mTimes.read(mFields, time);
    row.date = time.date;
    row.tradingDay = time.tradingDay;
    row.clock = time.clock;
    row.digits = time.digits;
    if (trouble.isEmpty() && !time.digits) {
        trouble = takeMinute(time, row);
    }
    struct Number {
        int column;
        const char *name;
        double &value;
        double largest;
    };
    const Number numbers[] = {{mColumns.open, "open", row.open, kLargestPrice},
                              {mColumns.high, "high", row.high, kLargestPrice},
                              {mColumns.low, "low", row.low, kLargestPrice},
                              {mColumns.close, "close", row.close, kLargestPrice},
                              {mColumns.volume, "volume", row.volume, kLargestVolume},
                              {mColumns.amount, "amount", row.amount, kLargestAmount},
                              {mColumns.average, "average", row.average, kLargestPrice},
                              {mColumns.previousClose, "previous close", row.previousClose, kLargestPrice}};
    for (const Number &number : numbers) {
        if (trouble.isEmpty()) {
            trouble = mFields.takeNumber(number.column, number.name, number.largest, number.value);
        }
    }
    if (!trouble.isEmpty()) {
        return trouble;
    }
    if (row.close <= 0.0 || row.high <= 0.0 || row.low <= 0.0) {
        return QStringLiteral("a price of zero");
    }
    return row.high < row.low ? QStringLiteral("the high is below the low") : QString();
}

QString BarRowParser::finish(BarRow &row) const {
    if (!row.digits) {
        return {};
    }
    RowTime time{row.date, row.tradingDay, row.clock, row.digits};
    const QString trouble = mTimes.finish(time);
    return trouble.isEmpty() ? takeMinute(time, row) : trouble;
}

} // namespace terminal
