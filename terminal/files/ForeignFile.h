#pragma once

#include <QByteArray>
#include <QString>

namespace terminal {

/// The text of a binary file of another maker, read by the program "timeshare-reader" in a process of its own, which has
/// limits of memory and time and can open nothing: whatever the file does to its parser, this process only hears that it
/// could not be read.
struct ForeignText {
    QString error; ///< empty, or in a few words why there is no text
    bool isFaultOfFile =
        true; ///< the error is; else the reader could not do its work, and the file may be sound
    QByteArray text; ///< in UTF-8, all of it
};

/// `parser` names what reads it: "sheet" is the first sheet of a file of Excel 97-2003, its rows as lines and its cells
/// separated by tabs. May be called from any thread, which waits for the end. `program` stands in place of the reader when
/// it is given; one that says no more and does not end is ended.
ForeignText readForeign(const QString &parser, const QByteArray &content, const QString &program = {});

} // namespace terminal
