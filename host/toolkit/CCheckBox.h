#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"

#include <QCheckBox>
#include <QString>

namespace GZ {

/// A check box with an id. When the user checks or unchecks it, it delivers eCheckBoxToggled with its id, 1 when it
/// is checked now and 0 otherwise, and its object name; checked by the program it delivers nothing.
class TIMESHARE_EXPORT CCheckBox : public CEventWidgetT<QCheckBox> {
    Q_OBJECT
public:
    CCheckBox(const QString &text, int id, QWidget *parent = nullptr);
    int id() const { return mId; }
    /// What the box and its text need, with no room beside them.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int mId;
};

} // namespace GZ
