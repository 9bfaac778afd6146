#include "containers/SavedView.h"

#include "chartdata/RequestLog.h"
#include "containers/CRealtimeMainWidget.h"
#include "containers/ConciseStyle.h"
#include "containers/FormulaTypes.h"
#include "containers/TemplateBar.h"
#include "containers/TradeSettings.h"
#include "containers/ViewDocument.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <boost/format.hpp>

namespace TC {

SavedView::SavedView(CRealtimeMainWidget &view, TemplateBar &bar, TradeSettings &tradeSettings)
    : mView(view), mBar(bar), mTradeSettings(tradeSettings) {}

QString SavedView::text() const {
    ViewDocument document;
    document.mFormulas = mView.getIndexParam();
    if (isConcise(mView.getUiParam()->services())) {
        document.mBarFormulas = mBar.selectedFormulas();
        document.mBarTemplates = mBar.selectedTemplates();
    }
    document.mOverlays = mView.getAddStockList().toVector();
    const QMap<QString, bool> setting = mTradeSettings.setting();
    for (auto entry = setting.constBegin(); entry != setting.constEnd(); ++entry) {
        document.mTradeSetting.append({entry.key(), entry.value()});
    }
    const CRealtimeUiParam &uiParam = *mView.getUiParam();
    document.mSectorLevel = uiParam.mAddSwBkzsLevel;
    document.mOverlayFlags = uiParam.mAddStockFlags;
    document.mConvertibles = uiParam.mAddConvertibleCodes.values().toVector();
    for (const QString &name : mView.getRealTimeWidget()->getIndexes()) {
        if (formulaType(name, mView.getUiParam()->services()) == eAttachedFormula) {
            document.mAttached.append(name);
        }
    }
    return document.toText();
}

void SavedView::restore(const QString &text) {
    const std::optional<ViewDocument> document =
        ViewDocument::fromText(text, isConcise(mView.getUiParam()->services()));
    if (!document) {
        return;
    }
    restoreBeforePanes(*document);
    if (document->mFormulas) { // otherwise a fault stands in front of them
        restorePanes(*document);
        restoreBehindPanes(*document);
    }
}

void SavedView::restoreBeforePanes(const ViewDocument &document) {
    if (isConcise(mView.getUiParam()->services())) {
        mBar.templatesCame();
        if (document.mBarFormulas) {
            mBar.selectFormulas(*document.mBarFormulas);
        }
        if (document.mBarTemplates) {
            mBar.selectTemplates(*document.mBarTemplates);
        }
    }
    for (const QString &key : document.mOverlays) {
        if (const CInstrumentDetailPtr detail =
                mView.getUiParam()->services().get<CStockManager>().getInstrumentDetail(key)) {
            mView.addSuperposedStock(detail);
        }
    }
}

void SavedView::restorePanes(const ViewDocument &document) {
    if (document.mFormulasLeftOut > 0) {
        logTraffic(&mView, "TC::CRealtimeMainWidget::setParam", "CRealtimeMainWidget",
                   boost::format("setParam, formulas left out:%1%,") % document.mFormulasLeftOut);
    }
    QVector<QString> formulas = *document.mFormulas;
    std::vector<int> stretches;
    mView.loadSettings(formulas, stretches);
}

void SavedView::restoreBehindPanes(const ViewDocument &document) {
    CRealtimeUiParam &uiParam = *mView.getUiParam();
    for (const QPair<QString, bool> &entry : document.mTradeSetting) {
        mTradeSettings.preset(entry.first, entry.second);
    }
    uiParam.mAddSwBkzsLevel = document.mSectorLevel.value_or(uiParam.mAddSwBkzsLevel);
    uiParam.mAddStockFlags = document.mOverlayFlags.value_or(uiParam.mAddStockFlags);
    for (const QString &code : document.mConvertibles.value_or(QVector<QString>())) {
        uiParam.mAddConvertibleCodes.insert(code);
    }
    if (!document.mAttached.isEmpty()) {
        mView.getRealTimeWidget()->addIndex(document.mAttached.first());
    }
}

} // namespace TC
