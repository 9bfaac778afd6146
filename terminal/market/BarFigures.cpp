#include "terminal/market/BarFigures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace terminal {
namespace {

constexpr double kFinest = 10000.0; ///< finest steps of one

} // namespace

void BarFigures::add(const BarRow &row) {
    for (const double price : {row.high, row.low, row.close}) {
        addPrice(price);
    }
    addMinute(row.clock);
    mMoney += row.amount;
    mWeighed += row.close * row.volume;
}

void BarFigures::addPrice(double price) {
    const auto steps = static_cast<qint64>(std::llround(std::min(price, 1e12) * kFinest));
    if (mStep == 0 || steps % mStep != 0) { // most are multiples
        mStep = std::gcd(mStep, steps);
    }
}

void BarFigures::addMinute(int minute) {
    mEvening = minute >= 1260 ? std::max(mEvening, minute) : mEvening;
    mMorning = minute < 300 && minute > 0 ? std::max(mMorning, minute) : mMorning;
}

double BarFigures::priceStep() const {
    return mStep > 0 ? static_cast<double>(mStep) / kFinest : 0.01;
}

int BarFigures::nightEnd() const {
    if (mMorning > 0 || mEvening > 1380) {
        return mMorning > 60 ? 150 : 60;
    }
    return mEvening > 0 ? 1380 : 0;
}

} // namespace terminal
