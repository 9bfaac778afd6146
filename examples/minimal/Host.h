#pragma once

/// \file
/// What a host provides: the time, its instruments and their series. Here one instrument with a made-up price; a real host
/// has all of it from its data source.

#include <timeshare/host/services/CHostClock.h>
#include <timeshare/host/services/CStockManager.h>
#include <timeshare/host/services/MainSeries.h>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace example {

constexpr int kToday = 1710432000; ///< midnight of 15 March 2024 at UTC+8, in seconds since the epoch
constexpr int kDay = 24 * 3600;
constexpr int kMinutes = 241; ///< 09:30 to 11:30, 13:01 to 15:00

/// End of a trading minute of a day, in milliseconds since the epoch.
inline qint64 endOf(int date, int index) {
    return (date + (index <= 120 ? 570 + index : 660 + index) * 60LL) * 1000;
}

/// The bars of a day up to a minute.
inline TC::MainDay barsOf(int date, int minutes) {
    TC::MainDay day;
    double last = 10.0;
    for (int i = 0; i < minutes; ++i) {
        const double close = 10.0 + 0.25 * std::sin(date / kDay + i / 40.0) + 0.03 * std::sin(i * 1.7);
        const double volume = 800.0 + 600.0 * std::sin(i * 0.9);
        day.add({endOf(date, i), last, close, volume, volume * (last + close) / 2.0});
        last = close;
    }
    return day;
}

/// The running day, 90 minutes old at first.
class Market {
public:
    const TC::MainDay &today() const { return mToday; }
    /// Bars of any day so far.
    TC::MainDay day(int date) const { return date < kToday ? barsOf(date, kMinutes) : mToday; }
    int minutes() const { return static_cast<int>(mToday.bars().size()); }
    /// One more minute; false when the day is over.
    bool goOn() {
        const int minutes = this->minutes();
        return minutes < kMinutes && mToday.add(barsOf(kToday, minutes + 1).bars().back());
    }

private:
    TC::MainDay mToday = barsOf(kToday, 90);
};

class Clock : public TC::CHostClock {
public:
    explicit Clock(const Market &market) : mMarket(market) {}
    QDateTime currentDateTime() const override {
        return QDateTime::fromMSecsSinceEpoch(endOf(kToday, mMarket.minutes() - 1), Qt::OffsetFromUTC,
                                              8 * 3600);
    }

private:
    const Market &mMarket;
};

/// One instrument, which trades every day and has closed at 10 on each.
class Stocks : public TC::CStockManager {
public:
    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override {
        return isExist(key) ? mStock : nullptr;
    }
    bool isExist(const QString &key) override { return key == TC::getDetailQsKey(mStock); }
    TC::CInstrumentDetailPtr getDefaultDetail() override { return mStock; }
    double getCurrentDateLastClose(const QString &, int) override { return 10.0; }
    double getCurrentDateLastClose(const TC::CInstrumentDetailPtr &, int) override { return 10.0; }
    int getLastTradingDay(const QString &) override { return kToday; }
    int getShiftTradeDate(const QString &, int date, int shift) override { return date + shift * kDay; }
    QPair<qint64, qint64> getStartEndTime(const TC::CInstrumentDetailPtr &, int &date) override {
        return {endOf(date, 0), endOf(date, kMinutes - 1)};
    }

private:
    const TC::CInstrumentDetailPtr mStock = std::make_shared<TC::CInstrumentDetail>(
        TC::CInstrumentDetail{"SH", "600000", "示例", {}, 10.0, 0.0, 0.01, {}});
};

/// The series of a chart, answered at once: those of the main chart, and more where a class derived from this knows them.
class Series : public TC::CFormulaManager {
public:
    explicit Series(const Market &market) : mMarket(market) {}

    void requestFormulas(QVector<TC::CFormulaParam> &params, TC::FormulaHistoryCallback onHistory,
                         TC::FormulaRealtimeCallback onRealtime) override {
        for (const TC::CFormulaParam &param : params) {
            const QString &formula = param.mFormulaName;
            if (const TC::FormulaMetaPtr description = meta(formula)) {
                onHistory(description, result(formula, mMarket.day(dateOf(param))),
                          QString::fromStdString(param.mRequestId), 1, formula, false);
            }
            if (param.mDataDemand == 3) {
                mLive.push_back({param, onRealtime});
            }
        }
    }
    void requestFormulasSync(QVector<TC::CFormulaParam> &params, std::vector<TC::FormulaMetaPtr> &metas,
                             std::vector<TC::FormulaResultPtr> &results) override {
        for (const TC::CFormulaParam &param : params) {
            metas.push_back(meta(param.mFormulaName));
            results.push_back(result(param.mFormulaName, mMarket.day(dateOf(param))));
        }
    }
    void unrequestFormula(const QString &requestId) override {
        const auto gone = std::stable_partition(mLive.begin(), mLive.end(), [&](const auto &request) {
            return QString::fromStdString(request.first.mRequestId) != requestId;
        });
        const decltype(mLive) released(gone, mLive.end()); // its data may go with a callback, and ask us then
        mLive.erase(gone, mLive.end());
    }
    /// The newest point of every series that goes on.
    void tellNewest() {
        const auto live = mLive; // a callback may request and withdraw
        for (const auto &[param, onRealtime] : live) {
            if (const TC::FormulaInstantPtr point = lastPoint(param.mFormulaName, mMarket.today())) {
                onRealtime(0, QString::fromStdString(param.mRequestId), point);
            }
        }
    }

protected:
    // Description, points and newest point of a formula; null for one that is not known.
    virtual TC::FormulaMetaPtr meta(const QString &formula) { return TC::MainSeries::meta(formula); }
    virtual TC::FormulaResultPtr result(const QString &formula, const TC::MainDay &day) {
        return day.result(formula);
    }
    virtual TC::FormulaInstantPtr lastPoint(const QString &formula, const TC::MainDay &day) {
        return day.lastPoint(formula);
    }

private:
    static int dateOf(const TC::CFormulaParam &param) {
        const qint64 seconds = param.mStart.first / 1000 + 8 * 3600;
        return static_cast<int>(seconds - seconds % kDay - 8 * 3600);
    }

    const Market &mMarket;
    std::vector<std::pair<TC::CFormulaParam, TC::FormulaRealtimeCallback>> mLive;
};

} // namespace example
