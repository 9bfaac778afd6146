#include "toolkit/drawing/StretchedImage.h"

#include "host/toolkit/CUiResource.h"

#include <QPainter>

#include <algorithm>

namespace GZ {

QMargins imageBorders(const QString &imageKey, int left, int right, int top, int bottom) {
    const QSize image = CUiResource::instance().getPixmap(imageKey).size();
    return QMargins(left, top, image.width() - right, image.height() - bottom);
}

void drawStretched(QPainter &painter, const QPixmap &image, const QMargins &borders, const QRect &over) {
    const double ratio = image.devicePixelRatioF();
    const QSizeF size = QSizeF(image.size()) / ratio;
    const double sourceX[] = {0.0, double(borders.left()), size.width() - borders.right(), size.width()};
    const double sourceY[] = {0.0, double(borders.top()), size.height() - borders.bottom(), size.height()};
    const double targetX[] = {0.0, sourceX[1], std::max(sourceX[1], double(over.width() - borders.right())),
                              double(over.width())};
    const double targetY[] = {0.0, sourceY[1], std::max(sourceY[1], double(over.height() - borders.bottom())),
                              double(over.height())};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRectF target(QPointF(targetX[column], targetY[row]),
                                QPointF(targetX[column + 1], targetY[row + 1]));
            const QRectF source(QPointF(sourceX[column], sourceY[row]) * ratio,
                                QPointF(sourceX[column + 1], sourceY[row + 1]) * ratio);
            if (!target.isEmpty() && !source.isEmpty()) {
                painter.drawPixmap(target.translated(over.topLeft()), image, source);
            }
        }
    }
}

} // namespace GZ
