#pragma once

#include "host/Export.h"

#include <QMessageBox>
#include <QString>

namespace GZ {

/// Message boxes in the look of the theme. Each blocks until the user has answered, and answers the button; closing it
/// is Cancel, else No, else the only button. `details` stand under the text, in lines of their own.
class TIMESHARE_EXPORT CMessageBox {
public:
    using Button = QMessageBox::StandardButton;
    using Buttons = QMessageBox::StandardButtons;

    static Button warning(QWidget *parent, const QString &title, const QString &text,
                          Buttons buttons = QMessageBox::Ok, Button preset = QMessageBox::NoButton);
    static Button question(QWidget *parent, const QString &title, const QString &text,
                           Buttons buttons = Buttons(QMessageBox::Yes | QMessageBox::No),
                           Button preset = QMessageBox::NoButton, const QString &details = {});
};

} // namespace GZ
