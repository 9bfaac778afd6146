#pragma once

#include "host/Export.h"
#include "host/toolkit/CEventWidgetT.h"
#include "host/toolkit/CUiResource.h"

#include <QDialog>
#include <QPoint>
#include <QRect>

class QVBoxLayout;

namespace GZ {

class CPushButton;

/// Base of the dialogs of a view: a title strip with a button that closes, a frame, and one inner widget between them.
/// The strip moves the dialog and the frame resizes it, unless its size is fixed. Takes part in the event bus: what its
/// controls deliver reaches handleEvent(), and what that does not consume travels on to its parent.
class TIMESHARE_EXPORT CCommonDialog : public CEventWidgetT<QDialog>, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    static constexpr int kCloseButton = 101; ///< id of the title button, as eButtonClicked tells it

    explicit CCommonDialog(QWidget *parent = nullptr);
    ~CCommonDialog() override;

    /// Fills the dialog under its title; replaces, and deletes, the inner widget of before. Null leaves it empty.
    void setInnerWidget(QWidget *inner);
    QWidget *innerWidget() const { return mInner; } ///< null when there is none
    /// The button that closes, at the right of the title.
    CPushButton *titleButton() const { return mTitleButton; }
    /// Pixels between that button and the right and the upper edge of the dialog.
    static int titleButtonMargin();

    /// eButtonClicked of the title button ends the dialog with the result kCloseButton, which is none of the two of
    /// QDialog; every other event passes on to the parent.
    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    /// Escape and the window's own close do what the title button does.
    void reject() override;
    void onUiResourceChanged() override;

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    Qt::Edges edgesAt(const QPoint &at) const;
    void showEdgeCursor(const QPoint &at);

    CPushButton *mTitleButton;
    QVBoxLayout *mLayout;
    QWidget *mInner = nullptr;
    bool mMoving = false;
    Qt::Edges mResizing; ///< by these edges
    QPoint mPressedAt; ///< on the screen
    QRect mPressedGeometry; ///< of the dialog then
};

} // namespace GZ
