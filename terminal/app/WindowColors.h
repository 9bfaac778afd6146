#pragma once

#include <QPalette>

namespace terminal {

/// The colours of the terminal's window in the theme of now.
QPalette windowColors();

} // namespace terminal
