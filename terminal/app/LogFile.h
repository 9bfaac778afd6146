#pragma once

#include <QString>

namespace terminal {

/// Sends the log to a file; answers why not, in words for the user, when it cannot be written. The log is off then;
/// nothing of it goes to the terminal either way. Only a regular file is opened: a pipe or a device could hold up the
/// program.
QString openLogFile(const QString &path);
/// Ends the log; before the end of main. A log that stalls is left as it is.
void closeLogFile();

} // namespace terminal
