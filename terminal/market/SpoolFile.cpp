#include "terminal/market/SpoolFile.h"

namespace terminal {

SpoolFile::SpoolFile(const QString &folder)
    : mFile(folder + QStringLiteral("/import-XXXXXX.part")), mFolder(folder) {}

bool SpoolFile::check(bool good) {
    if (!good && mError.isEmpty()) {
        mError = QStringLiteral("its rows cannot be kept in %1: %2").arg(mFolder, mFile.errorString());
    }
    return mError.isEmpty();
}

bool SpoolFile::append(const void *bytes, qint64 count) {
    const bool good = check(mFile.isOpen() || mFile.open()) &&
                      check(mFile.pos() == mSize || mFile.seek(mSize)) &&
                      check(mFile.write(static_cast<const char *>(bytes), count) == count);
    mSize += good ? count : 0;
    return good;
}

bool SpoolFile::read(qint64 from, void *bytes, qint64 count) {
    return check(mFile.seek(from)) && check(mFile.read(static_cast<char *>(bytes), count) == count);
}

} // namespace terminal
