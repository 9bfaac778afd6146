#pragma once

#include <QPalette>

class QWidget;

namespace terminal {

/// The colours of the terminal's window in the theme of now.
QPalette windowColors();
/// Gives them to a window, and to all lists, tips and boxes, which are windows of their own.
void applyWindowColors(QWidget &window);

} // namespace terminal
