#pragma once

#include "terminal/history/HistoryServer.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/HistorySource.h"

#include <QHash>

#include <mutex>

namespace terminal {

/// The history of a server, with the store as what has been read of it already: a day comes into the store whole or not at
/// all, and again when the server has more minutes of it. Any thread; blocks.
class ServerHistory : public HistorySource {
public:
    /// Both outlive it.
    ServerHistory(CMarketStore &store, HistoryServer &server) : mStore(store), mServer(server) {}

    QVector<int> missingDays(const QString &key, qint64 start, qint64 end) override;
    QString fetchDay(const QString &key, int day) override;

    /// Takes the server's instruments that the store lacks; tells how many.
    HistoryFailure takeInstruments(int &taken);
    /// Asks which days of an instrument the server has.
    HistoryFailure list(const QString &key);
    /// What it said last, without asking; ascending.
    QVector<int> knownDays(const QString &key) const;
    /// Those of them that the store lacks, or has with fewer minutes, and that were not found to be no days; ascending.
    QVector<int> lackingDays(const QString &key);
    /// Brings days into the store; tells how many came.
    HistoryFailure fetch(const QString &key, const QVector<int> &days, int &taken);
    /// Days of the server that hold what is no bar.
    int badDays() const;

private:
    QString put(const Instrument &instrument, const QVector<ServedDay> &days);

    CMarketStore &mStore;
    HistoryServer &mServer;
    std::mutex mAsking; ///< held by the one that asks the server
    mutable std::mutex mLock; ///< guards what follows
    QHash<QString, QVector<ListedDay>> mKnown; ///< by key
    QHash<QString, QVector<ListedDay>>
        mBad; ///< by key; a day that has been loaded anew has another number of bars
};

} // namespace terminal
