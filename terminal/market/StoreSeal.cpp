#include "terminal/market/StoreSeal.h"

#include "toolkit/files/RegularFile.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace terminal {
namespace {

constexpr qint64 kLongestSeal = 200; ///< bytes

} // namespace

StoreSeal::StoreSeal(const QString &store) : mStore(store), mSeal(store + QStringLiteral("-whole")) {}

/// Which file it is, its size, and the time of its last change, which no program can set; empty when it cannot be told.
QString StoreSeal::marks() const {
    struct stat known {};
    if (::stat(QFile::encodeName(mStore).constData(), &known) != 0) {
        return {};
    }
    return QStringLiteral("%1 %2 %3.%4")
        .arg(known.st_ino)
        .arg(known.st_size)
        .arg(known.st_ctim.tv_sec)
        .arg(known.st_ctim.tv_nsec, 9, 10, QLatin1Char('0'));
}

bool StoreSeal::takeOff() const {
    const QByteArray left = GZ::RegularFile(mSeal).whole(kLongestSeal);
    return QFile::remove(mSeal) && !left.isEmpty() && left == marks().toLatin1();
}

void StoreSeal::putOn() const {
    const QFileInfo log(mStore + QStringLiteral("-wal"));
    const QByteArray text = marks().toLatin1();
    QFile seal(mSeal);
    if (!log.exists() && !text.isEmpty() && seal.open(QIODevice::WriteOnly)) {
        seal.write(text);
    }
}

} // namespace terminal
