#include "containers/KeyedFormulas.h"

#include "containers/CRealtimeWidget.h"
#include "containers/FormulaPlacement.h"
#include "containers/FormulaTypes.h"
#include "containers/MainChart.h"
#include "containers/PaneRow.h"
#include "containers/SelectedPane.h"

#include <algorithm>

namespace TC {

namespace {

constexpr int kUnknownType = -1; ///< in the words of the host; counts as a formula with a pane of its own

} // namespace

KeyedFormulas::KeyedFormulas(const PaneRow &panes, const SelectedPane &selected, MainChart &chart,
                             FormulaPlacement &placement)
    : mPanes(panes), mSelected(selected), mChart(chart), mPlacement(placement) {}

void KeyedFormulas::place(const QString &key, int type, const QString &name) {
    CIndexWidgetInfo info;
    info.mName = name;
    info.mKey = key;
    info.mType = type;
    switch (type) {
    case eReplacingFormula:
        mChart.replaceBy(name);
        info.mWidget = mPanes.main();
        break;
    case eAttachedFormula:
        info.mWidget = placeAttached(name);
        break;
    case eSubPaneFormula:
    case kUnknownType:
        info.mWidget = placeSub(key, name);
        break;
    default:
        return;
    }
    mInfos.insert(key, info);
}

/// One that is taken off has no pane.
CRealtimeWidget *KeyedFormulas::placeAttached(const QString &name) {
    const bool takenOff = mChart.has(name);
    if (mChart.toggleAttached(name) && takenOff) {
        mPanes.main()->request(corvane::ERunMode::Ordinary);
    }
    mPlacement.removeFromSubs(name);
    return takenOff ? nullptr : mPanes.main();
}

CRealtimeWidget *KeyedFormulas::placeSub(const QString &key, const QString &name) {
    mPlacement.takeFromMain(name);
    const QVector<CRealtimeWidget *> &subs = mPanes.subs();
    const auto known = mInfos.constFind(key);
    if (subs.isEmpty() || known == mInfos.constEnd()) {
        return mPlacement.addPaneOf(name);
    }
    if (mSelected.isMain()) {
        subs.last()->updateIndex(name);
        return known->mWidget;
    }
    const auto found = std::find_if(
        subs.begin(), subs.end(), [&name](const CRealtimeWidget *pane) { return pane->gePretIndex() == name; });
    if (found == subs.end()) {
        return mPlacement.addPaneOf(name);
    }
    CRealtimeWidget *pane = *found;
    mPlacement.replaceIn(pane, name);
    return pane;
}

void KeyedFormulas::close(const QString &key) const {
    if (CRealtimeWidget *pane = mInfos.value(key).mWidget) {
        pane->destorySubWidget();
    }
}

void KeyedFormulas::push(const QString &key, const FormulaMetaPtr &meta, const FormulaResultPtr &result) const {
    const CIndexWidgetInfo info = mInfos.value(key);
    if (info.mWidget) {
        info.mWidget->minitermFormulaDataCallback(meta, result, info.mKey, info.mName,
                                                  info.mType != eReplacingFormula ? 1 : 0);
    }
}

void KeyedFormulas::forget(const CRealtimeWidget *pane) {
    const auto info = std::find_if(mInfos.begin(), mInfos.end(),
                                   [pane](const CIndexWidgetInfo &one) { return one.mWidget.data() == pane; });
    if (info != mInfos.end()) {
        mInfos.erase(info);
    }
}

} // namespace TC
