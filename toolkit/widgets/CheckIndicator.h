#pragma once

class QPainter;
class QStyleOptionButton;
class QWidget;

namespace GZ {

/// Paints a check box or a radio button with its text, in colours of the theme: the style's own frames are hardly seen
/// on a dark ground.
void paintCheckable(QWidget &widget, const QStyleOptionButton &option, bool isRadio);

} // namespace GZ
