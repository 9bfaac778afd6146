#pragma once

#include "host/toolkit/CEventWidgetT.h"
#include "host/toolkit/CUiResource.h"

#include <QPushButton>
#include <QString>

namespace GZ {

/// A small button with a text in a frame, whose ground is seen only under the mouse and when it is pressed. A click
/// delivers eButtonClicked with the button's id, 0 and no text.
class CSmallNoNormalButton : public CEventWidgetT<QPushButton>, public CUiResourceChangeHandler {
    Q_OBJECT
public:
    CSmallNoNormalButton(const QString &text, int id, QWidget *parent = nullptr);

    int id() const { return mId; }
    void setFontKey(const QString &key);
    void onUiResourceChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int mId;
    QString mFontKey = QStringLiteral("fnt_default_normal");
};

} // namespace GZ
