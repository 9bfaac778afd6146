#pragma once

#include "host/Export.h"
#include "host/toolkit/CWidgetList.h"

#include <QMargins>
#include <QString>

namespace GZ {

/// A row of controls on a ground of its own, from the left; wider than its controls it has free room at the right.
class TIMESHARE_EXPORT CAutoExpandToolBar : public CWidgetList {
    Q_OBJECT
public:
    explicit CAutoExpandToolBar(QWidget *parent = nullptr);

    /// The image of the theme that is stretched over the bar: its columns between `left` and `right` and its rows
    /// between `top` and `bottom`, in pixels of the image, grow. A `height` that is not negative is the bar's from now
    /// on, in pixels.
    void setBackground(const QString &imageKey, int left, int right, int top, int bottom, int height);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString mImageKey; ///< empty for no ground
    QMargins mBorders; ///< of the image
};

} // namespace GZ
