#include "host/toolkit/CSimpleTextWidget.h"

#include "host/toolkit/ThemeColor.h"

#include <QFontMetrics>
#include <QPainter>

#include <utility>

namespace GZ {

CSimpleTextWidget::CSimpleTextWidget(QString text, QWidget *parent)
    : CBaseWidget(parent), mText(std::move(text)) {
    CSimpleTextWidget::onUiResourceChanged();
}

void CSimpleTextWidget::setText(const QString &text) {
    mText = text;
    updateGeometry();
    update();
}

void CSimpleTextWidget::setColorKey(const QString &key) {
    mColorKey = key;
    update();
}

void CSimpleTextWidget::setFontKey(const QString &key) {
    mFontKey = key;
    onUiResourceChanged();
}

QSize CSimpleTextWidget::sizeHint() const {
    return {fontMetrics().horizontalAdvance(mText), fontMetrics().height()};
}

void CSimpleTextWidget::onUiResourceChanged() {
    setFont(CUiResource::instance().getFont(mFontKey));
    updateGeometry();
    update();
}

void CSimpleTextWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setPen(themeColor(mColorKey));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, mText);
}

} // namespace GZ
