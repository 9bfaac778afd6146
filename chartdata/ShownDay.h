#pragma once

#include <QTime>
#include <QtGlobal>

namespace TC {

class CRealtimeUiParam;

/// Which trading day a pane shows, and how far a replay of it has come.
///
/// A day is live when it was the last trading day of the market at the moment that it was set; the day 0, which stands
/// for none, never is.
class ShownDay {
public:
    /// Takes a day, seconds since the epoch at its midnight; 0 takes that of the view, where it has one.
    void set(int date, const CRealtimeUiParam &view);
    int date() const { return mDate; }
    bool isLive() const { return mIsLive; }

    void setReplayed(bool replayed) { mIsReplayed = replayed; }
    bool isReplayed() const { return mIsReplayed; }
    /// Newest moment of the replay, milliseconds since the epoch.
    void setReplayTime(qint64 milliseconds);
    /// Its clock time; null before there is one. What is told of it points here.
    QTime &replayTime() { return mReplayTime; }
    const QTime &replayTime() const { return mReplayTime; }
    /// Whether a clock time lies ahead of the replay; nothing does outside one.
    bool isAhead(const QTime &time) const { return mIsReplayed && time > mReplayTime; }

private:
    qint32 mDate = 0;
    bool mIsLive = false;
    bool mIsReplayed = false;
    QTime mReplayTime;
};

} // namespace TC
