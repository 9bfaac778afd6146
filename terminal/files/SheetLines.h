#pragma once

#include "terminal/files/FileLines.h"

namespace terminal {

/// Reads the first sheet of a file of Excel 97-2003: the cells of a row are joined by tabs, numbers with up to 15
/// digits, dates as "yyyy-MM-dd", times as "hh:mm:ss". Tabs and line ends within a cell become blanks. False when the
/// file cannot be read as one; nothing has been handed over then.
bool readSheetLines(const QString &path, const TakeLine &take);

} // namespace terminal
