#pragma once

#include "terminal/market/FileImporter.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <memory>

namespace terminal {

/// One import on a thread of its own. It can be stopped, and then leaves the store as it was.
class ImportJob : public QObject {
    Q_OBJECT
public:
    ImportJob(CMarketStore &store, QString path, ImportOptions options);
    /// Stops the import and waits for its end.
    ~ImportJob() override;

    void start();
    void stop() { mStopped = true; }
    /// What came of it; for the time after finished().
    const ImportOutcome &outcome() const { return mOutcome; }

Q_SIGNALS:
    // On the user-interface thread.
    void progress(int done, int total);
    void finished();

private:
    void run();

    CMarketStore &mStore;
    const QString mPath;
    const ImportOptions mOptions;
    std::atomic<bool> mStopped{false};
    ImportOutcome mOutcome;
    std::unique_ptr<QThread> mThread;
};

/// What was imported, in words: "SZ000001 2018-01-02 至 2018-01-15，2400 根分钟线" of each of the first instruments, and
/// how many more there are.
QString importedText(const ImportOutcome &outcome);
/// What was left out, in a line each: how many rows, and the first of them with their numbers and the reasons; none when
/// all was taken, or the error tells the only one.
QStringList leftOutTexts(const ImportOutcome &outcome);

} // namespace terminal
