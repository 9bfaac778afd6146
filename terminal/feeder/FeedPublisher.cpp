#include "terminal/feeder/FeedPublisher.h"

#include "terminal/feed/WireSubject.h"

#include <QDateTime>

#include <limits>

namespace terminal {
namespace {

constexpr qint64 kBeatInterval = 250; ///< milliseconds

} // namespace

InstrumentTape &FeedPublisher::tapeOf(const QString &key) {
    return mTapes.try_emplace(key, mRun).first->second;
}

void FeedPublisher::collect(const QString &key, const std::vector<WireBar> &records) {
    for (const WireBar &record : records) {
        mWaiting.push_back({record.kind == WireKind::Minute ? minuteSubject(key) : changeSubject(key), record});
    }
}

void FeedPublisher::onDay(const QString &key, int day, const MinuteBars &bars) {
    InstrumentTape &tape = tapeOf(key);
    collect(key, tape.finished(std::numeric_limits<qint64>::max())); // of the day before
    collect(key, tape.beginDay(day, bars, mTold));
}

void FeedPublisher::onChange(const MinuteUpdate &change) {
    collect(change.key, {tapeOf(change.key).change(change.bar)});
}

bool FeedPublisher::publish(FeedSink &sink, qint64 market, double pace) {
    for (auto &[key, tape] : mTapes) {
        collect(key, tape.finished(market));
    }
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    quint64 changes = 0;
    quint64 minutes = 0;
    for (Waiting &waiting : mWaiting) {
        waiting.record.published = now;
        const bool isMinute = waiting.record.kind == WireKind::Minute;
        const QByteArray bytes = encodeWire(waiting.record);
        if (!(isMinute ? sink.keep(waiting.subject, bytes) : sink.send(waiting.subject, bytes))) {
            return false;
        }
        ++(isMinute ? minutes : changes);
    }
    if (now - mLastBeat >= kBeatInterval || now < mLastBeat) {
        mLastBeat = now;
        if (!sink.send(clockSubject(), encodeWire(WireClock{mRun, ++mBeat, now, market, pace}))) {
            return false;
        }
    }
    if (!sink.confirm()) {
        return false;
    }
    mWaiting.clear();
    mChanges += changes;
    mMinutes += minutes;
    return true;
}

void FeedPublisher::eachSums(const std::function<void(const QString &key, const DaySums &sums)> &take) const {
    for (const auto &[key, tape] : mTapes) {
        take(key, tape.sums());
    }
}

} // namespace terminal
