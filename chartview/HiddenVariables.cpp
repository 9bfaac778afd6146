#include "chartview/HiddenVariables.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/GraphSubject.h"
#include "host/drawing/CArrowColorSimpleText.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/windows/CViewVariableDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QStringList>

namespace TC {

HiddenVariables::~HiddenVariables() {
    if (mDialog) {
        mDialog->deleteLater();
    }
}

void HiddenVariables::show() {
    const CRealtimeUiParam &uiParam = *mSubject.uiParam;
    const CRealtimeData &data = *mSubject.data;
    CArrowColorSimpleText title(QStringLiteral("fnt_index_title_text"));
    CFormulaKey key;
    bool empty = true;
    data.readData([&](const CRealtimeData::SeriesMap &series) {
        empty = series.isEmpty();
        if (!empty) {
            key = series.firstKey();
            CDrawStyle::getTitleText(title, key, series.first(), uiParam.mCrossIndex, uiParam.getStockDetail(),
                                     uiParam.getAllAddStockList());
        }
    });
    const QList<QString> formulas = data.getFormulas();
    if (empty || formulas.isEmpty()) {
        return;
    }
    const int index = uiParam.mCrossIndex;
    const QDateTime moment = uiParam.getDateTimeByIndex(index);
    const QDate date = (moment.isValid() ? moment : uiParam.getDateTimeByIndex(0)).date();
    const QString time =
        tr("时间:%1").arg(date.toString(QStringLiteral("yyyy/MM/dd ")) + uiParam.getTimeTextByIndex(index));
    const QString hidden =
        uiParam.service<CFormulaManager>().lookHideVar(data.getReqID(key), uiParam.mCrossIndex);
    if (!mDialog) {
        mDialog = new CViewVariableDialog(&mGraph);
    }
    mDialog->setText(QStringList{formulaHead(formulas.first(), uiParam.service<CFormulaOperateManager>()), time,
                                 title.text(), hidden}
                         .join(QLatin1Char(' ')));
    mDialog->show();
}

} // namespace TC
