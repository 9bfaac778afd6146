#include "chartview/FormulaCommands.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/GraphSubject.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/services/CStrategyTradeManager.h"
#include "host/toolkit/CBaseWidget.h"
#include "host/toolkit/CMessageBox.h"
#include "host/toolkit/Events.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <QStringList>

#include <algorithm>

namespace TC {

bool FormulaCommands::isAttached(const QString &formula, const CRealtimeUiParam &uiParam) {
    const CFormulaDetailPtr detail = uiParam.service<CFormulaOperateManager>().getFormula(formula);
    return detail && detail->mType == eAttachedFormula;
}

void FormulaCommands::edit() {
    const QList<QString> formulas = mSubject.data->getFormulas();
    QString name = formulas.value(0);
    if (mSubject.isMain()) {
        const auto found = std::find_if(formulas.begin(), formulas.end(), [this](const QString &formula) {
            return !mSubject.uiParam->isMainFormula(formula);
        });
        if (found == formulas.end()) {
            GZ::CMessageBox::warning(&mGraph, tr("Velmar指标终端"), tr("系统指标不可编辑!"));
            return;
        }
        name = *found;
    }
    CFormulaEditorManager::createWindow(name, 0, nullptr, 0, mSubject.uiParam->services());
}

void FormulaCommands::modifyParameters() {
    const QList<QString> formulas = mSubject.data->getFormulas();
    if (formulas.isEmpty()) {
        return;
    }
    const QString name = formulas.last();
    const QPointer<QWidget> alive(&mGraph); // its day may go while the question is open
    if (mSubject.uiParam->service<CStrategyTradeManager>().isFomrulaRun(name) &&
        GZ::CMessageBox::question(&mGraph, tr("提示"),
                                  tr("该策略正在模型交易中运行,编辑策略不会影响运行情况,是否继续编辑?"),
                                  QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Cancel) {
        return;
    }
    if (!alive || name.isEmpty()) {
        return;
    }
    if (mModifyParamDialog) {
        mModifyParamDialog->init(name);
    } else {
        mModifyParamDialog = new CModifyModelParamDialog(name, &mGraph);
    }
    mModifyParamDialog->show();
}

void FormulaCommands::closeAll() {
    const QList<QString> formulas = mSubject.data->getFormulas();
    for (const QString &formula : formulas) {
        if (!mSubject.uiParam->isMainFormula(formula)) {
            mSubject.data->removeFormula(formula, true);
        }
    }
    const QPointer<QWidget> alive(&mGraph); // its pane may go
    mGraph.deliverEvent(ePaneCloseAsked, mSubject.id, eClosedByUser, formulas.value(0), nullptr);
    if (alive) {
        mGraph.deliverEvent(eDataChanged, 0, 0, QString(), nullptr);
    }
}

void FormulaCommands::putOn(const QString &formula) {
    if (mSubject.isMain() && isAttached(formula, *mSubject.uiParam)) {
        mGraph.deliverEvent(eFormulaAsked, 0, ePutFormulaOn, formula, nullptr);
    }
}

void FormulaCommands::takeOff(const QString &formula) {
    if (mSubject.isMain()) {
        mGraph.deliverEvent(eFormulaAsked, 0, eTakeFormulaOff, formula, nullptr);
    }
}

void FormulaCommands::exportFirst() {
    mSubject.uiParam->service<CIndexMainWindowHelper>().exportFormula(mSubject.data->getSubFormulas().value(0));
}

void FormulaCommands::copyResults() {
    QGuiApplication::clipboard()->setText(mSubject.data->getResultText());
}

void FormulaCommands::copyRequestInfo() {
    const auto joined = [](const QStringList &parts) { return parts.join(QLatin1Char(';')); };
    const QStringList lines{QStringLiteral("code:%1").arg(mSubject.uiParam->getStock()),
                            QStringLiteral("formulas:%1").arg(joined(mSubject.data->getFormulas())),
                            QStringLiteral("reqIDs:%1").arg(joined(mSubject.data->reqIds().toList()))};
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

} // namespace TC
