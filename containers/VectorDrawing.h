#pragma once

class QPainter;
class QRect;
class QWidget;

namespace TC {

/// Draws a widget and those on it into a rectangle of a painter, stretched to it: lines, shapes and texts in place of the
/// pictures that the screen is given. A null or inactive painter, an empty rectangle and an empty widget do nothing.
void renderVectors(QWidget &widget, QPainter *painter, const QRect &rect);

} // namespace TC
