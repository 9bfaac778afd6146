#include "terminal/market/StageRanking.h"

#include "host/services/CHostClock.h"
#include "host/toolkit/PriceDecimals.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/SimulatedExchange.h"
#include "terminal/market/TradedSpan.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace terminal {
namespace {

constexpr int kStep = 64; ///< instruments between two looks at the progress

/// The look-ups of one ranking: what SQLite adds up itself is not read row by row.
class StageQueries {
public:
    explicit StageQueries(CMarketStore &store) : mSpan(store.connection()), mPrice(store.connection()) {
        mSpan.setForwardOnly(true);
        mSpan.prepare(QStringLiteral(
            "SELECT count(*), min(time), max(time), max(price), min(price), avg(price), sum(volume), "
            "sum(CASE WHEN amount > 0 THEN amount ELSE ? * price * volume END) "
            "FROM minute_bars WHERE instrument = ? AND day = ? AND time BETWEEN ? AND ?"));
        mPrice.setForwardOnly(true);
        mPrice.prepare(
            QStringLiteral("SELECT price FROM minute_bars WHERE instrument = ? AND day = ? AND time <= ? "
                           "ORDER BY time DESC LIMIT 1"));
    }

    bool figures(const Instrument &of, const TradedSpan &span, StageFigures &figures) {
        const qint64 instrument = of.id;
        mSpan.bindValue(0, of.isIndex() ? 0 : 1); // a price of an index is no money
        mSpan.bindValue(1, instrument);
        mSpan.bindValue(2, span.day);
        mSpan.bindValue(3, span.start);
        mSpan.bindValue(4, span.end);
        if (!mSpan.exec() || !mSpan.next() || mSpan.value(0).toInt() == 0) {
            return false;
        }
        const qint64 firstTime = mSpan.value(1).toLongLong();
        const qint64 lastTime = mSpan.value(2).toLongLong();
        figures.high = mSpan.value(3).toDouble();
        figures.low = mSpan.value(4).toDouble();
        figures.average = mSpan.value(5).toDouble();
        figures.volume = mSpan.value(6).toDouble();
        figures.amount = mSpan.value(7).toDouble();
        mSpan.finish();
        figures.last = priceAt(instrument, span.day, lastTime);
        figures.first = priceAt(instrument, span.day, span.start);
        if (!(figures.first > 0.0)) {
            figures.first = priceAt(instrument, span.day, firstTime);
        }
        figures.high = std::max(figures.high, figures.first);
        figures.low = std::min(figures.low, figures.first);
        return true;
    }

private:
    /// The last price of the day up to a time; 0 when there is none.
    double priceAt(qint64 instrument, int day, qint64 time) {
        mPrice.bindValue(0, instrument);
        mPrice.bindValue(1, day);
        mPrice.bindValue(2, time);
        const double price = mPrice.exec() && mPrice.next() ? mPrice.value(0).toDouble() : 0.0;
        mPrice.finish();
        return price;
    }

    QSqlQuery mSpan;
    QSqlQuery mPrice;
};

double ratio(double part, double whole) {
    return whole != 0.0 ? part / whole : 0.0;
}

} // namespace

double StageFigures::value(int criterion) const {
    switch (criterion) {
    case eStageHigh:
        return high;
    case eStageLow:
        return low;
    case eStageVolume:
        return volume;
    case eStageChange:
        return last - first;
    case eStageChangeRatio:
        return ratio(last - first, first);
    case eStageAmount:
        return amount;
    case eStageAmplitude:
        return ratio(high - low, first);
    case eStageAverage:
        return average;
    default:
        return 0.0;
    }
}

bool stageFigures(const MinuteBars &day, qint64 start, qint64 end, bool isIndex, StageFigures &figures) {
    figures = {};
    int count = 0;
    bool begun = false;
    for (const MinuteBar &bar : day) {
        if (bar.time > end) {
            break;
        }
        if (bar.time <= start || !begun) {
            figures.first = bar.price;
            begun = true;
        }
        if (bar.time < start) {
            continue;
        }
        figures.high = count == 0 ? std::max(figures.first, bar.price) : std::max(figures.high, bar.price);
        figures.low = count == 0 ? std::min(figures.first, bar.price) : std::min(figures.low, bar.price);
        figures.last = bar.price;
        figures.average += bar.price;
        figures.volume += bar.volume;
        figures.amount += bar.amount > 0.0 ? bar.amount : isIndex ? 0.0 : bar.price * bar.volume;
        ++count;
    }
    if (count > 0) {
        figures.average /= count;
    }
    return count > 0;
}

QVector<StageRow> stageRows(CMarketStore &store, SimulatedExchange &exchange, qint64 start, qint64 end,
                            const StageProgress &progress) {
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const qint64 now = TC::hostNow().toMSecsSinceEpoch();
    StageQueries queries(store);
    QVector<StageRow> rows;
    rows.reserve(catalogue->instruments.size());
    int done = 0;
    for (const Instrument &instrument : catalogue->instruments) {
        if (progress && done % kStep == 0 && !progress(done, catalogue->instruments.size())) {
            break;
        }
        ++done;
        StageFigures figures;
        const QString key = instrument.key();
        const TradedSpan span = tradedSpan(*catalogue, key, start, end, now);
        const bool running = instrument.simulated && exchange.runningDay(key) == span.day;
        if (running ? stageFigures(exchange.dayBars(key, span.day), span.start, span.end, instrument.isIndex(),
                                   figures)
                    : queries.figures(instrument, span, figures)) {
            rows.append({key, instrument.name, std::max(2, TC::decimals(instrument.priceTick)), figures});
        }
    }
    return rows;
}

void rankStage(QVector<StageRow> &rows, int criterion) {
    std::stable_sort(rows.begin(), rows.end(), [criterion](const StageRow &a, const StageRow &b) {
        const double first = a.figures.value(criterion);
        const double second = b.figures.value(criterion);
        return first != second ? first > second : a.key < b.key;
    });
}

} // namespace terminal
