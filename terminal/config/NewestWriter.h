#pragma once

#include "terminal/threads/Worker.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace terminal {

/// Writes texts to a file, each in place of the one before, without holding up whoever brings them: a writing waits for
/// the disk, sometimes for a tenth of a second.
///
/// The newest text wins: one that another follows before its turn is never written, and no older one comes after it. The
/// file is written whole to a temporary file and renamed, so that it is the old one or the new one at any time. Where the
/// system has no thread left, the caller writes. Until a text is on the disk it stands in a file beside (waitingPath), which
/// survives the end of the program, however that comes, though not that of the machine. Any thread.
class NewestWriter {
public:
    /// Puts a text in place of a file; answers why it could not, or nothing when it is on the disk.
    using Put = std::function<QString(const QString &path, const QByteArray &text)>;
    /// The one that is used: whole to a temporary file, which is then renamed.
    static QString save(const QString &path, const QByteArray &text);

    /// Where the text stands that is newer than the file, while it waits for the disk; after the program was killed then,
    /// too. It may be cut off after a loss of power.
    static QString waitingPath(const QString &path);

    explicit NewestWriter(QString path, Put put = save);
    /// Writes what waits.
    ~NewestWriter();

    /// A text that is in the file, or will be when nothing fails, is not written again.
    void write(const QByteArray &text);
    /// Returns when what was brought so far is on the disk, or has failed; false for the latter.
    bool waitUntilWritten();
    /// Why texts could not be written, since the last call.
    QStringList takeTroubles();

private:
    Worker *worker();
    void writeNewest();

    const QString mPath;
    const Put mPut;
    std::mutex mWriting; ///< held by whoever writes; taken before mLock
    std::mutex mLock; ///< guards what follows
    std::optional<QByteArray> mNewest; ///< brought last; none after a writing that failed
    std::optional<QByteArray> mWaiting; ///< not taken by a writing yet
    bool mHasFailed = false; ///< the last writing
    QStringList mTroubles;
    std::unique_ptr<Worker> mWorker; ///< made with the first text
};

} // namespace terminal
