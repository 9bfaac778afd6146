#include "terminal/feeder/InstrumentTape.h"

#include <algorithm>
#include <utility>

namespace terminal {

DaySums sumsOf(int day, const MinuteBars &bars) {
    DaySums sums;
    sums.day = day;
    for (const MinuteBar &bar : bars) {
        ++sums.minutes;
        sums.volume += bar.volume;
        sums.amount += bar.amount;
        sums.price = bar.price;
    }
    return sums;
}

std::vector<WireBar> InstrumentTape::beginDay(int day, const MinuteBars &bars, qint64 told) {
    mDay = day;
    mLastTime = -1;
    mUnkept.clear();
    mMinutes.clear();
    std::vector<WireBar> changes;
    for (const MinuteBar &bar : bars) {
        if (bar.time <= told) {
            mMinutes[bar.time] = {0, 0, bar};
        } else {
            changes.push_back(change(bar));
        }
    }
    return changes;
}

WireBar InstrumentTape::change(const MinuteBar &bar) {
    mSameMinute = bar.time == mLastTime ? mSameMinute + 1 : 0;
    mLastTime = bar.time;
    Minute &minute = mMinutes[bar.time];
    ++mSequence;
    minute = {minute.first == 0 ? mSequence : minute.first, mSequence, bar};
    mUnkept[bar.time] = &minute;
    WireBar record;
    record.run = mRun;
    record.sequence = mSequence;
    record.span = static_cast<qint32>(mSameMinute);
    record.day = mDay;
    record.bar = bar;
    return record;
}

std::vector<WireBar> InstrumentTape::finished(qint64 market) {
    const auto end = mUnkept.upper_bound(market);
    std::vector<Minute *> minutes;
    for (auto found = mUnkept.begin(); found != end; found = mUnkept.erase(found)) {
        minutes.push_back(found->second);
    }
    std::sort(minutes.begin(), minutes.end(),
              [](const Minute *a, const Minute *b) { return a->sequence < b->sequence; });
    quint64 lacked = mSequence + 1; // the first change that the stream lacks when a minute is in it
    for (const auto &[time, minute] : mUnkept) {
        lacked = std::min(lacked, minute->first);
    }
    std::vector<WireBar> records(minutes.size());
    for (size_t i = minutes.size(); i-- > 0;) {
        Minute &minute = *minutes[i];
        WireBar &record = records[i];
        record.kind = WireKind::Minute;
        record.run = mRun;
        record.sequence = minute.sequence;
        record.span =
            static_cast<qint32>(static_cast<qint64>(lacked - 1) - static_cast<qint64>(minute.sequence));
        record.day = mDay;
        record.bar = minute.bar;
        lacked = std::min(lacked, std::exchange(minute.first, 0));
    }
    return records;
}

MinuteBars InstrumentTape::bars() const {
    MinuteBars bars;
    for (const auto &[time, minute] : mMinutes) {
        bars.push_back(minute.bar);
    }
    return bars;
}

} // namespace terminal
