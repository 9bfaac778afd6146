#include "terminal/market/TickRowParser.h"

#include "terminal/market/MarketLimits.h"

#include <cmath>

namespace terminal {
namespace {

/// The nearest multiple of a millionth: files tell 8.18 as 8.179999999999999.
double withoutNoise(double price) {
    constexpr double kFinest = 1e6;
    return std::round(price * kFinest) / kFinest;
}

} // namespace

QString TickRowParser::parse(std::string_view line, TickRow &row) {
    mFields.split(line, mColumns.separator);
    if (mFields.count() != mColumns.count) {
        return QStringLiteral("%1 fields where the heading has %2").arg(mFields.count()).arg(mColumns.count);
    }
    QString trouble = mTimes.read(mFields, row.time);
    struct Number {
        int column;
        const char *name;
        double &value;
        double largest;
    };
    const Number numbers[] = {{mColumns.price, "price", row.price, kLargestPrice},
                              {mColumns.volume, "volume", row.volume, kLargestVolume},
                              {mColumns.amount, "amount", row.amount, kLargestAmount},
                              {mColumns.high, "high", row.high, kLargestPrice},
                              {mColumns.low, "low", row.low, kLargestPrice},
                              {mColumns.previousClose, "previous close", row.previousClose, kLargestPrice}};
    for (const Number &number : numbers) {
        if (trouble.isEmpty()) {
            trouble = mFields.takeNumber(number.column, number.name, number.largest, number.value);
        }
    }
    for (double *price : {&row.price, &row.high, &row.low, &row.previousClose}) {
        *price = withoutNoise(*price);
    }
    if (trouble.isEmpty() && row.volume > 0.0 && row.price <= 0.0) {
        trouble = QStringLiteral("a price of zero");
    }
    return trouble;
}

} // namespace terminal
