#pragma once

namespace terminal {

/// Gives the dialogs and buttons that Qt makes the program's language. False when its texts could not be read.
bool installTranslation();

} // namespace terminal
