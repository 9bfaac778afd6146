#include "toolkit/windows/DialogFrame.h"

namespace GZ {
namespace {

constexpr int kCorner = 12; ///< pixels along an edge that belong to the corner

} // namespace

Qt::Edges frameEdgesAt(const QPoint &at, const QSize &size, int frame) {
    if (!QRect(QPoint(0, 0), size).contains(at)) {
        return {};
    }
    const int right = size.width() - 1 - at.x();
    const int bottom = size.height() - 1 - at.y();
    const bool onFrame = at.x() < frame || at.y() < frame || right < frame || bottom < frame;
    const bool corner = (at.x() < kCorner || right < kCorner) && (at.y() < kCorner || bottom < kCorner);
    const int reach = !onFrame ? 0 : corner ? kCorner : frame;
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, at.x() < reach);
    edges.setFlag(Qt::TopEdge, at.y() < reach);
    edges.setFlag(Qt::RightEdge, right < reach);
    edges.setFlag(Qt::BottomEdge, bottom < reach);
    return edges;
}

Qt::CursorShape frameCursor(Qt::Edges edges) {
    if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge)) {
        return Qt::SizeBDiagCursor;
    }
    if (edges & (Qt::LeftEdge | Qt::RightEdge)) {
        return Qt::SizeHorCursor;
    }
    return edges ? Qt::SizeVerCursor : Qt::ArrowCursor;
}

QRect draggedFrame(const QRect &window, Qt::Edges edges, const QPoint &moved, const QSize &least,
                   const QSize &most) {
    const int addedWidth = edges & Qt::LeftEdge ? -moved.x() : edges & Qt::RightEdge ? moved.x() : 0;
    const int addedHeight = edges & Qt::TopEdge ? -moved.y() : edges & Qt::BottomEdge ? moved.y() : 0;
    const QSize size = (window.size() + QSize(addedWidth, addedHeight)).boundedTo(most).expandedTo(least);
    QRect dragged(window.topLeft(), size);
    if (edges & Qt::LeftEdge) {
        dragged.moveRight(window.right());
    }
    if (edges & Qt::TopEdge) {
        dragged.moveBottom(window.bottom());
    }
    return dragged;
}

} // namespace GZ
