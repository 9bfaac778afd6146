#include "terminal/market/DaySorter.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>

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

bool isEarlier(const BarRow &a, const BarRow &b) {
    return a.date != b.date ? a.date < b.date : a.clock < b.clock;
}

} // namespace

/// Brings a row to the end of its minute, 1 to 1440 of its date.
void DaySorter::moveToEnd(BarRow &row) const {
    row.clock += mReading.labelAtStart ? 1 : 0;
    if (row.clock == 0) { // midnight ends the day before
        row.clock = 1440;
        row.date = dateNumber(calendarDate(row.date).addDays(-1));
    }
}

qint64 DaySorter::timeOfRow(BarRow row) const {
    moveToEnd(row);
    return timeOf(calendarDate(row.date), row.clock);
}

BarFault DaySorter::check(const BarRow &told) {
    BarRow row = told;
    moveToEnd(row);
    const std::optional<DaySessions::Place> place = placeOf(row.date, row.clock);
    if (!place) {
        return {row.line, QStringLiteral("%1 is outside the sessions%2")
                              .arg(clockText(told.clock), mReading.labelAtStart ? QString() : hint(row))};
    }
    if (*place == DaySessions::Place::OnDay && row.date != mLastChecked) {
        mLastChecked = row.date;
        mDaysWithRows.insert(row.date);
    }
    return {};
}

std::optional<DaySessions::Place> DaySorter::placeOf(int date, int minute) const {
    return mReading.sessions.at(calendarDate(date), minute).placeOf(minute);
}

/// A label before the first minute of a session is that of a start.
QString DaySorter::hint(const BarRow &row) const {
    return placeOf(row.date, row.clock + 1)
               ? QStringLiteral("; if the file labels a minute by its start, give --label start")
               : QString();
}

BarFault DaySorter::add(std::vector<BarRow> &rows) {
    for (BarRow &row : rows) {
        moveToEnd(row);
    }
    if (!std::is_sorted(rows.begin(), rows.end(), isEarlier)) {
        std::stable_sort(rows.begin(), rows.end(), isEarlier);
    }
    const BarRow *before = &mBefore;
    for (const BarRow &row : rows) {
        const BarFault fault = take(row, *before);
        if (!fault.isNone()) {
            return fault;
        }
        before = &row;
    }
    mBefore = BarRow(*before);
    return {};
}

BarFault DaySorter::take(const BarRow &row, const BarRow &before) {
    if (before.date == row.date && before.clock == row.clock) {
        const int line = std::max(row.line, before.line);
        mResult.repeated.add(line, QStringLiteral("the same minute over again"));
        return sameValues(before, row)
                   ? BarFault()
                   : BarFault{line, QStringLiteral("%1 of %2 stands on line %3 with other values")
                                        .arg(clockText(row.clock), calendarDate(row.date).toString(Qt::ISODate))
                                        .arg(std::min(row.line, before.line))};
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
BarFault DaySorter::enterSession(const BarRow &row) {
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
        const BarFault fault = enterNight(row, evening, day);
        if (!fault.isNone()) {
            return fault;
        }
    }
    mBars = &mResult.days[day];
    mDay = day;
    mPreviousClose = mResult.previousCloses.value(day);
    return {};
}

/// Finds the trading day of a night.
BarFault DaySorter::enterNight(const BarRow &row, const QDate &evening, QDate &day) {
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
    return {};
}

/// Whether a trading day can be that of a night: the next one, whatever holidays lie between, and later than those
/// of the nights before.
bool DaySorter::follows(const QDate &day, const QDate &evening) const {
    constexpr int kLongestBreak = 15; // days
    const auto next = mDaysWithRows.upper_bound(dateNumber(evening));
    const bool isNext = next == mDaysWithRows.end() || dateNumber(day) <= *next;
    const bool isLater = mNights.isEmpty() || day >= mNights.lastKey();
    return day > evening && day <= evening.addDays(kLongestBreak) && isNext && isLater;
}

QDate DaySorter::dayOfNight(const QDate &evening) {
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

std::vector<QDate> DaySorter::completePastDays() {
    // A row is of its date, of the day before, or of a later one.
    return mBefore.date > 0 ? completeDaysBefore(calendarDate(mBefore.date).addDays(-1)) : std::vector<QDate>();
}

std::vector<QDate> DaySorter::completeDaysBefore(const QDate &end) {
    std::vector<QDate> complete;
    for (auto day = mResult.days.constBegin(); day != mResult.days.constEnd(); ++day) {
        if (!end.isNull() && day.key() >= end) {
            break;
        }
        complete.push_back(day.key());
        mResult.sessions[day.key()] = mNights.contains(day.key())
                                          ? mReading.sessions.ofNight(mNights[day.key()])
                                          : mReading.sessions.ofDay(day.key());
        if (!mReading.calendar.isTradingDay(day.key())) {
            mResult.unknownDays.append(day.key());
        }
    }
    return complete;
}

} // namespace terminal
