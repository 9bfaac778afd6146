#pragma once

#include "host/records/CFormulaSource.h"
#include "host/toolkit/CUiResource.h"
#include "host/windows/CFormulaEditorManager.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace TC {
class CFormulaOperateManager;
} // namespace TC

namespace GZ {

class CodeEdit;

/// The editor of one formula: its text, with buttons that check it, keep it, apply it with a run mode and bring the
/// built-in text back. Ctrl+S keeps, F7 checks, F9 applies. Closing with a changed text asks first.
class FormulaEditorWindow : public QWidget, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    /// With an empty name a new formula, which takes its name from its text when it is kept.
    /// It is one of the catalogue.
    FormulaEditorWindow(const QString &name, QWidget *parent, TC::CFormulaOperateManager &formulas);

    const TC::CFormulaOperateManager &formulas() const { return mFormulas; }
    /// Name of the formula; empty for a new one that has not been kept.
    const QString &name() const { return mName; }
    CodeEdit *edit() const { return mEdit; }
    QString message() const;
    bool isChanged() const;

    /// Checks the text, says what is wrong and marks the line. True when nothing is.
    bool check();
    /// Keeps the text as the user's own. False, with the reason shown, when that cannot be.
    bool save();
    /// Keeps a changed text, and calls the apply function with the run mode chosen.
    void apply();
    /// Asks, takes the user's text away and shows the built-in one.
    void restore();

    static void setApplyFunction(TC::CFormulaEditorManager::ApplyFunction function);

    void onUiResourceChanged() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void load();
    void build();
    template <class Slot>
    QPushButton *addButton(const QString &text, const char *name, const QString &key, Slot slot);
    bool isGood(const TC::CFormulaFault &fault);
    void showState();
    void say(const QString &text, bool isError = false);

    TC::CFormulaOperateManager &mFormulas;
    QString mName;
    TC::EFormulaLanguage mLanguage = TC::EFormulaLanguage::Native;
    CodeEdit *mEdit;
    QComboBox *mMode = nullptr;
    QPushButton *mRestore = nullptr;
    QLabel *mMessage = nullptr;
    bool mIsError = false;
};

} // namespace GZ
