#include "terminal/market/TickDays.h"

#include "terminal/market/MarketDate.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr int kTold = 4; ///< minutes after a close in which its trades are still told
constexpr int kOpening = 60; ///< minutes before the first session in which an auction may be told
constexpr int kReopening = 5; ///< minutes before another session

/// Turns snapshots of a day so far into what was traded between them.
class SnapshotDiffer {
public:
    /// Brings the row's figures to what is new in it. A fault when they fall.
    BarFault take(const TickRow &row, bool newDay, PlacedTick &tick) {
        if (newDay) {
            mBefore = TickRow();
        }
        tick.tick.volume = row.volume - mBefore.volume;
        tick.tick.amount = row.amount - mBefore.amount;
        if (tick.tick.volume < 0.0 || tick.tick.amount < 0.0) {
            return {row.line,
                    QStringLiteral("the %1 of the day falls")
                        .arg(tick.tick.volume < 0.0 ? QStringLiteral("volume") : QStringLiteral("amount"))};
        }
        // A day's extreme that moved was traded since the snapshot before.
        tick.high = row.high > mBefore.high ? std::max(row.high, row.price) : row.price;
        const bool lower = row.low > 0.0 && (mBefore.low <= 0.0 || row.low < mBefore.low);
        tick.low = lower ? std::min(row.low, row.price) : row.price;
        mBefore = row;
        return {};
    }
    bool isNew(const TickRow &row) const { return row.volume != mBefore.volume; }

private:
    TickRow mBefore;
};

/// Follows the rows of an instrument through its trading days.
class TickPlacer {
public:
    TickPlacer(ImportKind kind, const DatedSessions &sessions, std::vector<PlacedTick> &ticks)
        : mSnapshots(kind == ImportKind::Snapshots), mSessions(sessions), mTicks(ticks) {}

    BarFault take(const TickRow &row) {
        enterDate(row.time.date);
        const int clockMinute = (row.time.clock + kMinuteLength - 1) / kMinuteLength;
        const DaySessions &sessions = mSessions.at(calendarDate(row.time.date), std::max(clockMinute, 1));
        const std::optional<int> minute = minuteOfTick(sessions, row.time.clock);
        if (!minute) {
            // Snapshots go on while nothing is traded; a day that has not begun tells zeros.
            const bool idle = mSnapshots ? row.volume == 0.0 || !mDiffer.isNew(row) : row.volume == 0.0;
            return idle ? BarFault()
                        : BarFault{row.line, QStringLiteral("%1 is outside the sessions")
                                                 .arg(QTime::fromMSecsSinceStartOfDay(row.time.clock)
                                                          .toString(QStringLiteral("HH:mm:ss")))};
        }
        PlacedTick tick;
        tick.tick = {mMidnight + row.time.clock, row.price, row.volume, row.amount};
        tick.line = row.line;
        tick.date = *minute == 0 ? mDayBefore : row.time.date;
        tick.minute = *minute == 0 ? 1440 : *minute;
        tick.tradingDay = row.time.tradingDay;
        tick.high = tick.low = row.price;
        tick.previousClose = row.previousClose;
        if (mSnapshots) {
            BarFault fault = mDiffer.take(row, startsDay(tick, *sessions.placeOf(tick.minute)), tick);
            if (!fault.isNone()) {
                return fault;
            }
        }
        if (tick.tick.volume > 0.0) {
            mTicks.push_back(tick);
        }
        return {};
    }

private:
    void enterDate(int number) {
        if (number != mDate) {
            mDate = number;
            const QDate date = calendarDate(number);
            mMidnight = timeOf(date, 0);
            mDayBefore = dateNumber(date.addDays(-1));
        }
    }

