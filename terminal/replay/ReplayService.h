#pragma once

#include "host/services/CReplayManager.h"
#include "terminal/formula/RequestDays.h"
#include "terminal/replay/ReplayModel.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <memory>
#include <mutex>

namespace terminal {

/// Plays stored days again: every request gets the series up to the start of the range as its history, and then one
/// point after the other at the replay's pace, until the range ends. Without a range the whole day is played.
///
/// All requests share one replay time, so that the panes of a chart grow together. Script models run again while minutes
/// are played, as they do in a running day. Results come on the
/// user-interface thread, on which the service is made; requests may be withdrawn on any thread.
class ReplayService : public QObject, public TC::CReplayManager {
    Q_OBJECT
public:
    /// The tools have to outlive it, and so the cache, which hears what is asked for; it may be null.
    ReplayService(const RequestTools &tools, RequestDay requestDay, HistoryCache *cache = nullptr);
    ~ReplayService() override;

    void requestFormulas(const QString &stock, QVector<TC::CFormulaParam> &params,
                         TC::FormulaHistoryCallback onHistory, TC::FormulaRealtimeCallback onRealtime) override;
    void deleteFormulas(QVector<QString> &requestIds) override;
    /// Withdraws every request: the replay is over. A view that has asked for a series more than once knows the last of
    /// its requests only. On the user-interface thread.
    void withdrawAll();
    /// Also sets the replay time back to the start. An end not after the start gives the whole day.
    void setThousandRange(qint64 start, qint64 end) override;

    /// Milliseconds between two minutes of the market, 0 as fast as the screen follows.
    void setPace(int millisecondsPerMinute);
    void setPaused(bool paused);
    /// Minute played last, in milliseconds since the epoch; 0 before the first one.
    qint64 replayTime() const;
    int liveRequests() const;

Q_SIGNALS:
    /// The last minute of all requests has been played.
    void finished();

private:
    /// A request with the runs of its script model, if it names one.
    struct Played {
        std::shared_ptr<ReplayRequest> request;
        std::shared_ptr<ReplayModel> model; ///< null before its beginning
    };
    using PlayedPtr = std::shared_ptr<Played>;

    void begin(const PlayedPtr &played);
    void step();
    QList<PlayedPtr> requests() const;
    void updateTimer();

    const RequestTools &mTools;
    const RequestDay mRequestDay;
    HistoryCache *const mCache;
    QTimer mTimer;
    bool mPaused = false;
    qint64 mStart = 0;
    qint64 mEnd = 0;
    qint64 mTime = 0;
    DeliveryQueue mQueue; ///< of what the models give
    mutable std::mutex mLock; ///< guards what follows
    QList<PlayedPtr> mRequests;
    Worker mModels; ///< last: it ends before all else
};

} // namespace terminal
