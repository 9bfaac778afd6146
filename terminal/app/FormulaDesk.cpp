#include "terminal/app/FormulaDesk.h"

#include "containers/CRealtimeMainWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/app/TerminalServices.h"

namespace terminal {

FormulaDesk::FormulaDesk(TerminalServices &services, ChartView &view, FormulaPanel &panel,
                         MessagePanel &messages, QWidget *window)
    : QObject(window), mWindow(window) {
    TC::CRealtimeMainWidget *chart = view.main();
    connect(&panel, &FormulaPanel::asked, this,
            [chart](const QString &formula) { chart->handleDoubleClickedFormula(formula); });
    connect(&panel, &FormulaPanel::parametersAsked, this, &FormulaDesk::askParameters);
    connect(&view, &ChartView::parametersAsked, this, &FormulaDesk::askParameters);
    connect(&panel, &FormulaPanel::editAsked, this, [this](const QString &formula) { edit(formula); });
    connect(&messages, &MessagePanel::formulaChosen, this, &FormulaDesk::edit);
    TC::CModifyModelParamDialog::setChangedFunction([&services, &panel, chart](const QString &formula) {
        services.historyCache().clear();
        chart->handleConfirmFormula(formula);
        panel.refresh();
    });
    TC::CFormulaEditorManager::setApplyFunction([this, &services, &panel, chart](const QString &formula,
                                                                                 TC::EFormulaLanguage language,
                                                                                 corvane::ERunMode mode) {
        services.historyCache().clear();
        Q_EMIT catalogueChanged();
        panel.refresh();
        chart->handleApplyFormula(formula, language, mode);
    });
}

FormulaDesk::~FormulaDesk() {
    TC::CModifyModelParamDialog::setChangedFunction({});
    TC::CFormulaEditorManager::setApplyFunction({});
}

void FormulaDesk::edit(const QString &formula, int line) {
    TC::CFormulaOperateManager &catalogue = TC::CSingletonT<TC::CFormulaOperateManager>::instance();
    const TC::CFormulaDetailPtr detail = catalogue.getFormula(formula);
    if (formula.isEmpty() || detail || !catalogue.source(formula).mText.isEmpty()) {
        TC::CFormulaEditorManager::createWindow(formula, detail ? detail->mType : 0, mWindow, line);
    }
}

void FormulaDesk::askParameters(const QString &formula) {
    auto *dialog = new TC::CModifyModelParamDialog(formula, mWindow);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

} // namespace terminal
