// The instrument of a graph, its overlays, and whose trades it shows.

#include "chartview/CRealtimeGraphWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/toolkit/CMessageBox.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>

namespace TC {

namespace {

constexpr int eAccountsChanged = 3163; ///< event

} // namespace

void CRealtimeGraphWidget::setStock(const QString &key, bool isPair) {
    if (key == mStock) {
        return;
    }
    mStock = key;
    CSingletonT<CIndexMainWindowHelper>::instance().instrumentChanged(key);
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

void CRealtimeGraphWidget::superposedStock() {
    slotOverlayStock();
}

void CRealtimeGraphWidget::showContrastSector() {
    slotContrastSector(false);
}

/// Lets the user pick an instrument to overlay.
void CRealtimeGraphWidget::openOverlayKeyboard(const QString &title, bool withAxis) {
    if (!mUiParam->canAddStock()) {
        warnOfLimit();
        return;
    }
    CSmartKeyboardDialog *keyboard = CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(this, [this, withAxis](const CStockInfo &picked, ESmartKeyType type) {
        overlayPickedStock(picked, type, withAxis);
    });
    keyboard->setTitle(title);
    keyboard->openFor(this);
}

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
    QList<QString> &shown = shownAccounts();
    for (const QString &account : parts) {
        if (!add) {
            shown.removeOne(account);
        } else if (!shown.contains(account)) {
            shown.append(account);
        }
    }
    tellShownAccounts();
}

void CRealtimeGraphWidget::updateLinkageData(const QList<QString> &accounts, bool add) {
    if (!accounts.isEmpty()) {
        updateLinkageData(QStringList(accounts).join(QLatin1Char(',')), add);
    }
}

QList<QString> &CRealtimeGraphWidget::shownAccounts() {
    const bool futures = isFuturesMarket(getDetailQsMarket(mUiParam->getStockDetail()));
    return futures ? mUiParam->mFutureAccounts : mUiParam->mStockAccounts;
}

/// Switches the view of accounts as the lists ask for, and tells the view.
void CRealtimeGraphWidget::tellShownAccounts() {
    const bool any = !mUiParam->mStockAccounts.isEmpty() || !mUiParam->mFutureAccounts.isEmpty();
    mUiParam->mLinkageFlags =
        any ? mUiParam->mLinkageFlags | eAccountView : mUiParam->mLinkageFlags & ~eAccountView;
    deliverEvent(eAccountsChanged, 0, 0, QString(), nullptr);
}

} // namespace TC
