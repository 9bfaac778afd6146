#pragma once

#include "host/Export.h"
#include "host/toolkit/CBaseWidget.h"

#include <QString>

namespace GZ {

/// A line of text in a colour of the theme, as wide as it is.
class TIMESHARE_EXPORT CSimpleTextWidget : public CBaseWidget {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
public:
    explicit CSimpleTextWidget(QString text, QWidget *parent = nullptr);

    const QString &text() const { return mText; }
    void setText(const QString &text);
    const QString &colorKey() const { return mColorKey; }
    void setColorKey(const QString &key);
    void setFontKey(const QString &key);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    void onUiResourceChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString mText;
    QString mColorKey = QStringLiteral("clr_text_default");
    QString mFontKey = QStringLiteral("fnt_default_normal");
};

} // namespace GZ
