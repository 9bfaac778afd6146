#pragma once

#include "host/Export.h"

#include <QPalette>

namespace GZ {

/// The colours of dialogs and of neighbouring windows in the current theme, with all shades of frames, buttons and
/// scroll bars.
TIMESHARE_EXPORT QPalette windowPalette();

} // namespace GZ
