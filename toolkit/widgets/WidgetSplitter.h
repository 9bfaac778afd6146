#pragma once

#include "host/toolkit/CDragWidgetList.h"

namespace GZ {

/// The line between two widgets of a list, with a grip for the mouse around it.
class WidgetSplitter : public QWidget {
    Q_OBJECT
public:
    static constexpr int kLine = 1; ///< pixels of the line
    static constexpr int kGrip = 2; ///< pixels on each side of it that take the mouse as well

    explicit WidgetSplitter(CDragWidgetList *list);
    /// Stands before an item of the list, its line on a rectangle.
    void place(int index, const QRect &line);
    void setColorKey(const QString &key);
    void setDragEnable(bool enable);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int position(const QMouseEvent *event) const;
    void updateCursor();

    CDragWidgetList *mList;
    QString mColorKey;
    QRect mLine; ///< in this widget
    int mIndex = -1;
    int mPressedAt = 0; ///< on the screen, along the list
    bool mDragging = false;
    bool mEnabled = true;
};

} // namespace GZ
