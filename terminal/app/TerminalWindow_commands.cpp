#include "containers/CRealtimeMainWidget.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/windows/CFormulaEditorManager.h"
#include "host/windows/CModifyModelParamDialog.h"
#include "host/windows/CSmartKeyboardDialog.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/app/TerminalWindow.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>

namespace terminal {

void TerminalWindow::openSmartKeyboard(const QString &text) {
    TC::CSmartKeyboardDialog *keyboard = TC::CSmartKeyboardDialog::instance();
    keyboard->setPickCallback(
        this, [this](const TC::CStockInfo &picked, TC::ESmartKeyType type) { takePick(picked, type); });
    keyboard->setTitle(tr("键盘精灵"));
    keyboard->openFor(this, text);
}

void TerminalWindow::takePick(const TC::CStockInfo &picked, TC::ESmartKeyType type) {
    switch (type) {
    case TC::ESmartKeyType::Stock:
    case TC::ESmartKeyType::Index:
        showInstrument(picked.key());
        break;
    case TC::ESmartKeyType::Shortcut:
        showInstrument(picked.mCode == QLatin1String("03") ? QStringLiteral("SH000001")
                                                           : QStringLiteral("SZ399001"));
        break;
    case TC::ESmartKeyType::Formula:
        mView->main()->handleDoubleClickedFormula(picked.mCode);
        break;
    case TC::ESmartKeyType::Function:
        break;
    }
    activateWindow();
    mView->setFocus();
}

void TerminalWindow::setFormulasShown(bool shown) {
    if (shown) {
        mFormulas->refresh();
    }
    mFormulas->setVisible(shown);
    const QSignalBlocker quiet(mFormulasShown);
    mFormulasShown->setChecked(shown);
    colorButtons();
}

void TerminalWindow::connectFormulas() {
    connect(mFormulas, &FormulaPanel::asked, this,
            [this](const QString &formula) { mView->main()->handleDoubleClickedFormula(formula); });
    connect(mFormulas, &FormulaPanel::parametersAsked, this, &TerminalWindow::askParameters);
    connect(mFormulas, &FormulaPanel::editAsked, this, &TerminalWindow::editFormula);
    connect(mMessages, &MessagePanel::formulaChosen, this, &TerminalWindow::editFormula);
    TC::CModifyModelParamDialog::setChangedFunction([this](const QString &formula) {
        mServices.historyCache().clear();
        mView->main()->handleConfirmFormula(formula);
        mFormulas->refresh();
    });
    TC::CFormulaEditorManager::setApplyFunction(
        [this](const QString &formula, TC::EFormulaLanguage language, corvane::ERunMode mode) {
            mServices.historyCache().clear();
            refreshSearch();
            mFormulas->refresh();
            mView->main()->handleApplyFormula(formula, language, mode);
        });
}

/// Opens the editor of a formula, or of a new one; an unknown name, as that of a script model, has none.
void TerminalWindow::editFormula(const QString &formula) {
    const TC::CFormulaDetailPtr detail =
        TC::CSingletonT<TC::CFormulaOperateManager>::instance().getFormula(formula);
    if (detail || formula.isEmpty()) {
        TC::CFormulaEditorManager::createWindow(formula, detail ? detail->mType : 0, this);
    }
}

void TerminalWindow::askParameters(const QString &formula) {
    auto *dialog = new TC::CModifyModelParamDialog(formula, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

bool TerminalWindow::handleCommandKey(int key) {
    switch (key) {
    case Qt::Key_O:
        openImport();
        return true;
    case Qt::Key_T:
        mTheme->click();
        return true;
    case Qt::Key_I:
        setFormulasShown(!mFormulas->isVisible());
        return true;
    default:
        return false;
    }
}

bool TerminalWindow::handleCursorKey(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        mView->moveCursor(key == Qt::Key_Left);
        return true;
    case Qt::Key_Home:
        mView->moveToHome();
        return true;
    case Qt::Key_End:
        mView->moveToEnd();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        mView->main()->scaleView(key == Qt::Key_Up);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        shiftDay(key == Qt::Key_PageUp ? -1 : 1);
        return true;
    case Qt::Key_Space:
        setPaused(!mServices.clock().isPaused());
        return true;
    case Qt::Key_Escape:
        return mView->hideCrossLine();
    default:
        return false;
    }
}

void TerminalWindow::keyPressEvent(QKeyEvent *event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    const QString text = event->text();
    if (control ? handleCommandKey(event->key()) : handleCursorKey(event->key())) {
        return;
    }
    if (!control && !text.isEmpty() && text[0].isLetterOrNumber()) {
        openSmartKeyboard(text);
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace terminal
