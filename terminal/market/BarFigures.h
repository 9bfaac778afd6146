#pragma once

#include "terminal/market/BarRowParser.h"

#include <QtGlobal>

namespace terminal {

/// What all rows of an instrument tell together, whatever their order.
class BarFigures {
public:
    void add(const BarRow &row);
    void addPrice(double price);
    /// A minute since midnight at which it traded.
    void addMinute(int minute);

    /// The largest step, not below 0.0001, that all prices are multiples of; 0.01 without prices.
    double priceStep() const;
    /// Where the night of a product that is not known ends, by its minutes: 1380, 60, 150, or 0 without a night.
    int nightEnd() const;
    /// The sum of the amounts, and of the closes weighed by volume.
    double money() const { return mMoney; }
    double weighed() const { return mWeighed; }

private:
    qint64 mStep = 0; ///< in the finest steps
    int mEvening = 0; ///< latest minutes
    int mMorning = 0;
    double mMoney = 0.0;
    double mWeighed = 0.0;
};

} // namespace terminal
