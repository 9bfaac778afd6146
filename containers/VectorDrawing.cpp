#include "containers/VectorDrawing.h"

#include <QPainter>
#include <QPicture>
#include <QWidget>

namespace TC {

namespace {

/// Draws a widget and those on it, from the lowest to the highest, at the origin of a painter. Each is recorded by
/// itself: that is how widgets know that they are not on a screen, whatever the painter's device is, and a recording with
/// an offset would misplace clips.
void drawVectors(QWidget &widget, QPainter &painter, bool withGround) {
    QPicture picture;
    QPainter recorder(&picture);
    const QRegion mask = widget.mask(); // whose corner would be taken for that of the widget
    if (!mask.isEmpty()) {
        painter.setClipRegion(mask, Qt::IntersectClip);
    }
    widget.render(&recorder, mask.boundingRect().topLeft(), QRegion(),
                  withGround ? QWidget::RenderFlags(QWidget::DrawWindowBackground) : QWidget::RenderFlags());
    recorder.end();
    painter.drawPicture(0, 0, picture);
    for (QObject *child : widget.children()) {
        auto *part = qobject_cast<QWidget *>(child);
        if (part && !part->isWindow() && !part->isHidden()) {
            painter.save();
            painter.setClipRect(part->geometry(), Qt::IntersectClip);
            painter.translate(part->pos());
            drawVectors(*part, painter, false);
            painter.restore();
        }
    }
}

} // namespace

void renderVectors(QWidget &widget, QPainter *painter, const QRect &rect) {
    if (!painter || !painter->isActive() || rect.isEmpty() || widget.size().isEmpty()) {
        return;
    }
    painter->save();
    painter->translate(rect.topLeft());
    painter->scale(double(rect.width()) / widget.width(), double(rect.height()) / widget.height());
    drawVectors(widget, *painter, true);
    painter->restore();
}

} // namespace TC
