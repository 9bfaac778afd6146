#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"

#include <QGroupBox>
#include <QString>

class QVBoxLayout;

namespace GZ {

/// A frame with a title around one widget.
class TIMESHARE_EXPORT CGroupBox : public CEventWidgetT<QGroupBox> {
    Q_OBJECT
public:
    explicit CGroupBox(const QString &title, QWidget *parent = nullptr);
    /// Fills the frame; replaces, and deletes, the widget of before. Null leaves it empty.
    void setInnerWidget(QWidget *inner);
    QWidget *innerWidget() const { return mInner; } ///< null when there is none

private:
    QVBoxLayout *mLayout;
    QWidget *mInner = nullptr;
};

} // namespace GZ
