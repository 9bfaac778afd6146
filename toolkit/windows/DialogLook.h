#pragma once

#include <QFont>
#include <QPalette>

class QWidget;

namespace GZ {

/// Colours of dialogs and of what stands in them, in the current theme.
QPalette dialogPalette();
/// Gives a dialog these colours and the theme's font.
void applyDialogLook(QWidget &dialog);

} // namespace GZ
