#pragma once

#include "host/Export.h"
#include "host/records/Enumerations.h"
#include "host/services/CManualSingletonT.h"

#include <QObject>
#include <QString>
#include <boost/function.hpp>

namespace TC {

/// Reads files in the background, for whoever asks.
class TIMESHARE_EXPORT CFileClient : public QObject {
    Q_OBJECT
public:
    /// Takes one line, without its end, on a thread of the reader. Whatever it answers, the reader reads on.
    using LineHandler = boost::function<int(const QString &)>;

    /// Starts to read a file and returns at once. `seq` becomes the number of this read, which its end is told
    /// with; it is set before anything else happens, and no two reads have the same. A file that is read as a
    /// spreadsheet and is a text gives its lines as they stand. Empty lines are lines too; there is no heading line.
    virtual void readFileByLine(int &seq, EFileType type, const QString &path, LineHandler lineHandler) = 0;

Q_SIGNALS:
    /// The last line of a read has been handed over, or the file could not be read any further: `message` then
    /// says why. Lines before that stay handed over.
    void sigReadFinished(int seq, bool success, QString message);
};

} // namespace TC
