#include "terminal/market/BarDays.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

namespace terminal {
namespace {

QString clockText(int minute) {
    return QStringLiteral("%1:%2")
        .arg(minute / 60, 2, 10, QLatin1Char('0'))
        .arg(minute % 60, 2, 10, QLatin1Char('0'));
}

bool sameValues(const BarRow &a, const BarRow &b) {
    return a.open == b.open && a.high == b.high && a.low == b.low && a.close == b.close &&
           a.volume == b.volume && a.amount == b.amount && a.average == b.average;
}

/// Sorts the rows of one instrument into its days.
class DaySorter {
public:
    DaySorter(std::vector<BarRow> &rows, const BarReading &reading, BarDays &result)
        : mRows(rows), mReading(reading), mResult(result) {}

    BarFault sort() {
        for (BarRow &row : mRows) {
            const BarFault fault = checkMinute(row);
            if (!fault.isNone()) {
                return fault;
            }
        }
        const auto isEarlier = [](const BarRow &a, const BarRow &b) {
            return a.date != b.date ? a.date < b.date : a.clock < b.clock;
        };
        if (!std::is_sorted(mRows.begin(), mRows.end(), isEarlier)) {
            std::stable_sort(mRows.begin(), mRows.end(), isEarlier);
        }
        const BarRow *before = nullptr;
        for (const BarRow &row : mRows) {
            const BarFault fault = take(row, before);
            if (!fault.isNone()) {
                return fault;
            }
            before = &row;
        }
        noteUnknownDays();
        for (const QDate &day : mResult.days.keys()) {
            mResult.sessions[day] =
                mNights.contains(day) ? mReading.sessions.ofNight(mNights[day]) : mReading.sessions.ofDay(day);
        }
        return {};
    }

private:
    /// Brings a row to the end of its minute, 1 to 1440 of its date, and checks that it is traded then.
    BarFault checkMinute(BarRow &row) {
        const int shown = row.clock;
        row.clock += mReading.labelAtStart ? 1 : 0;
        if (row.clock == 0) { // midnight ends the day before
            row.clock = 1440;
            row.date = dateNumber(calendarDate(row.date).addDays(-1));
        }
        const std::optional<DaySessions::Place> place = placeOf(row.date, row.clock);
        if (!place) {
            return {row.line, QStringLiteral("%1 is outside the sessions%2")
                                  .arg(clockText(shown), mReading.labelAtStart ? QString() : hint(row))};
        }
        if (*place == DaySessions::Place::OnDay) {
            mDaysWithRows.insert(row.date);
        }
        return {};
    }

    std::optional<DaySessions::Place> placeOf(int date, int minute) const {
        return mReading.sessions.at(calendarDate(date), minute).placeOf(minute);
    }

    /// A label before the first minute of a session is that of a start.
    QString hint(const BarRow &row) const {
        return placeOf(row.date, row.clock + 1)
                   ? QStringLiteral("; if the file labels a minute by its start, give --label start")
                   : QString();
    }

    BarFault take(const BarRow &row, const BarRow *before) {
        if (before && before->date == row.date && before->clock == row.clock) {
            mResult.repeatedLines.append(std::max(row.line, before->line));
            return sameValues(*before, row)
                       ? BarFault()
                       : BarFault{std::max(row.line, before->line),
                                  QStringLiteral("%1 of %2 stands on line %3 with other values")
                                      .arg(clockText(row.clock), calendarDate(row.date).toString(Qt::ISODate))
                                      .arg(std::min(row.line, before->line))};
        }
        if (row.date != mDate || row.clock >= mDateEnd || row.tradingDay != mTradingDay) {
            const BarFault fault = enterSession(row);
            if (!fault.isNone()) {
                return fault;
            }
        }
        MinuteBar bar;
        bar.time = mMidnight + row.clock * 60000LL;
        bar.open = row.open;
        bar.high = row.high;
        bar.low = row.low;
        bar.price = row.close;
        bar.average = mReading.hasAverage ? row.average : 0.0;
        bar.volume = row.volume * mReading.volumeUnit;
        bar.amount = row.amount;
        mBars->push_back(bar);
        if (row.previousClose > 0.0 && mPreviousClose == 0.0) {
            mPreviousClose = mResult.previousCloses[mDay] = row.previousClose;
        }
        return {};
    }

