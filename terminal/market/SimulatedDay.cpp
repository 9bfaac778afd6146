#include "terminal/market/SimulatedDay.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedRandom.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr int kAfterHoursFrom = 906; ///< first minute of fixed-price trading that can have a deal
constexpr double kLimitDayChance = 1.0 / 50.0;
constexpr double kAuctionShare = 0.015; ///< of the day's volume, in the opening auction
constexpr double kCommonPart = 0.6; ///< of a minute's move, shared by all instruments
constexpr double kOwnPart = 0.8;

/// Whether the last minutes before the close are a call auction without deals.
bool hasClosingAuction(const Instrument &instrument) {
    const bool market = instrument.market == QLatin1String("SH") || instrument.market == QLatin1String("SZ");
    return market && instrument.kind != InstrumentKind::Index;
}

/// Volume of each position as a share of the day, before chance: high at both ends, a little after a break.
std::vector<double> volumeShape(size_t count) {
    std::vector<double> shape(count);
    for (size_t i = 0; i < count; ++i) {
        const double fromStart = static_cast<double>(i);
        const double fromEnd = static_cast<double>(count - 1 - i);
        shape[i] = 0.6 + 2.4 / (1.0 + fromStart / 10.0) + 1.6 / (1.0 + fromEnd / 8.0);
    }
    return shape;
}

/// A day in the making: the state that goes from minute to minute.
class DayMaker {
public:
    DayMaker(const SimulatedInstrument &instrument, const SimulatedDayInput &input)
        : mInstrument(instrument), mInput(input),
          mRandom(SimulatedRandom::mix(SimulatedRandom::mix(input.seed, instrument.instrument.key()),
                                       static_cast<quint64>(input.day.toJulianDay()))),
          mTimes(instrument.instrument.sessions.times(input.day, input.evening)),
          mLimits(priceLimits(instrument, input.previousClose)) {}

    MinuteBars make() {
        if (mTimes.empty() || !(mInput.previousClose > 0.0)) {
            return {};
        }
        planDay();
        for (size_t i = 0; i < mTimes.size(); ++i) {
            addPosition(i);
        }
        return std::move(mBars);
    }

private:
    void planDay() {
        const double volatility = mInstrument.volatility;
        mPrice = fit(mInput.previousClose * (1.0 + volatility * 0.35 * mRandom.normal()));
        mDrift = volatility * 0.35 * mRandom.normal() / static_cast<double>(mTimes.size());
        if (mInstrument.limit > 0.0 && mRandom.uniform() < kLimitDayChance) {
            const double way = mRandom.uniform() < 0.6 ? 1.0 : -1.0;
            mDrift = way * mInstrument.limit * 2.0 / static_cast<double>(mTimes.size());
        }
        mSigma = volatility / std::sqrt(static_cast<double>(mTimes.size()));
        mShape = volumeShape(mTimes.size());
        double sum = 0.0;
        for (double share : mShape) {
            sum += share;
        }
        const double level = mInstrument.dayVolume * (0.6 + 0.9 * mRandom.uniform() * mRandom.uniform()) / sum;
        for (double &share : mShape) {
            share *= level;
        }
        if (mRandom.uniform() < mInstrument.haltChance) {
            mHaltFirst =
                mTimes.size() / 5 + static_cast<size_t>(mRandom.below(static_cast<int>(mTimes.size() / 2)));
            mHaltLast = mHaltFirst + 9;
        }
    }

    void addPosition(size_t i) {
        const int minute = minuteAt(mTimes[i]);
        const double chance = mRandom.uniform();
        if (i == 0) {
            addFlat(i, step(mInstrument.dayVolume * kAuctionShare * (0.5 + mRandom.uniform())));
        } else if (i >= mHaltFirst && i <= mHaltLast) {
            return;
        } else if (isShare() && minute > kStockClose) {
            addAfterClose(i, minute);
        } else if (hasClosingAuction(mInstrument.instrument) && minute >= kStockClose - 2 &&
                   minute < kStockClose) {
            addFlat(i, 0.0);
        } else if (chance >= mInstrument.quietShare) {
            addTraded(i);
        }
    }

    bool isShare() const {
        return mInstrument.instrument.market == QLatin1String("SH") ||
               mInstrument.instrument.market == QLatin1String("SZ");
    }

    void addAfterClose(size_t i, int minute) {
        if (minute >= kAfterHoursFrom) {
            addFlat(i, step(mShape[i] * 0.05 * mRandom.uniform()));
        }
    }

