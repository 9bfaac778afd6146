#pragma once

#include "terminal/feeder/FeedSink.h"
#include "terminal/feeder/FeedSource.h"
#include "terminal/feeder/InstrumentTape.h"

#include <QString>

#include <functional>
#include <map>
#include <vector>

namespace terminal {

/// Turns what a source tells into records, and hands them to a sink until that has confirmed them: what could not be sent is
/// sent again as it was. One thread.
class FeedPublisher : public FeedSource::Listener {
public:
    /// `told` is the market's time up to which an earlier run has told all; 0 for none.
    FeedPublisher(quint64 run, qint64 told) : mRun(run), mTold(told) {}

    void onDay(const QString &key, int day, const MinuteBars &bars) override;
    void onChange(const MinuteUpdate &change) override;

    /// Sends what has come since, the minutes that are over at this time of the market, and a beat when one is due.
    /// Answers false when the sink may lack some of it: call again, with a sink that works, before the market goes on.
    bool publish(FeedSink &sink, qint64 market, double pace);

    quint64 run() const { return mRun; }
    /// Changes and minutes that were confirmed.
    quint64 changes() const { return mChanges; }
    quint64 minutes() const { return mMinutes; }
    void eachSums(const std::function<void(const QString &key, const DaySums &sums)> &take) const;

private:
    struct Waiting {
        QByteArray subject;
        WireBar record;
    };

    InstrumentTape &tapeOf(const QString &key);
    void collect(const QString &key, const std::vector<WireBar> &records);

    const quint64 mRun;
    const qint64 mTold;
    std::map<QString, InstrumentTape> mTapes; ///< by key
    std::vector<Waiting> mWaiting; ///< until they are confirmed
    quint64 mBeat = 0;
    qint64 mLastBeat = 0; ///< milliseconds since the epoch
    quint64 mChanges = 0;
    quint64 mMinutes = 0;
};

} // namespace terminal
