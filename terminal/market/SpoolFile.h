#pragma once

#include <QString>
#include <QTemporaryFile>

namespace terminal {

/// A file without a name for what does not fit into memory: it goes with this object, and with the program however that
/// ends. It is made with the first bytes. The first error stays.
class SpoolFile {
public:
    /// `folder` is on the disk that has room for it.
    explicit SpoolFile(const QString &folder);

    /// Puts bytes at its end. False on an error, as when the disk is full.
    bool append(const void *bytes, qint64 count);
    /// Takes bytes from a place.
    bool read(qint64 from, void *bytes, qint64 count);
    /// Bytes that it has.
    qint64 size() const { return mSize; }
    /// One line, empty without an error.
    const QString &error() const { return mError; }

private:
    bool check(bool good);

    QTemporaryFile mFile;
    const QString mFolder;
    qint64 mSize = 0;
    QString mError;
};

} // namespace terminal
