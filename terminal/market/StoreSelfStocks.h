#pragma once

#include "host/services/CSelfStockManager.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/StoreRows.h"

#include <QVariant>

#include <functional>

namespace terminal {

/// The user's own lists of instruments, in the market store.
class StoreSelfStocks : public TC::CSelfStockManager {
public:
    explicit StoreSelfStocks(CMarketStore &store) : mStore(store) {}

    QVector<QString> groups() override;
    QVector<QString> stocks(const QString &group) override;
    QString addStocks(const QString &group, const QVector<QString> &keys) override;
    QString removeStocks(const QString &group, const QVector<QString> &keys) override;

    /// Is called after a list has changed.
    void setChangeListener(std::function<void()> listener) { mListener = std::move(listener); }

private:
    /// Runs a statement for every key of a list, all or none, and tells the change.
    QString changeEach(const QString &group, const QVector<QString> &keys, const QString &statement);
    QVector<QString> column(const StoreQuestion &question);

    CMarketStore &mStore;
    std::function<void()> mListener;
};

} // namespace terminal
