#pragma once

#include "host/toolkit/CEventWidgetT.h"
#include "host/toolkit/CUiResource.h"

#include <QPushButton>
#include <QString>

namespace GZ {

/// A button with an image of the theme. A click delivers eButtonClicked with the button's id, 1 when it is checked
/// and 0 otherwise, and no text.
class CPushButton : public CEventWidgetT<QPushButton>, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    static constexpr int kClicked = 5; ///< the event

    /// The image is stretched over the button: its columns between `left` and `right` and its rows between `top` and
    /// `bottom`, in pixels of the image, grow; the borders keep their size.
    CPushButton(QString imageKey, int id, int left, int right, int top, int bottom, QWidget *parent = nullptr);
    /// The image stands in the middle, unstretched; the button has its size.
    CPushButton(QString imageKey, int id, QWidget *parent = nullptr);

    int id() const { return mId; }
    void setFontKey(const QString &key);
    /// Shows a ground of its own only under the mouse.
    void setAutoRaise(bool raise);

    QSize sizeHint() const override;
    void onUiResourceChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QString mImageKey;
    int mId;
    QMargins mBorders; ///< of the image; null when it is not stretched
    bool mStretched;
    bool mAutoRaise = false;
    QString mFontKey = QStringLiteral("fnt_default_normal");
};

} // namespace GZ
