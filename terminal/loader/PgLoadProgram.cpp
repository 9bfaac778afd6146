#include "terminal/loader/PgLoadProgram.h"

#include "terminal/history/HistoryReport.h"
#include "terminal/history/ServerHistory.h"
#include "terminal/loader/LoadOptions.h"
#include "terminal/loader/PgLoader.h"
#include "terminal/market/FileImporter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>

namespace terminal {
namespace {

constexpr int kNotAll = 1; ///< exit status
constexpr int kNotBegun = 2;
constexpr int kBarsAtOnce = 2000000; ///< of one transaction, some 150 MB here

void tellLoad(const QString &line) {
    std::fprintf(stderr, "timeshare-load: %s\n", line.toUtf8().constData());
}

/// One run of the program.
class Load {
public:
    /// Answers an empty text or why it cannot begin.
    QString open(const LoadOptions &options) {
        const QString wrong = readHistoryAddress(options.history, mAddress);
        if (!wrong.isEmpty()) {
            return QStringLiteral("--history: %1").arg(wrong);
        }
        mLoader = std::make_unique<PgLoader>(mAddress);
        const HistoryFailure failure = mLoader->prepare();
        return failure.isNone() ? openCatalogue() : failure.reason;
    }
    /// Loads files; whether all of them are on the server.
    bool run(const LoadOptions &options) {
        bool isWhole = true;
        for (const QString &path : options.files) {
            const ImportOutcome outcome =
                importMarketFile(mStore, options.import, path, {}, [&] { return mBatch.target(mStore, path); });
            if (!outcome.isGood()) {
                tellLoad(outcome.error);
                isWhole = false;
            }
            isWhole = (mBatch.bars() < kBarsAtOnce || put()) && isWhole;
        }
        return put() && isWhole;
    }

private:
    /// What is known of instruments is that of every terminal, and what the server has.
    QString openCatalogue() {
        QString wrong = mStore.open(mFolder.filePath(QStringLiteral("catalogue.db")));
        wrong = wrong.isEmpty() ? keepServedDays(mStore) : wrong;
        wrong = wrong.isEmpty() ? fillStore(mStore, QDateTime::currentMSecsSinceEpoch()) : wrong;
        if (!wrong.isEmpty()) {
            return wrong;
        }
        int taken = 0;
        const auto server = makePgHistoryServer(mAddress);
        return ServerHistory(mStore, *server).takeInstruments(taken).reason;
    }
    bool put() {
        if (mBatch.days().empty()) {
            return true;
        }
        LoadOutcome outcome;
        const HistoryFailure failure = mLoader->put(mBatch, outcome);
        mBatch.clear();
        if (!failure.isNone()) {
            tellLoad(QStringLiteral("nothing of these files is loaded: %1").arg(failure.reason));
            return false;
        }
        std::printf("%d days with %d bars loaded, %d days were there\n", outcome.days, outcome.bars,
                    outcome.known);
        return true;
    }

    QTemporaryDir mFolder;
    HistoryAddress mAddress;
    CMarketStore mStore;
    LoadBatch mBatch;
    std::unique_ptr<PgLoader> mLoader;
};

} // namespace

int runLoad(int argc, char **argv) {
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("timeshare-load"));
    const auto parsed = parseLoadOptions(QCoreApplication::arguments().mid(1));
    if (const QString *wrong = std::get_if<QString>(&parsed)) {
        tellLoad(*wrong);
        return kNotBegun;
    }
    const LoadOptions &options = std::get<LoadOptions>(parsed);
    if (options.help) {
        std::fputs(loadHelp().toUtf8().constData(), stdout);
        return 0;
    }
    Load load;
    const QString wrong = load.open(options);
    if (!wrong.isEmpty()) {
        tellLoad(wrong);
        return kNotBegun;
    }
    return load.run(options) ? 0 : kNotAll;
}

} // namespace terminal
