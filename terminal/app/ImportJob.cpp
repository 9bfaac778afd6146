#include "terminal/app/ImportJob.h"

#include "host/toolkit/Wording.h"
#include "terminal/market/MarketDate.h"
#include "terminal/threads/BehindWindow.h"
#include "terminal/threads/ThreadStart.h"

#include <QCoreApplication>
#include <QStringList>

#include <utility>

namespace terminal {
namespace {

constexpr int kToldInstruments = 10; ///< of one file, one by one

} // namespace

ImportJob::ImportJob(CMarketStore &store, QString path, ImportOptions options)
    : mStore(store), mPath(std::move(path)), mOptions(std::move(options)) {}

ImportJob::~ImportJob() {
    stop();
    if (mThread) {
        mThread->wait();
    }
}

void ImportJob::start() {
    mThread.reset(QThread::create([this] { run(); }));
    // Emitted by the thread object, which lives here: whoever hears of it is on this thread.
    connect(mThread.get(), &QThread::finished, this, &ImportJob::finished);
    if (!startThread(*mThread)) {
        mOutcome.error = noThreadText();
        QMetaObject::invokeMethod(this, &ImportJob::finished, Qt::QueuedConnection);
    }
}

void ImportJob::run() {
    leaveProcessor();
    mOutcome = importMarketFile(mStore, mOptions, mPath, [this](int done, int total) {
        Q_EMIT progress(done, total);
        return !mStopped;
    });
}

QString importedText(const ImportOutcome &outcome) {
    QStringList parts;
    qint64 moreBars = 0; // of those that are not told one by one
    for (const ImportedBars &imported : outcome.instruments) {
        if (parts.size() == kToldInstruments) {
            moreBars += imported.bars;
            continue;
        }
        QString part =
            QCoreApplication::translate("ImportJob", "已导入 %1 %2 至 %3，%n 根分钟线", nullptr, imported.bars)
                .arg(imported.key, dateOf(imported.firstDay).toString(GZ::kDateFormat),
                     dateOf(imported.lastDay).toString(GZ::kDateFormat));
        if (imported.ticks > 0) {
            part += QCoreApplication::translate("ImportJob", "，%n 笔成交", nullptr, imported.ticks);
        }
        parts.append(part);
    }
    if (const int more = static_cast<int>(outcome.instruments.size() - parts.size()); more > 0) {
        parts.append(QCoreApplication::translate("ImportJob", "另有 %n 个证券，%1 根分钟线", nullptr, more)
                         .arg(moreBars));
    }
    return GZ::phrasesText(parts);
}

QStringList leftOutTexts(const ImportOutcome &outcome) {
    const LeftOutRows &rows = outcome.leftOut;
    QStringList lines;
    if (rows.count == 0 || (!outcome.isGood() && rows.count == 1)) { // the error tells the one
        return lines;
    }
    lines.append(
        outcome.isGood()
            ? QCoreApplication::translate("ImportJob", "略去 %n 行：", nullptr, rows.count)
            : QCoreApplication::translate("ImportJob", "不能读的行，至少 %n 行：", nullptr, rows.count));
    for (const BarFault &row : rows.first) {
        lines.append(QCoreApplication::translate("ImportJob", "第 %1 行：%2").arg(row.line).arg(row.reason));
    }
    return lines;
}

} // namespace terminal
