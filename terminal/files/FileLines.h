#pragma once

#include "host/records/Enumerations.h"

#include <QString>

#include <functional>

namespace terminal {

/// What a line of a file is given to, without its end; answering false ends the reading.
using TakeLine = std::function<bool(const QString &line)>;

/// Reads a file line by line. A spreadsheet is one of Excel 97-2003, of which the first sheet is read, or a text; other
/// files are texts. Answers an empty text, or what is wrong with the file and what to do about it.
QString readFileLines(const QString &path, TC::EFileType type, const TakeLine &take);

/// Hands over the lines of a text, which end in "\n" or "\r\n". What follows the last end is a line when there is any.
void splitLines(const QString &text, const TakeLine &take);

} // namespace terminal
