#include "chartview/OverlayCommands.h"

#include "chartdata/RequestLog.h"
#include "chartview/GraphSubject.h"
#include "chartview/UserSettings.h"
#include "host/records/CStockInfo.h"
#include "host/services/CSectorManager.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/CMessageBox.h"
#include "host/toolkit/Events.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/format.hpp>

#include <algorithm>

namespace TC {

namespace {

constexpr int kNoLevel = -1;

/// Index that a shortcut of the smart keyboard stands for; empty for any other.
QString indexOfShortcut(const QString &shortcut) {
    return shortcut == QLatin1String("03")   ? QStringLiteral("SH000001")
           : shortcut == QLatin1String("04") ? QStringLiteral("SZ399001")
                                             : QString();
}

} // namespace

void OverlayCommands::ask(int change, const QString &key) {
    mGraph.deliverEvent(eOverlayAsked, 0, change, key, nullptr);
}

/// Whether one more can be overlaid; the user is told when not.
bool OverlayCommands::hasRoom() {
    const bool has = mSubject.uiParam->canAddStock();
    if (!has) {
        GZ::CMessageBox::warning(&mGraph, tr("提示"), tr("已达到允许叠加最大限制数3!"));
    }
    return has;
}

void OverlayCommands::openKeyboard(const QString &title, bool withAxis) {
    if (!hasRoom()) {
        return;
    }
    CSmartKeyboardDialog *keyboard = CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(&mGraph, [this, withAxis](const CStockInfo &picked, ESmartKeyType type) {
        overlayPicked(picked, type, withAxis);
    });
    keyboard->setTitle(title);
    keyboard->openFor(&mGraph);
}

void OverlayCommands::overlayPicked(const CStockInfo &picked, ESmartKeyType type, bool withAxis) {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    const QString key = picked.key();
    // One of the other kind may be picked: the host moves it. A shortcut may have no key, which is part of any.
    const QList<CInstrumentDetailPtr> &sameKind = withAxis ? uiParam.mAddStocks : uiParam.mAddNoAxisStocks;
    const bool isThere =
        !key.isEmpty() && std::any_of(sameKind.begin(), sameKind.end(), [&key](const auto &detail) {
            return getDetailQsKey(detail).contains(key, Qt::CaseInsensitive);
        });
    if (isThere || uiParam.isMainStock(key)) {
        return;
    }
    const int change = withAxis ? eOverlayWithAxis : eOverlayWithoutAxis;
    switch (type) {
    case ESmartKeyType::Stock:
    case ESmartKeyType::Index:
        ask(change, key);
        break;
    case ESmartKeyType::Shortcut:
        ask(change, indexOfShortcut(picked.mCode));
        break;
    default: // functions and formulas are no instruments
        break;
    }
}

void OverlayCommands::takeAll() {
    ask(eTakeAllOverlays);
}

void OverlayCommands::overlayCounterpart() {
    if (hasRoom()) {
        const QString counterpart = getPairedStock(mSubject.stock, mSubject.uiParam->service<CSectorManager>());
        if (!counterpart.isEmpty()) {
            ask(eOverlayWithAxis, counterpart);
        }
    }
}

void OverlayCommands::followPair(bool wasPaired) {
    if (mSubject.viewType != EIndexViewType::Paired || mSubject.uiParam->getAllAddStockList().isEmpty()) {
        return;
    }
    if (mSubject.paired) {
        takeAll();
        overlayCounterpart();
    } else if (wasPaired) {
        takeAll();
    }
}

void OverlayCommands::toggleSector() {
    const bool on =
        changeSettings(mSubject.uiParam->service<CConfigService>().indexUserConfig(),
                       [](UserConfigRecord &settings) { settings.mOverlaySector = !settings.mOverlaySector; })
            .mOverlaySector;
    ask(on ? eOverlayWithAxis : eTakeAllOverlays, on ? mSubject.uiParam->mSector : QString());
}

void OverlayCommands::toggleSectorLevel(int level) {
    if (!mSubject.isMain()) {
        return;
    }
    CRealtimeUiParam &uiParam = *mSubject.uiParam;
    if (uiParam.mAddSwBkzsLevel >= 0) { // any level, the same or another, only cancels
        uiParam.setAddSwBkzsLevel(kNoLevel);
        uiParam.clearAddSwBkzsCode();
        ask(eRenewOverlays);
        return;
    }
    uiParam.setAddSwBkzsLevel(level);
    uiParam.updateAddSwBkzsCode();
    CSectorManager &sectors = mSubject.uiParam->service<CSectorManager>();
    const QString stock = uiParam.getStock();
    const QString sector = sectors.getSWSectorByStock(stock, level);
    if (sectors.getBkzsCodeByName(sector).isEmpty()) {
        logTraffic(&mGraph, "TC::CRealtimeGraphWidget::slotAddBkzsCode", "CRealtimeGraphWidget",
                   boost::format("get bkzs code empty. mainID:%1%, curStock:%2%, swLevel:%3%, swSector:%4%") %
                       uiParam.getMainPanelID() % stock.toStdString() % level % sector.toStdString());
        return;
    }
    ask(eRenewOverlays);
}

void OverlayCommands::toggleConvertible() {
    if (!mSubject.isMain()) {
        return;
    }
    CRealtimeUiParam &uiParam = *mSubject.uiParam;
    bool changed = true;
    if (uiParam.mAddStockFlags & eConvertibleOverlay) {
        uiParam.mAddStockFlags &= ~eConvertibleOverlay;
        uiParam.clearAddConvertibleCode();
    } else {
        uiParam.mAddStockFlags |= eConvertibleOverlay;
        uiParam.updateAddConvertibleCode();
        changed = !mSubject.uiParam->service<CSectorManager>()
                       .getConvertibleCodeByStock(uiParam.getStock())
                       .isEmpty();
    }
    if (changed) {
        ask(eRenewOverlays);
    }
}

} // namespace TC
