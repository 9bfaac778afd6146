#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

namespace GZ {

/// A frame over another widget, which it never takes the mouse from.
class TIMESHARE_EXPORT CHighlightWidget : public CBaseWidget {
    Q_OBJECT
public:
    explicit CHighlightWidget(QWidget *parent = nullptr);
    /// Keeps the frame this many pixels off the left and the right edge.
    void setLRMargin(int left, int right);
    /// Keeps it this many pixels off the upper edge, where a title stands that it must not cut.
    void setTopMargin(int top);
    /// Pixels of the frame's line; 1 at first, and at the least.
    void setLineWidth(int width);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect frameRect() const;
    void updateMask();

    int mLeft = 0;
    int mRight = 0;
    int mTop = 0;
    int mLine = 1;
};

} // namespace GZ
