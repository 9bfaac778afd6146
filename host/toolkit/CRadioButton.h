#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"

#include <QRadioButton>
#include <QString>

namespace GZ {

/// A radio button with an id, one of those of its parent. When the user picks it, it delivers eRadioButtonPicked with
/// its id, 1 and its object name; picked by the program it delivers nothing.
class TIMESHARE_EXPORT CRadioButton : public CEventWidgetT<QRadioButton> {
    Q_OBJECT
public:
    CRadioButton(const QString &text, int id, QWidget *parent = nullptr);
    int id() const { return mId; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int mId;
};

} // namespace GZ
