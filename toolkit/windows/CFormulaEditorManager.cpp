#include "host/windows/CFormulaEditorManager.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CMessageBox.h"
#include "host/toolkit/Text.h"
#include "toolkit/windows/CodeEdit.h"
#include "toolkit/windows/FormulaEditorWindow.h"

#include <QCoreApplication>
#include <QList>
#include <QPointer>

namespace TC {
namespace {

using WindowPtr = QPointer<GZ::FormulaEditorWindow>;

QList<WindowPtr> &windows() {
    static QList<WindowPtr> open;
    return open;
}

/// The open window of a formula, or null. Windows of new formulas are all different.
GZ::FormulaEditorWindow *windowOf(const QString &name, const CFormulaOperateManager &formulas) {
    windows().removeAll(WindowPtr());
    for (const WindowPtr &window : qAsConst(windows())) {
        if (!name.isEmpty() && &window->formulas() == &formulas && GZ::isSameName(window->name(), name)) {
            return window;
        }
    }
    return nullptr;
}

bool isScript(const QString &name, CFormulaOperateManager &formulas) {
    const CFormulaDetailPtr formula = formulas.getFormula(name);
    return !name.isEmpty() && formula && formula->mLanguage == EFormulaLanguage::Python;
}

struct EditorWords {
    Q_DECLARE_TR_FUNCTIONS(TC::CFormulaEditorManager)
};

} // namespace

QWidget *CFormulaEditorManager::createWindow(const QString &name, int, QWidget *parent, int line,
                                             const ServiceContext &services) {
    auto &formulas = services.get<CFormulaOperateManager>();
    if (isScript(name, formulas)) {
        GZ::CMessageBox::warning(parent, EditorWords::tr("提示"),
                                 EditorWords::tr("%1 是脚本模型，请编辑文件夹 %2 中的 %3.py")
                                     .arg(name, formulas.pythonDir(), name.toUpper()));
        return nullptr;
    }
    GZ::FormulaEditorWindow *window = windowOf(name, formulas);
    if (!window) {
        window = new GZ::FormulaEditorWindow(name, parent, formulas);
        windows().append(window);
    }
    if (line > 0) {
        window->edit()->markLine(line);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void CFormulaEditorManager::setApplyFunction(ApplyFunction function) {
    GZ::FormulaEditorWindow::setApplyFunction(std::move(function));
}

} // namespace TC
