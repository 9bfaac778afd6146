#include "toolkit/files/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace GZ {
namespace {

constexpr qint64 kPiece = 65536; ///< bytes read at once of what has grown
constexpr qint64 kLongestContent = std::numeric_limits<int>::max() - 2 * kPiece; ///< that a byte array holds

QString reasonOf(mode_t mode) {
    return S_ISDIR(mode) ? QStringLiteral("it is a folder")
                         : QStringLiteral("it is a pipe or a device, no file");
}

} // namespace

RegularFile::RegularFile(const QString &path) {
    if (path.startsWith(QLatin1Char(':'))) { // a resource of the program
        mFile.setFileName(path);
        if (!mFile.open(QIODevice::ReadOnly)) {
            fail(mFile.exists() ? eNotRegular : eMissing, mFile.errorString());
        }
        return;
    }
    open(path);
}

QString RegularFile::notRegularReason(const QString &path) {
    struct stat status = {};
    const bool isThere = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    return isThere && !S_ISREG(status.st_mode) ? reasonOf(status.st_mode) : QString();
}

void RegularFile::open(const QString &path) {
    // A pipe would be waited for until somebody writes to it.
    const int handle =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    const int error = errno;
    if (handle < 0) {
        const bool isMissing = error == ENOENT || error == ENOTDIR;
        const bool isSpecial = error == ENXIO || error == ENODEV; // a socket
        fail(isMissing   ? eMissing
             : isSpecial ? eNotRegular
                         : eUnreadable,
             isMissing   ? QStringLiteral("there is no such file")
             : isSpecial ? reasonOf(S_IFSOCK)
                         : qt_error_string(error));
        return;
    }
    struct stat status = {};
    if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(handle);
        fail(eNotRegular, reasonOf(status.st_mode));
        return;
    }
    if (!mFile.open(handle, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(handle);
        fail(eUnreadable, mFile.errorString());
    }
}

void RegularFile::fail(EFault fault, const QString &reason) {
    mFault = fault;
    mReason = reason;
    mFile.close();
}

qint64 RegularFile::size() const {
    return isGood() ? mFile.size() : 0;
}

QByteArray RegularFile::head(qint64 most) {
    return read(0, most);
}

QByteArray RegularFile::tail(qint64 most) {
    return read(std::max<qint64>(size() - most, 0), most);
}

QByteArray RegularFile::whole(qint64 bound) {
    const QByteArray content = size() > bound ? QByteArray() : read(0, bound + 1);
    if (isGood() && (size() > bound || content.size() > bound)) {
        fail(eTooLarge, QStringLiteral("it is larger than %1 bytes").arg(bound));
    }
    return isGood() ? content : QByteArray();
}

qint64 RegularFile::readInto(char *target, qint64 from, qint64 most) {
    if (!isGood() || !mFile.seek(from)) {
        return 0;
    }
    qint64 done = 0;
    for (qint64 got = 1; got > 0 && done < most; done += got) {
        got = mFile.read(target + done, most - done);
        if (got < 0) {
            fail(eUnreadable, mFile.errorString());
            return 0;
        }
    }
    return done;
}

QByteArray RegularFile::read(qint64 from, qint64 most) {
    QByteArray content;
    if (!isGood() || !mFile.seek(from)) {
        return content;
    }
    const qint64 bound = std::min(most, kLongestContent);
    while (content.size() < bound) {
        const int before = content.size();
        const qint64 left = std::max(mFile.size() - from - before, kPiece);
        const qint64 wanted = std::min(bound - before, left);
        content.resize(before + static_cast<int>(wanted));
        const qint64 got = mFile.read(content.data() + before, wanted);
        content.resize(before + static_cast<int>(std::max<qint64>(got, 0)));
        if (got < 0) {
            fail(eUnreadable, mFile.errorString());
            return {};
        }
        if (got == 0) {
            break;
        }
    }
    content.squeeze(); // it was made for a file that grows
    return content;
}

} // namespace GZ