    /// The row begins another session: finds its trading day.
    BarFault enterSession(const BarRow &row) {
        const QDate date = calendarDate(row.date);
        mDate = row.date;
        mTradingDay = row.tradingDay;
        mMidnight = timeOf(date, 0);
        mDateEnd = 1441;
        for (const QPair<int, int> &session : mReading.sessions.at(date, row.clock).table()) {
            if (session.second >= row.clock) {
                mDateEnd = std::min(mDateEnd, session.second + 1);
            }
        }
        const DaySessions::Place place = *placeOf(row.date, row.clock);
        QDate day = place == DaySessions::Place::DayAfter ? date.addDays(-1) : date;
        if (place == DaySessions::Place::EveningBefore || place == DaySessions::Place::MorningAfterEvening) {
            const QDate evening = place == DaySessions::Place::EveningBefore ? date : date.addDays(-1);
            day = row.tradingDay != 0 ? calendarDate(row.tradingDay) : dayOfNight(evening);
            if (!follows(day, evening)) {
                return {row.line, QStringLiteral("the trading day %1 does not follow the night of %2")
                                      .arg(day.toString(Qt::ISODate), evening.toString(Qt::ISODate))};
            }
            const auto other = mNights.constFind(day);
            if (other != mNights.constEnd() && *other != evening) {
                return {row.line, QStringLiteral("two nights, of %1 and of %2, before the trading day %3")
                                      .arg(other->toString(Qt::ISODate), evening.toString(Qt::ISODate),
                                           day.toString(Qt::ISODate))};
            }
            mNights[day] = evening;
        }
        mBars = &mResult.days[day];
        mDay = day;
        mPreviousClose = mResult.previousCloses.value(day);
        return {};
    }

    /// Whether a trading day can be that of a night: the next one, whatever holidays lie between, and later than those
    /// of the nights before.
    bool follows(const QDate &day, const QDate &evening) const {
        constexpr int kLongestBreak = 15; // days
        const auto next = mDaysWithRows.upper_bound(dateNumber(evening));
        const bool isNext = next == mDaysWithRows.end() || dateNumber(day) <= *next;
        const bool isLater = mNights.isEmpty() || day >= mNights.lastKey();
        return day > evening && day <= evening.addDays(kLongestBreak) && isNext && isLater;
    }

    QDate dayOfNight(const QDate &evening) {
        const int number = dateNumber(evening);
        const auto next = mDaysWithRows.upper_bound(number);
        if (next == mDaysWithRows.end()) {
            return mReading.calendar.next(evening);
        }
        const QDate day = calendarDate(*next);
        for (QDate rest = evening.addDays(1); rest < day; rest = rest.addDays(1)) {
            if (mReading.calendar.isTradingDay(rest) && !mResult.restDays.contains(rest)) {
                mResult.restDays.append(rest);
            }
        }
        return day;
    }

    void noteUnknownDays() {
        for (const QDate &day : mResult.days.keys()) {
            if (!mReading.calendar.isTradingDay(day)) {
                mResult.unknownDays.append(day);
            }
        }
    }

    std::vector<BarRow> &mRows;
    const BarReading &mReading;
    BarDays &mResult;
    std::set<int> mDaysWithRows;
    QMap<QDate, QDate> mNights; ///< evening by trading day
    // The session that the last row was in:
    int mDate = 0;
    int mDateEnd = 0; ///< minute after its last one
    int mTradingDay = 0;
    qint64 mMidnight = 0;
    MinuteBars *mBars = nullptr;
    QDate mDay;
    double mPreviousClose = 0.0; ///< before that day; 0 as long as it is not told
};

} // namespace

QDate calendarDate(int yyyymmdd) {
    return QDate(yyyymmdd / 10000, yyyymmdd / 100 % 100, yyyymmdd % 100);
}

int dateNumber(const QDate &date) {
    return date.year() * 10000 + date.month() * 100 + date.day();
}

BarFault sortIntoDays(std::vector<BarRow> &rows, const BarReading &reading, BarDays &result) {
    return DaySorter(rows, reading, result).sort();
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

double priceStep(const std::vector<BarRow> &rows) {
    constexpr double kFinest = 10000.0;
    qint64 step = 0;
    for (const BarRow &row : rows) {
        for (double price : {row.high, row.low, row.close}) {
            step = std::gcd(step, static_cast<qint64>(std::llround(std::min(price, 1e12) * kFinest)));
        }
    }
    return step > 0 ? static_cast<double>(step) / kFinest : 0.01;
}

} // namespace terminal
