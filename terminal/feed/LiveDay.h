#pragma once

#include "terminal/feed/WireRecord.h"

#include <map>

namespace terminal {

/// The running day of one instrument as its records tell it, in whatever order, doubled and with gaps as they come. It
/// knows whether something is missing, and never makes up what is.
class LiveDay {
public:
    enum class Origin { Live, Stream };

    struct Taken {
        bool isNews = false; ///< a minute is another than before
        bool needsStream = false; ///< what the stream has is to be read, from now on or once more
    };

    Taken take(const WireBar &record, Origin origin);
    /// Messages may have been lost unseen, as while there was no server.
    void loseTouch() { mIsBehind = true; }
    /// All that the stream had since the last need of it has been taken.
    void endReading();

    /// Whether changes are missing, or may be.
    bool isBehind() const { return mIsBehind; }
    int day() const { return mDay; }
    MinuteBars bars() const { return barsSince(0); }
    /// The minutes that were taken after a revision, as they are now; in the order of time.
    MinuteBars barsSince(quint64 revision) const;
    quint64 revision() const { return mRevision; }

private:
    struct Minute {
        quint64 run = 0;
        quint64 sequence = 0;
        quint64 revision = 0;
        MinuteBar bar;
    };

    bool comeToDay(const WireBar &record);
    bool follow(const WireBar &record, Origin origin);
    bool keep(const WireBar &record);

    int mDay = 0;
    quint64 mRun = 0;
    quint64 mLast = 0; ///< change that is known of, in this run
    quint64 mMissing = 0; ///< last change that was missed; 0 for none
    quint64 mCovered = 0; ///< changes that minutes of the stream have told
    bool mIsBehind = true;
    quint64 mRevision = 0;
    std::map<qint64, Minute> mMinutes; ///< by time
};

} // namespace terminal
