#include "toolkit/windows/FormulaEditorWindow.h"

#include "host/services/CFormulaOperateManager.h"
#include "host/toolkit/ThemeColor.h"
#include "toolkit/windows/CodeEdit.h"
#include "toolkit/windows/WindowLook.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace GZ {
namespace {

TC::CFormulaEditorManager::ApplyFunction &applyFunction() {
    static TC::CFormulaEditorManager::ApplyFunction function;
    return function;
}

QMessageBox::StandardButton askUser(QWidget *parent, const QString &text,
                                    QMessageBox::StandardButtons buttons) {
    QMessageBox box(QMessageBox::Question, QCoreApplication::translate("GZ::FormulaEditorWindow", "提示"), text,
                    buttons, parent);
    box.setPalette(windowPalette());
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace

FormulaEditorWindow::FormulaEditorWindow(const QString &name, QWidget *parent,
                                         TC::CFormulaOperateManager &formulas)
    : QWidget(parent, Qt::Window), mFormulas(formulas), mName(name), mEdit(new CodeEdit(this)) {
    setObjectName(QStringLiteral("formula_editor"));
    setAttribute(Qt::WA_DeleteOnClose);
    build();
    load();
    resize(760, 620);
    onUiResourceChanged();
}

template <class Slot>
QPushButton *FormulaEditorWindow::addButton(const QString &text, const char *name, const QString &key,
                                            Slot slot) {
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, slot);
    if (!key.isEmpty()) {
        button->setToolTip(key);
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, slot);
    }
    return button;
}

void FormulaEditorWindow::build() {
    mEdit->setObjectName(QStringLiteral("text"));
    auto *row = new QHBoxLayout;
    row->addWidget(addButton(tr("检查"), "check", QStringLiteral("F7"), &FormulaEditorWindow::check));
    row->addWidget(addButton(tr("保存"), "save", QStringLiteral("Ctrl+S"), &FormulaEditorWindow::save));
    mRestore = addButton(tr("恢复内置"), "restore", QString(), &FormulaEditorWindow::restore);
    row->addWidget(mRestore);
    row->addStretch(1);
    mMode = new QComboBox(this);
    mMode->setObjectName(QStringLiteral("mode"));
    mMode->addItem(tr("普通运行"), static_cast<int>(corvane::ERunMode::Ordinary));
    mMode->addItem(tr("带运行数据"), static_cast<int>(corvane::ERunMode::HandOver));
    row->addWidget(mMode);
    row->addWidget(addButton(tr("应用"), "apply", QStringLiteral("F9"), &FormulaEditorWindow::apply));
    mMessage = new QLabel(this);
    mMessage->setObjectName(QStringLiteral("message"));
    mMessage->setTextFormat(Qt::PlainText);
    mMessage->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(mEdit, 1);
    column->addWidget(mMessage);
    connect(mEdit->document(), &QTextDocument::modificationChanged, this, &FormulaEditorWindow::showState);
}

void FormulaEditorWindow::load() {
    const TC::CFormulaSource source = mFormulas.source(mName);
    mLanguage = source.mLanguage;
    mEdit->setPlainText(mName.isEmpty() || source.mText.isEmpty() ? mFormulas.newFormulaText(mName)
                                                                  : source.mText);
    mEdit->markLine(0);
    mEdit->document()->setModified(false);
    showState();
}

void FormulaEditorWindow::showState() {
    const TC::CFormulaSource source = mFormulas.source(mName);
    mRestore->setEnabled(source.mIsUserMade && source.mHasBuiltin);
    setWindowModified(isChanged());
    setWindowTitle(tr("%1[*] - 指标编辑器").arg(mName.isEmpty() ? tr("新指标") : mName));
}

QString FormulaEditorWindow::message() const {
    return mMessage->text();
}

bool FormulaEditorWindow::isChanged() const {
    return mEdit->document()->isModified();
}

bool FormulaEditorWindow::isGood(const TC::CFormulaFault &fault) {
    mEdit->markLine(fault.mLine);
    if (!fault.isGood()) {
        say(fault.mLine > 0 ? tr("第 %1 行：%2").arg(fault.mLine).arg(fault.mMessage) : fault.mMessage, true);
    }
    return fault.isGood();
}

bool FormulaEditorWindow::check() {
    const bool good = isGood(mFormulas.checkFormula(mEdit->toPlainText()));
    if (good) {
        say(tr("检查通过"));
    }
    return good;
}

bool FormulaEditorWindow::save() {
    if (!isGood(mFormulas.saveFormula(mName, mEdit->toPlainText()))) {
        return false;
    }
    mEdit->document()->setModified(false);
    showState();
    say(tr("已保存"));
    return true;
}

void FormulaEditorWindow::apply() {
    const bool isNew = mName.isEmpty();
    if ((isNew || isChanged()) ? !save() : !check()) {
        return;
    }
    if (applyFunction()) {
        applyFunction()(mName, mLanguage, static_cast<corvane::ERunMode>(mMode->currentData().toInt()));
        say(tr("已应用"));
    }
}

void FormulaEditorWindow::restore() {
    const QString question = tr("放弃自己的修改，恢复内置的 %1？").arg(mName);
    if (askUser(this, question, QMessageBox::Ok | QMessageBox::Cancel) != QMessageBox::Ok) {
        return;
    }
    const QString refusal = mFormulas.restoreFormula(mName);
    if (!refusal.isEmpty()) {
        say(refusal, true);
        return;
    }
    load();
    say(tr("已恢复内置指标"));
}

void FormulaEditorWindow::closeEvent(QCloseEvent *event) {
    bool close = true;
    if (isChanged()) {
        const auto answer = askUser(this, tr("指标已修改，是否保存？"),
                                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        close = answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
    }
    event->setAccepted(close);
}

void FormulaEditorWindow::setApplyFunction(TC::CFormulaEditorManager::ApplyFunction function) {
    applyFunction() = std::move(function);
}

void FormulaEditorWindow::say(const QString &text, bool isError) {
    mIsError = isError;
    QPalette colors = palette();
    if (isError) {
        colors.setColor(QPalette::WindowText, themeColor("clr_global_rise"));
    }
    mMessage->setPalette(colors);
    mMessage->setText(text);
}

void FormulaEditorWindow::onUiResourceChanged() {
    setPalette(windowPalette());
    mEdit->updateColors();
    say(message(), mIsError);
}

} // namespace GZ
