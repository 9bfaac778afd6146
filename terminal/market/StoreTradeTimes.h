#pragma once

#include "host/services/CTradeOpenCloseTimeManager.h"
#include "terminal/market/CMarketStore.h"

#include <QHash>

#include <mutex>

namespace terminal {

/// Trading sessions over the market store.
class StoreTradeTimes : public TC::CTradeOpenCloseTimeManager {
public:
    explicit StoreTradeTimes(CMarketStore &store) : mStore(store) {}

    /// The axis of an instrument has the sessions of a day from now on, where some are kept with it. Any thread.
    void setAxisDay(const QString &key, int day);
    /// The sessions of an instrument's axis; empty for an unknown instrument.
    DaySessions axisSessions(const QString &key) const;

    /// True for instruments with sessions of their own, imported ones among them, and where the day shown has some; the
    /// others follow their market.
    bool getTradeTime(const QString &market, const QString &code, QVector<QPair<int, int>> &sessions,
                      int &count) override;
    /// By the name of an exchange or its short word, as a portfolio's positions have it.
    bool hasNightQuoter(const QString &market, const QString &code) override;

private:
    DaySessions sessionsOfDay(const QString &key) const;

    CMarketStore &mStore;
    mutable std::mutex mLock; ///< guards the following
    QHash<QString, DaySessions> mOfDays; ///< sessions kept with the days shown, by key
};

} // namespace terminal
