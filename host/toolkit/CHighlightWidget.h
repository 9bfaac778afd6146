#pragma once

#include "host/toolkit/CBaseWidget.h"

namespace GZ {

/// A frame over another widget, which it never takes the mouse from.
class CHighlightWidget : public CBaseWidget {
    Q_OBJECT
public:
    explicit CHighlightWidget(QWidget *parent = nullptr);
    /// Keeps the frame this many pixels off the left and the right edge.
    void setLRMargin(int left, int right);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect frameRect() const;
    void updateMask();

    int mLeft = 0;
    int mRight = 0;
};

} // namespace GZ
