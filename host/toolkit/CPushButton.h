#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventButton.h"

namespace GZ {

/// A button with an image of the theme. A click delivers eButtonClicked with the button's id, 1 when it is checked
/// and 0 otherwise, and no text.
class TIMESHARE_EXPORT CPushButton : public CEventButton {
    Q_OBJECT
public:
    /// The image is stretched over the button: its columns between `left` and `right` and its rows between `top` and
    /// `bottom`, in pixels of the image, grow; the borders keep their size.
    CPushButton(QString imageKey, int id, int left, int right, int top, int bottom, QWidget *parent = nullptr);
    /// The image stands in the middle, unstretched; the button has its size.
    CPushButton(QString imageKey, int id, QWidget *parent = nullptr);

    /// Shows a ground of its own only under the mouse.
    void setAutoRaise(bool raise);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString mImageKey;
    QMargins mBorders; ///< of the image; null when it is not stretched
    bool mStretched;
    bool mAutoRaise = false;
};

} // namespace GZ
