#include "host/toolkit/CAutoExpandToolBar.h"

#include "host/toolkit/CUiResource.h"
#include "toolkit/drawing/StretchedImage.h"

#include <QPainter>

namespace GZ {

CAutoExpandToolBar::CAutoExpandToolBar(QWidget *parent) : CWidgetList(Qt::Horizontal, parent) {}

void CAutoExpandToolBar::setBackground(const QString &imageKey, int left, int right, int top, int bottom,
                                       int height) {
    mImageKey = imageKey;
    mBorders = imageBorders(imageKey, left, right, top, bottom);
    if (height >= 0) {
        setFixedHeight(height);
    }
    update();
}

void CAutoExpandToolBar::paintEvent(QPaintEvent *) {
    if (!mImageKey.isEmpty()) {
        QPainter painter(this);
        drawStretched(painter, CUiResource::instance().getPixmap(mImageKey), mBorders, rect());
    }
}

} // namespace GZ
