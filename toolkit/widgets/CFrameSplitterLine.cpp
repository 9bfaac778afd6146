#include "host/toolkit/CFrameSplitterLine.h"

#include "host/toolkit/ThemeColor.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace GZ {

CFrameSplitterLine::CFrameSplitterLine(QString colorKey, int thickness, QWidget *parent,
                                       Qt::Orientation orientation)
    : CBaseWidget(parent), mColorKey(std::move(colorKey)) {
    if (orientation == Qt::Horizontal) {
        setFixedHeight(std::max(thickness, 0));
    } else {
        setFixedWidth(std::max(thickness, 0));
    }
}

void CFrameSplitterLine::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), themeColor(mColorKey));
}

} // namespace GZ
