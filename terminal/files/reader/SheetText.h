#pragma once

#include <string>

namespace reader {

/// Reads the first sheet of the file of Excel 97-2003 that is the input, in UTF-8: a row is a line, its cells are joined
/// by tabs, numbers have up to 15 digits, dates are "yyyy-MM-dd", times "hh:mm:ss". Tabs and line ends within a cell
/// become blanks. False when the input is no such file, or has more text than there is room for.
bool readSheet(std::string &text);

/// Has the codings loaded that a sheet may be written in, while files can still be opened.
void prepareSheets();

} // namespace reader
