// The instrument of a graph, its overlays, and whose trades it shows.

#include "chartview/CRealtimeGraphWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "host/services/CSectorManager.h"
#include "host/toolkit/CMessageBox.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>

namespace TC {

namespace {

enum EEvent : int {
    eOverlayAsked = 209,
    eAccountsChanged = 3163,
};

/// What event 209 asks for.
enum EOverlay : int { eTakeAll = 0, eWithAxis = 1 };

} // namespace

void CRealtimeGraphWidget::setStock(const QString &key, bool isPair) {
    if (key == mStock) {
        return;
    }
    mStock = key;
    const bool wasPair = mAHOverlay;
    mAHOverlay = isPair;
    if (mViewType != EIndexViewType::Paired || mUiParam->getAllAddStockList().isEmpty()) {
        return;
    }
    if (isPair) {
        slotDelAllStock();
        slotOverlayAHStock();
    } else if (wasPair) {
        slotDelAllStock();
    }
}

void CRealtimeGraphWidget::slotDelAllStock() {
    deliverEvent(eOverlayAsked, 0, eTakeAll, QString(), nullptr);
}

void CRealtimeGraphWidget::slotOverlayAHStock() {
    if (!mUiParam->canAddStock()) {
        warnOfLimit();
        return;
    }
    auto &sectors = CSingletonT<CSectorManager>::instance();
    QString partner = sectors.getHStockByAStock(mStock);
    if (partner.isEmpty()) {
        partner = sectors.getAStockByHStock(mStock);
    }
    if (!partner.isEmpty()) {
        deliverEvent(eOverlayAsked, 0, eWithAxis, partner, nullptr);
    }
}

void CRealtimeGraphWidget::superposedStock() {
    if (!mUiParam->canAddStock()) {
        warnOfLimit();
        return;
    }
    CSmartKeyboardDialog *keyboard = CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(
        this, [this](const CStockInfo &picked, ESmartKeyType type) { overlayPickedStock(picked, type, true); });
    keyboard->setTitle(tr("叠加品种"));
    keyboard->openFor(this);
}

void CRealtimeGraphWidget::showContrastSector() {}

void CRealtimeGraphWidget::showTitleMenu(const QPoint & /*at*/) {}

void CRealtimeGraphWidget::warnOfLimit() {
    GZ::CMessageBox::warning(this, tr("提示"), tr("已达到允许叠加最大限制数3!"));
}

void CRealtimeGraphWidget::updateLinkageData(const QString &accounts, bool add) {
    const QStringList parts = accounts.split(QLatin1Char(','));
    const bool isListed =
        mUiParam->mStockAccounts.contains(accounts) || mUiParam->mFutureAccounts.contains(accounts);
    if (parts.size() == 1 && add && isListed) {
        return;
    }
    const bool futures = isFuturesMarket(getDetailQsMarket(mUiParam->getStockDetail()));
    QList<QString> &shown = futures ? mUiParam->mFutureAccounts : mUiParam->mStockAccounts;
    for (const QString &account : parts) {
        if (!add) {
            shown.removeOne(account);
        } else if (!shown.contains(account)) {
            shown.append(account);
        }
    }
    const bool any = !mUiParam->mStockAccounts.isEmpty() || !mUiParam->mFutureAccounts.isEmpty();
    mUiParam->mLinkageFlags =
        any ? mUiParam->mLinkageFlags | eAccountView : mUiParam->mLinkageFlags & ~eAccountView;
    deliverEvent(eAccountsChanged, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::updateLinkageData(const QList<QString> &accounts, bool add) {
    if (!accounts.isEmpty()) {
        updateLinkageData(QStringList(accounts).join(QLatin1Char(',')), add);
    }
}

} // namespace TC
