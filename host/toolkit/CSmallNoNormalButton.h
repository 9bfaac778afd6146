#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventButton.h"

namespace GZ {

/// A small button with a text in a frame, whose ground is seen only under the mouse and when it is pressed. A click
/// delivers eButtonClicked with the button's id, 0 and no text.
class TIMESHARE_EXPORT CSmallNoNormalButton : public CEventButton {
    Q_OBJECT
public:
    CSmallNoNormalButton(const QString &text, int id, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace GZ
