#pragma once

#include <QPoint>
#include <QRect>

#include <algorithm>
#include <cstdlib>

/// \file
/// Rectangles that the mouse spans on a graph. Coordinates are pixels of the graph.

namespace TC {

/// Widest rectangle, in pixels, that is still a click and selects nothing.
constexpr int kWidestClick = 30;

/// Whether a rectangle selects something.
inline bool isSelection(const QRect &rect) {
    return rect.width() > kWidestClick;
}

/// Where a selection begins that was pressed at a point: no further right than a graph's width less that of the
/// left axis strip.
inline QPoint selectionStart(const QPoint &pressed, int width, int leftAxisWidth) {
    return {std::min(pressed.x(), width - leftAxisWidth), pressed.y()};
}

/// Rectangle between the start of a selection and the mouse. It ends at the right edge of the graph, and goes as
/// far as the mouse on the three other sides.
inline QRect selectionRect(const QPoint &start, const QPoint &mouse, int width) {
    const int x = std::min(mouse.x(), width);
    const int y = mouse.y();
    return {std::min(start.x(), x), std::min(start.y(), y), std::abs(x - start.x()), std::abs(y - start.y())};
}

} // namespace TC
