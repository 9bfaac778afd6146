#pragma once

#include "host/services/CStockManager.h"
#include "terminal/market/PreviousCloses.h"

#include <QHash>

#include <mutex>

namespace terminal {

/// The instrument catalogue over the market store. May be called from any thread.
class StoreStockManager : public TC::CStockManager {
public:
    explicit StoreStockManager(CMarketStore &store) : mStore(store), mCloses(store) {}

    TC::CInstrumentDetailPtr getInstrumentDetail(const QString &key) override;
    bool isExist(const QString &key) override;
    bool isPortfolio(const QString &key) override;
    /// "SH600000", or the first instrument when the store has none of that key.
    TC::CInstrumentDetailPtr getDefaultDetail() override;
    /// See previousCloseOf(). A date of 0 is the running day.
    double getCurrentDateLastClose(const QString &key, int date) override;
    double getCurrentDateLastClose(const TC::CInstrumentDetailPtr &detail, int date) override;
    /// By the host clock; in a market with night trading the next day starts in the evening.
    int getLastTradingDay(const QString &market) override;
    int getShiftTradeDate(const QString &market, int date, int shift) override;
    /// From the midnight of the date to the end of its trading, after-hours trading included. With a night session in
    /// front the start is that of the session, on an evening before. An unknown instrument trades as a share does.
    QPair<qint64, qint64> getStartEndTime(const TC::CInstrumentDetailPtr &detail, int &date) override;

private:
    TC::CInstrumentDetailPtr makeDetail(const Instrument &instrument, int day);

    CMarketStore &mStore;
    PreviousCloses mCloses;
    std::mutex mLock; ///< guards the following
    std::weak_ptr<const Catalogue>
        mKnown; ///< what the records were made from; whoever reads a new one frees it
    QHash<QString, QPair<int, TC::CInstrumentDetailPtr>> mDetails; ///< trading day and record, by key
};

} // namespace terminal
