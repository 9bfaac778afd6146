#include "terminal/app/ImportJob.h"

#include "terminal/market/MarketDate.h"
#include "terminal/threads/ThreadStart.h"

#include <QCoreApplication>
#include <QStringList>

#include <utility>

namespace terminal {

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
    mOutcome = importMarketFile(mStore, mOptions, mPath, [this](int done, int total) {
        Q_EMIT progress(done, total);
        return !mStopped;
    });
}

QString importedText(const ImportOutcome &outcome) {
    QStringList parts;
    for (const ImportedBars &imported : outcome.instruments) {
        QString part = QCoreApplication::translate("ImportJob", "已导入 %1 %2 至 %3，%4 根分钟线")
                           .arg(imported.key, dateOf(imported.firstDay).toString(QStringLiteral("yyyy-MM-dd")),
                                dateOf(imported.lastDay).toString(QStringLiteral("yyyy-MM-dd")))
                           .arg(imported.bars);
        if (imported.ticks > 0) {
            part += QCoreApplication::translate("ImportJob", "，%1 笔成交").arg(imported.ticks);
        }
        parts.append(part);
    }
    return parts.join(QStringLiteral("；"));
}

QStringList leftOutTexts(const ImportOutcome &outcome) {
    const LeftOutRows &rows = outcome.leftOut;
    QStringList lines;
    if (rows.count == 0 || (!outcome.isGood() && rows.count == 1)) { // the error tells the one
        return lines;
    }
    lines.append(outcome.isGood()
                     ? QCoreApplication::translate("ImportJob", "略去 %1 行：").arg(rows.count)
                     : QCoreApplication::translate("ImportJob", "不能读的行，至少 %1 行：").arg(rows.count));
    for (const BarFault &row : rows.first) {
        lines.append(QCoreApplication::translate("ImportJob", "第 %1 行：%2").arg(row.line).arg(row.reason));
    }
    return lines;
}

} // namespace terminal