    /// Whether a tick is the first one of another trading day than that of the tick before.
    bool startsDay(const PlacedTick &tick, DaySessions::Place place) {
        const bool sameDate = tick.date == mLastDate;
        bool starts = !mLastPlace;
        if (mLastPlace && tick.tradingDay != 0) {
            starts = tick.tradingDay != mLastTradingDay;
        } else if (mLastPlace && place == DaySessions::Place::EveningBefore) {
            starts = *mLastPlace != DaySessions::Place::EveningBefore || !sameDate;
        } else if (mLastPlace && place == DaySessions::Place::OnDay) {
            const bool afterNight = *mLastPlace == DaySessions::Place::EveningBefore ||
                                    *mLastPlace == DaySessions::Place::MorningAfterEvening;
            starts = !afterNight && !sameDate;
        }
        mLastPlace = place;
        mLastDate = tick.date;
        mLastTradingDay = tick.tradingDay;
        return starts;
    }

    const bool mSnapshots;
    const DatedSessions &mSessions;
    std::vector<PlacedTick> &mTicks;
    SnapshotDiffer mDiffer;
    // Of the last row:
    int mDate = 0;
    int mDayBefore = 0;
    qint64 mMidnight = 0;
    // Of the last tick that had a place:
    std::optional<DaySessions::Place> mLastPlace;
    int mLastDate = 0;
    int mLastTradingDay = 0;
};

} // namespace

std::optional<int> minuteOfTick(const DaySessions &sessions, int milliseconds) {
    const int minute = (milliseconds + kMinuteLength - 1) / kMinuteLength;
    if (sessions.placeOf(minute)) {
        return minute;
    }
    const DaySessions::Table &table = sessions.table();
    for (const QPair<int, int> &session : table) {
        if (minute > session.second && minute - session.second <= kTold) {
            return session.second;
        }
    }
    for (int i = 0; i < table.size(); ++i) {
        const int before = table[i].first - minute;
        if (before > 0 && before <= (i == 0 ? kOpening : kReopening)) {
            return table[i].first;
        }
    }
    return std::nullopt;
}

BarFault placeTicks(std::vector<TickRow> &rows, ImportKind kind, const DatedSessions &sessions,
                    std::vector<PlacedTick> &ticks) {
    const auto isEarlier = [](const TickRow &a, const TickRow &b) {
        return a.time.date != b.time.date ? a.time.date < b.time.date : a.time.clock < b.time.clock;
    };
    if (!std::is_sorted(rows.begin(), rows.end(), isEarlier)) {
        std::stable_sort(rows.begin(), rows.end(), isEarlier);
    }
    ticks.reserve(rows.size());
    TickPlacer placer(kind, sessions, ticks);
    for (const TickRow &row : rows) {
        BarFault fault = placer.take(row);
        if (!fault.isNone()) {
            return fault;
        }
    }
    return {};
}

std::vector<BarRow> minutesOfTicks(const std::vector<PlacedTick> &ticks) {
    std::vector<BarRow> minutes;
    for (const PlacedTick &tick : ticks) {
        const bool same = !minutes.empty() && minutes.back().date == tick.date &&
                          minutes.back().clock == tick.minute && minutes.back().tradingDay == tick.tradingDay;
        if (!same) {
            BarRow bar;
            bar.line = tick.line;
            bar.date = tick.date;
            bar.tradingDay = tick.tradingDay;
            bar.clock = tick.minute;
            bar.open = tick.tick.price;
            bar.high = tick.high;
            bar.low = tick.low;
            bar.previousClose = tick.previousClose;
            minutes.push_back(bar);
        }
        BarRow &bar = minutes.back();
        bar.high = std::max(bar.high, tick.high);
        bar.low = std::min(bar.low, tick.low);
        bar.close = tick.tick.price;
        bar.volume += tick.tick.volume;
        bar.amount += tick.tick.amount;
    }
    return minutes;
}

QMap<QDate, std::vector<PlacedTick>> ticksOfDays(const std::vector<PlacedTick> &ticks, const BarDays &days) {
    QMap<QDate, std::vector<PlacedTick>> result;
    auto tick = ticks.begin();
    for (auto day = days.days.begin(); day != days.days.end(); ++day) {
        const qint64 end = day->back().time;
        const auto isOfDay = [end](const PlacedTick &candidate) {
            return timeOf(calendarDate(candidate.date), candidate.minute) <= end;
        };
        const auto next = std::partition_point(tick, ticks.end(), isOfDay);
        result[day.key()] = std::vector<PlacedTick>(tick, next);
        tick = next;
    }
    return result;
}

} // namespace terminal
