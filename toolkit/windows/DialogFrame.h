#pragma once

#include <QPoint>
#include <QRect>

namespace GZ {

/// Edges of a window of that size that a point drags: those it is at most `frame` pixels off; at a corner both.
Qt::Edges frameEdgesAt(const QPoint &at, const QSize &size, int frame);

/// The cursor over such edges.
Qt::CursorShape frameCursor(Qt::Edges edges);

/// The window after its edges were dragged by `moved` pixels: the opposite edges stay, and the size stays between
/// `least` and `most`.
QRect draggedFrame(const QRect &window, Qt::Edges edges, const QPoint &moved, const QSize &least,
                   const QSize &most);

} // namespace GZ
