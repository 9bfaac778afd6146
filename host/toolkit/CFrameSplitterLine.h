#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

namespace GZ {

/// A line of one colour between two parts of a frame; nothing can be dragged.
class TIMESHARE_EXPORT CFrameSplitterLine : public CBaseWidget {
    Q_OBJECT
public:
    /// A horizontal line has `thickness` pixels as its fixed height, a vertical one as its fixed width.
    CFrameSplitterLine(QString colorKey, int thickness, QWidget *parent = nullptr,
                       Qt::Orientation orientation = Qt::Horizontal);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString mColorKey;
};

} // namespace GZ
