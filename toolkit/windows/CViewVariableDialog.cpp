#include "host/windows/CViewVariableDialog.h"

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
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    QPalette colors(
        theme.getColor(QStringLiteral("clr_dialog_bg"))); // with all shades of frames and scroll bars
    colors.setColor(QPalette::WindowText, theme.getColor(QStringLiteral("clr_text_default")));
    colors.setColor(QPalette::Base, theme.getColor(QStringLiteral("clr_edit_bg")));
    colors.setColor(QPalette::Text, theme.getColor(QStringLiteral("clr_text_default")));
    colors.setColor(QPalette::Highlight, theme.getColor(QStringLiteral("clr_selection_bg")));
    colors.setColor(QPalette::HighlightedText, theme.getColor(QStringLiteral("clr_selection_text")));
    setPalette(colors);
    mText->setFont(theme.getFont(QStringLiteral("fnt_default_normal_fix")));
}

} // namespace TC
