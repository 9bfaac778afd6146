#include "host/toolkit/CMessageBox.h"

#include "toolkit/windows/DialogLook.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QPointer>

#include <memory>
#include <utility>

namespace GZ {
namespace {

constexpr std::pair<QMessageBox::StandardButton, const char *> kTexts[] = {
    {QMessageBox::Ok, QT_TRANSLATE_NOOP("GZ::CMessageBox", "确定")},
    {QMessageBox::Cancel, QT_TRANSLATE_NOOP("GZ::CMessageBox", "取消")},
    {QMessageBox::Yes, QT_TRANSLATE_NOOP("GZ::CMessageBox", "是")},
    {QMessageBox::No, QT_TRANSLATE_NOOP("GZ::CMessageBox", "否")},
    {QMessageBox::Save, QT_TRANSLATE_NOOP("GZ::CMessageBox", "保存")},
    {QMessageBox::Discard, QT_TRANSLATE_NOOP("GZ::CMessageBox", "不保存")},
    {QMessageBox::Retry, QT_TRANSLATE_NOOP("GZ::CMessageBox", "重试")},
    {QMessageBox::Close, QT_TRANSLATE_NOOP("GZ::CMessageBox", "关闭")},
};

QMessageBox::StandardButton ask(QMessageBox::Icon icon, QWidget *parent, const QString &title,
                                const QString &text, QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton preset, const QString &details) {
    // The parent may go while the box is open, and takes the box along.
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(details);
    for (const auto &[button, caption] : kTexts) {
        if (QAbstractButton *shown = box->button(button)) {
            shown->setText(QCoreApplication::translate("GZ::CMessageBox", caption));
        }
    }
    if (preset != QMessageBox::NoButton) {
        box->setDefaultButton(preset);
    }
    if (!(buttons & QMessageBox::Cancel) && (buttons & QMessageBox::No)) {
        box->setEscapeButton(QMessageBox::No);
    }
    applyDialogLook(*box);
    const int answer = box->exec();
    delete box.data();
    return static_cast<QMessageBox::StandardButton>(answer);
}

} // namespace

CMessageBox::Button CMessageBox::warning(QWidget *parent, const QString &title, const QString &text,
                                         Buttons buttons, Button preset) {
    return ask(QMessageBox::Warning, parent, title, text, buttons, preset, {});
}

CMessageBox::Button CMessageBox::question(QWidget *parent, const QString &title, const QString &text,
                                          Buttons buttons, Button preset, const QString &details) {
    return ask(QMessageBox::Question, parent, title, text, buttons, preset, details);
}

} // namespace GZ
