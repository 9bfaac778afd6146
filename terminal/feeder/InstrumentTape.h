#pragma once

#include "terminal/feed/WireRecord.h"

#include <map>
#include <vector>

namespace terminal {

/// What the bars of a day come to; two sides that hold the same day have the same.
struct DaySums {
    int day = 0;
    int minutes = 0;
    double volume = 0.0;
    double amount = 0.0;
    double price = 0.0; ///< of the last minute
};

DaySums sumsOf(int day, const MinuteBars &bars);

/// Numbers the changes of one instrument, and knows which of its minutes the stream still lacks.
class InstrumentTape {
public:
    explicit InstrumentTape(quint64 run) : mRun(run) {}
    InstrumentTape(const InstrumentTape &) = delete;
    InstrumentTape &operator=(const InstrumentTape &) = delete;

    /// A day begins with these bars. Those whose minute ended up to `told` stand in the stream; the others are answered
    /// as changes.
    std::vector<WireBar> beginDay(int day, const MinuteBars &bars, qint64 told);
    /// The record of a change.
    WireBar change(const MinuteBar &bar);
    /// The minutes that are over at a time of the market and changed since they were last answered here.
    std::vector<WireBar> finished(qint64 market);

    MinuteBars bars() const;
    DaySums sums() const { return sumsOf(mDay, bars()); }

private:
    struct Minute {
        quint64 first = 0; ///< change that the stream lacks; 0 for none
        quint64 sequence = 0; ///< of its last change
        MinuteBar bar;
    };

    const quint64 mRun;
    int mDay = 0;
    quint64 mSequence = 0; ///< of the last change
    qint64 mLastTime = -1; ///< minute of the last change
    quint32 mSameMinute = 0; ///< changes in a row that were of it
    std::map<qint64, Minute> mMinutes; ///< by time
    std::map<qint64, Minute *> mUnkept; ///< those that the stream lacks
};

} // namespace terminal
