#include "terminal/config/NewestWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>
#include <system_error>
#include <utility>

namespace terminal {
namespace {

/// Makes the folder of a file. One that is there is only looked at: to make it again waits for all who write into the folder above.
void makeFolderOf(const QString &path) {
    const QString folder = QFileInfo(path).path();
    if (!QFileInfo(folder).isDir()) {
        QDir().mkpath(folder);
    }
}

/// Puts a text in place of a file without waiting for the disk: it is there for whoever reads, and after a kill. What
/// fails leaves the file as it was.
void putUnsafely(const QString &path, const QByteArray &text) {
    makeFolderOf(path);
    QFile file(path + QStringLiteral("~"));
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
    file.close();
    if (!isWritten || std::rename(QFile::encodeName(file.fileName()), QFile::encodeName(path)) != 0) {
        file.remove();
    }
}

} // namespace

QString NewestWriter::waitingPath(const QString &path) {
    return path + QStringLiteral(".next");
}

NewestWriter::NewestWriter(QString path, Put put) : mPath(std::move(path)), mPut(std::move(put)) {}

NewestWriter::~NewestWriter() {
    waitUntilWritten();
}

/// Null when the system has no thread left.
Worker *NewestWriter::worker() {
    if (!mWorker) {
        try {
            mWorker = std::make_unique<Worker>();
        } catch (const std::system_error &) {
            return nullptr;
        }
    }
    return mWorker.get();
}

void NewestWriter::write(const QByteArray &text) {
    {
        const std::lock_guard<std::mutex> hold(mLock);
        if (mNewest == text) {
            return;
        }
        mNewest = text;
        putUnsafely(waitingPath(mPath), text);
        const bool isOnItsWay = std::exchange(mWaiting, text).has_value();
        if (isOnItsWay) {
            return; // whoever comes to write takes this one
        }
        if (Worker *at = worker()) {
            at->post([this] { writeNewest(); });
            return;
        }
    }
    writeNewest();
}

bool NewestWriter::waitUntilWritten() {
    writeNewest(); // waits for a writing under way, and does what no one has begun
    const std::lock_guard<std::mutex> hold(mLock);
    return !mHasFailed;
}

QStringList NewestWriter::takeTroubles() {
    const std::lock_guard<std::mutex> hold(mLock);
    return std::exchange(mTroubles, {});
}

void NewestWriter::writeNewest() {
    const std::lock_guard<std::mutex> writing(mWriting);
    std::optional<QByteArray> text;
    {
        const std::lock_guard<std::mutex> hold(mLock);
        text = std::exchange(mWaiting, std::nullopt);
    }
    if (!text) {
        return;
    }
    const QString trouble = mPut(mPath, *text);
    const std::lock_guard<std::mutex> hold(mLock);
    mHasFailed = !trouble.isEmpty();
    if (mHasFailed) {
        mTroubles.append(trouble);
        mNewest = mWaiting; // what has failed is written when it is brought again
    } else if (!mWaiting) {
        QFile::remove(waitingPath(mPath)); // else a newer one waits there
    }
}

QString NewestWriter::save(const QString &path, const QByteArray &text) {
    makeFolderOf(path);
    QSaveFile file(path);
    // Without the flush an error of what is still in memory is lost, and an empty file takes the place of the old one.
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit();
    return isWritten ? QString() : file.errorString();
}

} // namespace terminal
