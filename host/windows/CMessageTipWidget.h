#pragma once

#include "host/Export.h"
#include "host/toolkit/CUiResource.h"

#include <QPoint>
#include <QWidget>

namespace TC {

/// A small window that stands for one that is put away. It shows its tool tip as its text, stays over other windows,
/// is dragged with the mouse, and tells of a double click. It keeps no program going.
class TIMESHARE_EXPORT CMessageTipWidget : public QWidget, public GZ::CUiResourceChangeHandler {
    Q_OBJECT
public:
    /// `id` tells several of them apart.
    explicit CMessageTipWidget(int id, QWidget *parent = nullptr);
    int id() const { return mId; }

    void onUiResourceChanged() override;

Q_SIGNALS:
    void sigMouseDoubleClick();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int mId;
    bool mDragging = false;
    QPoint mGrip; ///< where the mouse holds the window
};

} // namespace TC
