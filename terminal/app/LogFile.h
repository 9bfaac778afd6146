#pragma once

#include <QString>

namespace terminal {

/// Sends the log to a file. Where it cannot be written the log is off; nothing of it goes to the terminal either way.
void openLogFile(const QString &path);
/// Ends the log; before the end of main.
void closeLogFile();

} // namespace terminal
