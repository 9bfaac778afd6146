#pragma once

#include <QString>

namespace terminal {

/// From now on the file dialogs keep what the user left them with (folder, columns) in a file of this folder. Without it that
/// is one file of all programs with such dialogs, and the user interface stands still while another holds its lock.
void keepDialogStateIn(const QString &folder);

} // namespace terminal
