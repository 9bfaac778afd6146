#pragma once

#include "terminal/history/HistoryDesk.h"
#include "terminal/market/Catalogue.h"
#include "terminal/market/SimulatedHistory.h"

#include <QStringList>

namespace terminal {

/// Where days before the running one come from that the store lacks: the made-up market, or a server of history.
class PastDays {
public:
    /// The store outlives it.
    explicit PastDays(CMarketStore &store) : mStore(store) {}

    /// Takes them from a server from now on; `sink` hears why days do not come, on a thread of this. Answers an empty text, or what
    /// is wrong with the address or with the store.
    QString follow(const QString &url, const HistoryDesk::ReasonSink &sink);
    /// Asks the server for its instruments; does nothing without one.
    void start();
    void stop();

    /// Where a download has days from.
    HistorySource &source();
    /// Asks for a day of an instrument, an index or a portfolio, and for those in front of it; returns at once.
    void want(const QString &key, int day);
    /// Waits, at most so long, for what has been asked for.
    void await(std::chrono::milliseconds atMost);
    /// Days of an instrument that the server has, as far as it has been asked.
    QVector<int> knownDays(const QString &key);
    /// What is missing of them and since when; empty when nothing is.
    QString trouble() const;
    /// See HistoryDesk.
    void setListener(const HistoryDesk::Listener &listener);

private:
    CMarketStore &mStore;
    SimulatedHistory mSimulated{mStore};
    std::unique_ptr<HistoryDesk> mDesk; ///< null without a server
};

/// The instruments whose days make those of a key: itself, or the members of an index or portfolio.
QStringList partsOf(const Catalogue &catalogue, const QString &key);

} // namespace terminal
