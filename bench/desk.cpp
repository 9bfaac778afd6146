// A terminal without windows over real servers: it follows instruments and wants their past days, as one with
// charts of Shanghai and Shenzhen does.
//
//     timeshare_desk FOLDER FEED-URL HISTORY-URL INSTRUMENTS
//
// It answers a word on its standard input with lines, the last of which is "done":
//     sums    "sum DAY KEY MINUTES VOLUME AMOUNT PRICE" of what listeners were told of each instrument, as a feed logs it
//     past    "past KEY DAYS BARS" of what the store has of each by now
//     state   "state WHOLE PROCESSOR-SECONDS MEGABYTES TROUBLE", WHOLE being 1 when nothing of the running day is missing
// and ends with its input.

#include "bench/BenchTerminal.h"
#include "terminal/feeder/InstrumentTape.h"

#include <QApplication>
#include <QFile>
#include <QSocketNotifier>

#include <map>
#include <mutex>
#include <unistd.h>

namespace {

using namespace terminal;

/// The instruments that are followed, and all that was told of them.
class Desk {
public:
    Desk(TerminalServices &services, int instruments) : mServices(services) {
        QStringList keys;
        for (const Instrument &instrument : services.store().catalogue()->instruments) {
            if (instrument.simulated &&
                (instrument.market == QLatin1String("SH") || instrument.market == QLatin1String("SZ"))) {
                keys.append(instrument.key());
            }
        }
        keys.sort();
        for (const QString &key : keys.mid(0, instruments)) {
            follow(key);
        }
    }
    ~Desk() {
        for (const auto &[key, followed] : mFollowed) {
            mServices.feed().unsubscribe(followed.id);
        }
    }

    void answer(const QByteArray &word) {
        if (word == "sums") {
            tellSums();
        } else if (word == "past") {
            tellPast();
        } else if (word == "state") {
            tellState();
        }
        std::puts("done");
        std::fflush(stdout);
    }

private:
    struct Followed {
        int day = 0;
        int id = 0;
        std::map<qint64, MinuteBar> bars; ///< by time
    };

    void follow(const QString &key) {
        const int day = dayOf(mServices.runningDayOf(key));
        const MarketFeed::Subscription subscription =
            mServices.feed().subscribe(key, day, [this](const MinuteUpdate &update) {
                std::lock_guard<std::mutex> hold(mLock);
                mFollowed[update.key].bars[update.bar.time] = update.bar;
            });
        std::lock_guard<std::mutex> hold(mLock);
        Followed &followed = mFollowed[key];
        followed.day = day;
        followed.id = subscription.id;
        for (const MinuteBar &bar : subscription.bars) {
            followed.bars.emplace(bar.time, bar); // what was told since holds
        }
        mServices.pastDays().want(key, day);
    }
    void tellSums() {
        std::lock_guard<std::mutex> hold(mLock);
        for (const auto &[key, followed] : mFollowed) {
            MinuteBars bars;
            for (const auto &[time, bar] : followed.bars) {
                bars.push_back(bar);
            }
            const DaySums sums = sumsOf(followed.day, bars);
            std::printf("sum %d %s %d %.17g %.17g %.17g\n", sums.day, qPrintable(key), sums.minutes,
                        sums.volume, sums.amount, sums.price);
        }
    }
    void tellPast() {
        for (const auto &[key, followed] : mFollowed) {
            const Instrument *instrument = mServices.store().catalogue()->find(key);
            int bars = 0;
            const QMap<int, int> counts = mServices.store().importedCounts(instrument->id);
            for (const int count : counts) {
                bars += count;
            }
            std::printf("past %s %d %d\n", qPrintable(key), int(counts.size()), bars);
        }
    }
    void tellState() {
        QFile file(QStringLiteral("/proc/self/statm"));
        const double pages =
            file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toDouble() : 0.0;
        const QString trouble = mServices.trouble();
        std::printf("state %d %.3f %.1f %s\n", trouble.isEmpty() ? 1 : 0, secondsOf(CLOCK_PROCESS_CPUTIME_ID),
                    pages * double(sysconf(_SC_PAGESIZE)) / 1e6, qPrintable(trouble));
    }

    TerminalServices &mServices;
    std::mutex mLock; ///< guards what follows
    std::map<QString, Followed> mFollowed; ///< by key
};

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    TerminalSettings settings;
    settings.store = arguments.value(1) + QStringLiteral("/market.db");
    settings.feed = arguments.value(2);
    settings.history = arguments.value(3);
    QString error;
    const std::unique_ptr<TerminalServices> services = TerminalServices::open(settings, error);
    if (!services) {
        std::fprintf(stderr, "timeshare_desk: %s\n", qPrintable(error));
        return 1;
    }
    Desk desk(*services, arguments.value(4).toInt());
    QFile input;
    input.open(stdin, QIODevice::ReadOnly | QIODevice::Unbuffered);
    QSocketNotifier words(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&words, &QSocketNotifier::activated, &application, [&] {
        const QByteArray line = input.readLine();
        if (line.isEmpty()) {
            QApplication::quit();
        } else {
            desk.answer(line.trimmed());
        }
    });
    return QApplication::exec();
}
