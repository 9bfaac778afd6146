#include "terminal/feed/LiveDay.h"

#include <algorithm>
#include <tuple>

namespace terminal {

/// Whether the record is of the day that is followed; a greater run, or in one run a later day, begins a new one.
bool LiveDay::comeToDay(const WireBar &record) {
    const bool isNewer = record.run > mRun || (record.run == mRun && record.day > mDay);
    if (isNewer && record.day != mDay) {
        mMinutes.clear();
        mDay = record.day;
    }
    return record.day == mDay;
}

/// Keeps account of the changes of the run; whether the stream is needed.
bool LiveDay::follow(const WireBar &record, Origin origin) {
    if (record.run < mRun) {
        return false;
    }
    bool needsStream = false;
    if (record.run > mRun) {
        mRun = record.run;
        mLast = 0;
        mMissing = 0;
        mCovered = 0;
        mIsBehind = true;
        needsStream = true;
    }
    const bool isChange = record.kind == WireKind::Change;
    const quint64 replaced = isChange ? static_cast<quint64>(record.span) : 0;
    if (record.sequence > mLast) {
        if (record.sequence - replaced > mLast + 1) {
            mMissing = record.sequence - replaced - 1;
            mIsBehind = true;
            needsStream = true;
        }
        mLast = record.sequence;
    }
    if (!isChange) {
        const qint64 covered = static_cast<qint64>(record.sequence) + record.span;
        mCovered = std::max(mCovered, static_cast<quint64>(covered));
        needsStream = needsStream || (mMissing > 0 && mCovered >= mMissing);
    }
    return needsStream && origin == Origin::Live;
}

bool LiveDay::keep(const WireBar &record) {
    Minute &minute = mMinutes[record.bar.time];
    if (std::tie(record.run, record.sequence) <= std::tie(minute.run, minute.sequence)) {
        return false; // doubled or late
    }
    minute.run = record.run;
    minute.sequence = record.sequence;
    if (minute.bar == record.bar) {
        return false;
    }
    minute.bar = record.bar;
    minute.revision = ++mRevision;
    return true;
}

LiveDay::Taken LiveDay::take(const WireBar &record, Origin origin) {
    const bool isOfDay = comeToDay(record);
    Taken taken;
    taken.needsStream = follow(record, origin);
    taken.isNews = isOfDay && keep(record);
    return taken;
}

void LiveDay::endReading() {
    if (mMissing <= mCovered) {
        mMissing = 0;
        mIsBehind = false;
    }
}

MinuteBars LiveDay::barsSince(quint64 revision) const {
    MinuteBars bars;
    for (const auto &[time, minute] : mMinutes) {
        if (minute.revision > revision) {
            bars.push_back(minute.bar);
        }
    }
    return bars;
}

} // namespace terminal
