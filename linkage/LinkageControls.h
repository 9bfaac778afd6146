#pragma once

#include <QCoreApplication>
#include <QString>

namespace GZ {
class CSmallNoNormalButton;
}

namespace TC {

/// The texts of the settings dialog, whichever of its parts shows them.
struct SettingWords {
    Q_DECLARE_TR_FUNCTIONS(TC::CRealtimeLinkageSettingDialog)
};

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

/// A button of the dialog's tool bars.
GZ::CSmallNoNormalButton *makeBarButton(const QString &text, int id, int width);

} // namespace TC
