#pragma once

#include <QString>

namespace TC {

/// Ids of the controls of the settings dialog, as their events tell them. The check boxes of the kinds follow each other
/// in the order of ELinkageShow.
enum ELinkageControl : int {
    eFirstKind = 3,
    eLastKind = 9,
    eStockSelectAll = 10,
    eStrategySelectAll = 11,
    eImportOrders = 12,
    eImportDeals = 13,
    eAllStocks = 14,
    eRevertStocks = 15,
    eAllStrategies = 16,
    eRevertStrategies = 17,
    eSeeAll = 18,
    eSeeStrategies = 19,
    eMinimise = 20,
    eClearImports = 21,
};

// Object names of the check boxes of each table, which their events tell.
const QString kAccountTable = QStringLiteral("account_table");
const QString kStrategyTable = QStringLiteral("strategy_table");
const QString kStockTable = QStringLiteral("stock_table");

} // namespace TC