    /// A minute at one price.
    void addFlat(size_t i, double volume) {
        add({mTimes[i], mPrice, mPrice, mPrice, mPrice, 0.0, volume, 0.0}, mPrice);
    }

    void addTraded(size_t i) {
        SimulatedRandom market(SimulatedRandom::mix(mInput.seed, static_cast<quint64>(mTimes[i])));
        const double common = market.normal();
        MinuteBar bar{mTimes[i], 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
        double sum = 0.0;
        constexpr int kSteps = 4;
        for (int k = 0; k < kSteps; ++k) {
            const double move =
                mSigma * (kCommonPart * common / kSteps + kOwnPart * mRandom.normal() / 2.0) + mDrift / kSteps;
            mExact = clampToLimits(mExact * (1.0 + move));
            mPrice = fit(mExact);
            bar.open = k == 0 ? mPrice : bar.open;
            bar.high = k == 0 ? mPrice : std::max(bar.high, mPrice);
            bar.low = k == 0 ? mPrice : std::min(bar.low, mPrice);
            sum += mPrice;
        }
        bar.price = mPrice;
        const double noise = mRandom.uniform();
        bar.volume = std::max<double>(step(mShape[i] * (0.3 + 2.1 * noise * noise)), mInstrument.volumeStep);
        add(bar, sum / kSteps);
    }

    void add(MinuteBar bar, double meanPrice) {
        if (mExact <= 0.0) {
            mExact = mPrice;
        }
        bar.amount = meanPrice * bar.volume * mInstrument.multiplier;
        mTurnover += meanPrice * bar.volume;
        mVolume += bar.volume;
        bar.average = mVolume > 0.0 ? mTurnover / mVolume : bar.price;
        mBars.push_back(bar);
    }

    double step(double volume) const {
        return std::floor(volume / mInstrument.volumeStep + 0.5) * mInstrument.volumeStep;
    }
    double clampToLimits(double price) const {
        return mLimits.first > 0.0 ? std::clamp(price, mLimits.second, mLimits.first) : price;
    }
    double fit(double price) const {
        const double tick = mInstrument.instrument.priceTick;
        return std::max(roundToTick(clampToLimits(price), tick), tick);
    }

    const SimulatedInstrument &mInstrument;
    const SimulatedDayInput &mInput;
    SimulatedRandom mRandom;
    const std::vector<qint64> mTimes;
    const QPair<double, double> mLimits;
    std::vector<double> mShape;
    double mPrice = 0.0; ///< last price, on the tick
    double mExact = 0.0; ///< the walk under it
    double mDrift = 0.0;
    double mSigma = 0.0;
    double mTurnover = 0.0;
    double mVolume = 0.0;
    size_t mHaltFirst = ~size_t(0);
    size_t mHaltLast = 0;
    MinuteBars mBars;
};

} // namespace

double roundToTick(double price, double tick) {
    // Divided by the reciprocal where that is whole: 0.01 has no exact double, 100 has.
    const double perUnit = std::floor(1.0 / tick + 0.5);
    const bool whole = perUnit >= 1.0 && std::fabs(perUnit * tick - 1.0) < 1e-9;
    return whole ? std::floor(price * perUnit + 0.5) / perUnit : std::floor(price / tick + 0.5) * tick;
}

QPair<double, double> priceLimits(const SimulatedInstrument &instrument, double previousClose) {
    if (instrument.limit <= 0.0) {
        return {0.0, 0.0};
    }
    const double tick = instrument.instrument.priceTick;
    return {roundToTick(previousClose * (1.0 + instrument.limit), tick),
            roundToTick(previousClose * (1.0 - instrument.limit), tick)};
}

double simulatedNetValue(const QString &key, int day, double previousClose) {
    constexpr double kLargestPremium = 0.002;
    constexpr double kNetValueStep = 0.0001;
    SimulatedRandom random(
        SimulatedRandom::mix(SimulatedRandom::mix(kMarketSeed, key), static_cast<quint64>(day)));
    const double premium = kLargestPremium * (2.0 * random.uniform() - 1.0);
    return roundToTick(previousClose / (1.0 + premium), kNetValueStep);
}

MinuteBars simulateDay(const SimulatedInstrument &instrument, const SimulatedDayInput &input) {
    return DayMaker(instrument, input).make();
}

} // namespace terminal
