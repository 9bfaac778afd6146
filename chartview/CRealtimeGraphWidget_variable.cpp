#include "chartview/CRealtimeGraphWidget.h"

#include "chartdata/CRealtimeData.h"
#include "host/drawing/CArrowColorSimpleText.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/windows/CViewVariableDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>

namespace TC {

void CRealtimeGraphWidget::viewVariable() {
    CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
    CFormulaKey key;
    bool empty = true;
    mData->readData([&](const CRealtimeData::SeriesMap &data) {
        empty = data.isEmpty();
        if (!empty) {
            key = data.firstKey();
            CDrawStyle::getTitleText(title, key, data.first(), mUiParam->mCrossIndex,
                                     mUiParam->getStockDetail(), mUiParam->getAllAddStockList());
        }
    });
    const QList<QString> formulas = mData->getFormulas();
    if (empty || formulas.isEmpty()) {
        return;
    }
    const QString time = tr("时间:%1").arg(
        mUiParam->getDateTimeByIndex(mUiParam->mCrossIndex).toString(QStringLiteral("yyyy/MM/dd hh:mm")));
    const QString hidden =
        CSingletonT<CFormulaManager>::instance().lookHideVar(mData->getReqID(key), mUiParam->mCrossIndex);
    if (!mVariableDialog) {
        mVariableDialog = new CViewVariableDialog(this);
    }
    mVariableDialog->setText(
        QStringList{formulaHead(formulas.first()), time, title.text(), hidden}.join(QLatin1Char(' ')));
    mVariableDialog->show();
}

} // namespace TC
