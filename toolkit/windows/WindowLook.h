#pragma once

#include <QPalette>

namespace GZ {

/// The colours of dialogs and of neighbouring windows in the current theme, with all shades of frames, buttons and
/// scroll bars.
QPalette windowPalette();

} // namespace GZ
