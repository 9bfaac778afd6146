#pragma once

#include "host/Export.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace GZ {

/// A file that is opened for reading and never waited for: one of the disk, through links too, or one of the program's
/// resources. A pipe, a device, a socket and a folder are none. However large a file is, or grows while it is read, no
/// more is taken of it than was asked for. The first fault stays; with one nothing is read any more.
class TIMESHARE_EXPORT RegularFile {
public:
    enum EFault { eNone, eMissing, eNotRegular, eUnreadable, eTooLarge };

    explicit RegularFile(const QString &path);

    /// Why what stands at a path is no file of the disk, in a few words; empty when it is one, or when nothing is there.
    /// Nothing is opened.
    static QString notRegularReason(const QString &path);

    bool isGood() const { return mFault == eNone; }
    EFault fault() const { return mFault; }
    /// The fault in a few words; empty without one.
    const QString &reason() const { return mReason; }
    /// Bytes that it has now; 0 with a fault.
    qint64 size() const;

    /// Its first bytes, `most` at the most.
    QByteArray head(qint64 most);
    /// Its last bytes, `most` at the most.
    QByteArray tail(qint64 most);
    /// All of it. One of more than `bound` bytes is too large, and gives nothing.
    QByteArray whole(qint64 bound);
    /// Puts bytes from a place on into memory of the caller, `most` at the most; answers how many. 0 at its end and with a
    /// fault.
    qint64 readInto(char *target, qint64 from, qint64 most);

private:
    void open(const QString &path);
    QByteArray read(qint64 from, qint64 most);
    void fail(EFault fault, const QString &reason);

    QFile mFile;
    EFault mFault = eNone;
    QString mReason;
};

} // namespace GZ
