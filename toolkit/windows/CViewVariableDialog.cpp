#include "host/windows/CViewVariableDialog.h"

#include "toolkit/windows/WindowLook.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace TC {

CViewVariableDialog::CViewVariableDialog(QWidget *parent) : QDialog(parent), mText(new QPlainTextEdit(this)) {
    setWindowTitle(tr("查看变量"));
    setModal(false);
    mText->setReadOnly(true);
    mText->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addWidget(mText);
    resize(420, 320);
    onUiResourceChanged();
}

void CViewVariableDialog::setText(const QString &text) {
    mText->setPlainText(text);
}

QString CViewVariableDialog::text() const {
    return mText->toPlainText();
}

void CViewVariableDialog::onUiResourceChanged() {
    setPalette(GZ::windowPalette());
    mText->setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal_fix")));
}

} // namespace TC
