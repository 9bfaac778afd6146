#include "terminal/feeder/FeedProgram.h"

#include "terminal/feeder/ExchangeSource.h"
#include "terminal/feeder/FeedLog.h"
#include "terminal/feeder/FeedOptions.h"
#include "terminal/feeder/FeedPublisher.h"
#include "terminal/feeder/NatsSink.h"
#include "terminal/feeder/RecordedSource.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedTicks.h"
#include "terminal/servers/RetryWait.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <ctime>

namespace terminal {
namespace {

constexpr int kWrongUse = 2; ///< exit status
constexpr int kStep = 50; ///< milliseconds between looks at the market
constexpr qint64 kPlaceInterval = 1000; ///< milliseconds between places in the log

void tellFeed(const QString &line) {
    std::fprintf(stderr, "timeshare-feed: %s\n", line.toUtf8().constData());
}

/// The signals that end the program. They are waited for and interrupt nothing.
class EndSignals {
public:
    EndSignals() {
        sigemptyset(&mSet);
        sigaddset(&mSet, SIGINT);
        sigaddset(&mSet, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &mSet, nullptr);
    }
    /// Waits for one of them; whether it has come.
    bool waitFor(int milliseconds) {
        const timespec time{milliseconds / 1000, milliseconds % 1000 * 1000000L};
        mHaveCome = mHaveCome || sigtimedwait(&mSet, nullptr, &time) > 0;
        return mHaveCome;
    }

private:
    sigset_t mSet;
    bool mHaveCome = false;
};

/// A feed with all that it consists of.
class Feed {
public:
    /// Answers an empty text or what is wrong.
    QString open(const FeedOptions &options);
    void run(EndSignals &end);

private:
    QString openSource(const FeedOptions &options);
    bool connect(EndSignals &end);
    bool step();
    void writeSums();

    FeedAddress mAddress;
    int mCopies = 1;
    CMarketStore mStore;
    FeedLog mLog;
    bool mHasLog = false;
    std::unique_ptr<SimulatedClock> mClock;
    std::unique_ptr<FeedSource> mSource;
    qint64 mLast = 0; ///< market time after which nothing comes; 0 for never
    std::unique_ptr<FeedPublisher> mPublisher;
    std::unique_ptr<NatsSink> mSink;
    qint64 mPlaceWritten = 0; ///< milliseconds since the epoch
};

QString Feed::open(const FeedOptions &options) {
    mCopies = options.copies;
    QString wrong = readAddress(options.server, mAddress);
    if (wrong.isEmpty() && !options.log.isEmpty()) {
        wrong = mLog.open(options.log);
        mHasLog = true;
    }
    if (!wrong.isEmpty()) {
        return wrong;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (options.store.isEmpty() && !QDir().mkpath(folder)) {
        return QStringLiteral("%1: the folder of the store cannot be made: give another place with --store")
            .arg(folder);
    }
    wrong = mStore.open(options.store.isEmpty() ? folder + QStringLiteral("/market.db") : options.store);
    return wrong.isEmpty() ? openSource(options) : wrong;
}

QString Feed::openSource(const FeedOptions &options) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const qint64 told = mLog.place() ? mLog.place()->market : 0;
    const auto from = [&](const QDate &date, qint64 otherwise) {
        const qint64 start = options.start.isNull()
                                 ? otherwise
                                 : timeOf(date, 60 * options.start.hour() + options.start.minute());
        return told > 0 && (options.recorded.isNull() || dateAt(told) == date) ? told : start;
    };
    if (options.recorded.isNull()) {
        const QString wrong = fillStore(mStore, now);
        if (!wrong.isEmpty()) {
            return wrong;
        }
        const qint64 auction = simulationStart(*mStore.catalogue(), now);
        mClock = std::make_unique<SimulatedClock>(from(dateAt(auction), auction), options.pace);
        mSource = std::make_unique<ExchangeSource>(mStore, *mClock);
    } else {
        mClock = std::make_unique<SimulatedClock>(0, options.pace);
        auto recorded = std::make_unique<RecordedSource>(mStore, *mClock, dayOf(options.recorded));
        if (recorded->isEmpty()) {
            return QStringLiteral("--recorded %1: no bars of that day are stored")
                .arg(options.recorded.toString(QStringLiteral("yyyy-MM-dd")));
        }
        mLast = recorded->last() + kLongestLag;
        mClock->setTime(from(options.recorded, recorded->first() - kMinuteLength));
        mSource = std::move(recorded);
    }
    mClock->pause(); // until there is a server
    const quint64 before = mLog.place() ? mLog.place()->run : 0;
    mPublisher = std::make_unique<FeedPublisher>(std::max(static_cast<quint64>(now), before + 1), told);
    return {};
}

/// Waits for the server, longer from try to try. False when the program is to end.
bool Feed::connect(EndSignals &end) {
    RetryWait wait;
    QString told;
    while (!end.waitFor(0)) {
        LineFailure failure;
        mSink = NatsSink::open(mAddress, failure, mCopies);
        if (mSink) {
            tellFeed(QStringLiteral("publishing to %1, run %2").arg(mAddress.text()).arg(mPublisher->run()));
            return true;
        }
        if (failure.reason != told) {
            told = failure.reason;
            tellFeed(QStringLiteral("%1: %2: trying again").arg(mAddress.text(), told));
        }
        if (end.waitFor(wait.next())) {
            break;
        }
    }
    return false;
}

/// One look at the market; false when the server has not confirmed it.
bool Feed::step() {
    mSource->advance(*mPublisher);
    const qint64 market = mClock->now();
    if (!mPublisher->publish(*mSink, market, mClock->pace())) {
        return false;
    }
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (mHasLog && (now - mPlaceWritten >= kPlaceInterval || now < mPlaceWritten)) {
        mPlaceWritten = now;
        mLog.writePlace({mPublisher->run(), market}, mPublisher->changes(), mPublisher->minutes());
    }
    return true;
}

void Feed::writeSums() {
    if (mHasLog) {
        mLog.writePlace({mPublisher->run(), mClock->now()}, mPublisher->changes(), mPublisher->minutes());
        mPublisher->eachSums(
            [this](const QString &key, const DaySums &sums) { mLog.writeSums(mPublisher->run(), key, sums); });
    }
}

void Feed::run(EndSignals &end) {
    bool isConfirmed = true;
    while (connect(end)) {
        mClock->resume();
        while ((isConfirmed = step()) && !end.waitFor(kStep)) {
            if (mLast > 0 && mClock->now() > mLast) {
                break;
            }
        }
        mClock->pause(); // nothing happens that nobody can be told
        if (isConfirmed) {
            isConfirmed = step(); // to where the clock stopped
        }
        if (isConfirmed) {
            writeSums();
            return;
        }
        mSink.reset();
        tellFeed(QStringLiteral("the server is gone or slow: trying again"));
    }
}

} // namespace

int runFeed(int argc, char **argv) {
    EndSignals end; // before there are other threads
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("timeshare-feed"));
    const auto parsed = parseFeedOptions(QCoreApplication::arguments().mid(1));
    if (const QString *wrong = std::get_if<QString>(&parsed)) {
        tellFeed(*wrong);
        return kWrongUse;
    }
    const FeedOptions &options = std::get<FeedOptions>(parsed);
    if (options.help) {
        std::fputs(feedHelp().toUtf8().constData(), stdout);
        return 0;
    }
    Feed feed;
    const QString wrong = feed.open(options);
    if (!wrong.isEmpty()) {
        tellFeed(wrong);
        return kWrongUse;
    }
    feed.run(end);
    return 0;
}

} // namespace terminal
