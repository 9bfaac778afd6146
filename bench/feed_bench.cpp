// How late a change of the market is on the screen: from its publishing to the repaint of a view that shows it or a later one.
//
//     timeshare_feed_bench FEED-URL [SECONDS, 60] [VIEWS, 16]
//
// The terminal's credentials stand in TIMESHARE_FEED_CREDENTIALS, those of the feed in PUBLISHER_CREDENTIALS. A process of its
// own publishes 5 000 instruments, each once in 3 s, and then a burst of 100 000 messages a second of the shown ones, for a
// sixth of the time. Offscreen, on 3840x2160. See feed.py, which starts the server.

#include "bench/BenchTerminal.h"
#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/WallWindow.h"
#include "terminal/feed/WireSubject.h"
#include "terminal/feeder/InstrumentTape.h"
#include "terminal/feeder/NatsSink.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <thread>
#include <vector>

namespace {

using namespace terminal;

constexpr int kInstruments = 5000;
constexpr double kOnceIn = 3.0; ///< seconds
constexpr int kBurst = 100000; ///< messages a second
constexpr int kBurstPart = 6; ///< of the time
constexpr quint64 kStride = 1597; ///< between one instrument and the next: the shown ones do not come together
constexpr int kMostChanges = 200000; ///< of one instrument
const qint64 kMarketStart = timeOf(QDate(2026, 11, 20), 600);

/// When which change was published, in seconds of the steady clock. Both processes have it in memory.
struct Times {
    std::atomic<int> phase{
        0}; ///< 0 until the views are there, then 1 for the even market, 2 for the burst, 3 for the end
    std::atomic<double> at[1]; ///< by view and sequence
};

double now() {
    return secondsOf(CLOCK_MONOTONIC);
}

/// The price of a change: some cents around a base, and its sequence far behind the point.
double priceOf(double base, quint64 sequence) {
    const double cents =
        std::round(100.0 * base * (1.0 + 0.002 * std::sin(0.05 * static_cast<double>(sequence))));
    return cents / 100.0 + static_cast<double>(sequence) * 1e-9;
}

quint64 sequenceOf(double price) {
    const double cents = 100.0 * price;
    return static_cast<quint64>(std::llround((cents - std::floor(cents + 1e-8)) * 1e7));
}

/// The process that publishes: URL, file of times, seconds, and keys with base prices.
class Publisher {
public:
    Publisher(NatsSink &sink, Times &times, const QStringList &shown)
        : mSink(sink), mTimes(times), mBegun(now()) {
        for (const QString &word : shown) {
            add(word.section('=', 0, 0), word.section('=', 1).toDouble());
        }
        mShown = static_cast<int>(mItems.size());
        while (mItems.size() < kInstruments) {
            add(QStringLiteral("XX%1").arg(mItems.size()), 10.0);
        }
    }
    /// Publishes at a rate for a time, among the first `count` instruments in turn.
    void run(double seconds, double rate, int count) {
        const double begun = now();
        qint64 sent = 0;
        for (double time = 0.0; time < seconds; time = now() - begun) {
            for (; static_cast<double>(sent) < time * rate; ++sent) {
                change(static_cast<int>(mNext++ * kStride % static_cast<quint64>(count)));
            }
            beat();
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        std::printf("published %lld in %.1f s\n", static_cast<long long>(sent), now() - begun);
        std::fflush(stdout);
    }
    void rest(double seconds) {
        for (const double end = now() + seconds; now() < end;) {
            beat();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    void beat() {
        if (now() - mLastBeat > 0.25) {
            mLastBeat = now();
            mSink.send(clockSubject(), encodeWire(WireClock{kRun, ++mBeat, 1, market(), 1.0}));
        }
    }

private:
    static constexpr quint64 kRun = 7;
    struct Item {
        QByteArray subject;
        std::unique_ptr<InstrumentTape> tape;
        double base;
        quint64 sequence;
    };

    void add(const QString &key, double base) {
        mItems.push_back({changeSubject(key), std::make_unique<InstrumentTape>(kRun), base, 0});
        mItems.back().tape->beginDay(dayOf(dateAt(kMarketStart)), {}, 0);
    }
    qint64 market() const { return kMarketStart + static_cast<qint64>(1000.0 * (now() - mBegun)); }
    void change(int number) {
        Item &item = mItems[static_cast<size_t>(number)];
        const double price = priceOf(item.base, ++item.sequence);
        const qint64 minute = (market() / 60000 + 1) * 60000;
        const WireBar record =
            item.tape->change({minute, item.base, item.base * 1.01, item.base * 0.99, price, item.base * 0.5,
                               static_cast<double>(item.sequence % 1000) * 100.0, 1000.0});
        if (number < mShown && item.sequence < kMostChanges) {
            (&mTimes.at[0])[static_cast<quint64>(number) * kMostChanges + item.sequence] = now();
        }
        mSink.send(item.subject, encodeWire(record));
    }

    NatsSink &mSink;
    Times &mTimes;
    const double mBegun;
    std::vector<Item> mItems;
    int mShown = 0;
    quint64 mNext = 0;
    quint64 mBeat = 0;
    double mLastBeat = 0.0;
};

Times *mapTimes(QFile &file, int views) {
    const qint64 size = qint64(sizeof(Times)) + qint64(views) * kMostChanges * qint64(sizeof(double));
    if (!file.open(QIODevice::ReadWrite) || !file.resize(size)) {
        return nullptr;
    }
    return reinterpret_cast<Times *>(file.map(0, size));
}

int publish(const QStringList &arguments) {
    FeedAddress address;
    LineFailure failure;
    readAddress(arguments[2], address);
    const std::unique_ptr<NatsSink> sink = NatsSink::open(address, failure);
    QFile file(arguments[3]);
    const QStringList shown = arguments.mid(5);
    Times *times = mapTimes(file, static_cast<int>(shown.size()));
    if (!sink || !times) {
        std::fprintf(stderr, "no server or no file: %s\n", qPrintable(failure.reason));
        return 1;
    }
    Publisher publisher(*sink, *times, shown);
    while (times->phase == 0) { // the terminal comes up in the light of the beats
        publisher.rest(0.02);
    }
    const double seconds = arguments[4].toDouble();
    publisher.run(seconds, kInstruments / kOnceIn, kInstruments);
    publisher.rest(1.0);
    times->phase = 2;
    publisher.rest(0.1);
    publisher.run(seconds / kBurstPart, kBurst, static_cast<int>(shown.size()));
    times->phase = 3;
    return sink->confirm() ? 0 : 1;
}

/// What of a view is on the screen, and how late its changes were.
class Seen {
public:
    Seen(ChartView &view, Times &times, int number)
        : mView(view), mTimes(&times.at[0] + static_cast<ptrdiff_t>(number) * kMostChanges) {}

    QObject *graph() const { return mView.graph(); }
    /// The graph is about to be painted with what its data is now.
    void onPaint() {
        const auto series = mView.data()->getData().constFind(
            TC::CFormulaKey(mView.instrument(), mView.uiParam()->getBasicFormula()));
        if (series == mView.data()->getData().constEnd() || series->result.mValues.empty() ||
            series->result.mValues[0].empty()) {
            return;
        }
        const quint64 sequence = sequenceOf(series->result.mValues[0].back());
        mPainted = sequence < kMostChanges ? std::max(mPainted, sequence) : mPainted;
    }
    /// What has been painted is in the window: how late every change up to it was, in milliseconds.
    void onShown(double time, std::vector<double> &late) {
        for (; mShown < mPainted; ++mShown) {
            late.push_back(1e3 * (time - mTimes[mShown + 1]));
        }
    }

private:
    ChartView &mView;
    const std::atomic<double> *mTimes;
    quint64 mPainted = 0;
    quint64 mShown = 0;
};

class Application : public QApplication {
public:
    using QApplication::QApplication;

    std::vector<Seen> seen;
    std::vector<double> *late = nullptr; ///< where it is kept just now
    qint64 repaints = 0;

    bool notify(QObject *receiver, QEvent *event) override {
        if (event->type() == QEvent::Paint) {
            for (Seen &each : seen) {
                if (each.graph() == receiver) {
                    each.onPaint();
                }
            }
        }
        const QEvent::Type type = event->type();
        const bool answer = QApplication::notify(receiver, event);
        if (type == QEvent::UpdateRequest && late) {
            ++repaints;
            for (Seen &each : seen) {
                each.onShown(now(), *late);
            }
        }
        return answer;
    }
};

void runUntil(const std::function<bool()> &isDone) {
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone()) {
            loop.quit();
        }
    });
    look.start(20);
    loop.exec();
}

void print(const char *what, std::vector<double> late, qint64 repaints, double seconds) {
    if (late.empty()) {
        std::printf("%s: nothing was shown\n", what);
        return;
    }
    std::sort(late.begin(), late.end());
    std::printf("%s: median %.1f ms, 99 %% %.1f ms, most %.1f ms; %zu changes by %lld repaints of the window "
                "in %.1f s\n",
                what, late[late.size() / 2], late[late.size() * 99 / 100], late.back(), late.size(),
                static_cast<long long>(repaints), seconds);
}

int measure(Application &application, const QString &url, const QString &seconds, int views) {
    const QTemporaryDir folder;
    TerminalSettings settings;
    settings.store = folder.filePath(QStringLiteral("market.db"));
    settings.feed = url;
    settings.start = kMarketStart;
    QString error;
    const std::unique_ptr<TerminalServices> services = TerminalServices::open(settings, error);
    if (!services) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    WallWindow wall(*services, views);
    wall.resize(3840, 2160);
    wall.show();
    wall.showFrom(QStringLiteral("SH600000"));
    QFile file(folder.filePath(QStringLiteral("times")));
    Times *times = mapTimes(file, views);
    QStringList arguments{QStringLiteral("publish"), url, file.fileName(), seconds};
    for (int i = 0; i < wall.views().size(); ++i) {
        ChartView &view = *wall.views()[i];
        application.seen.emplace_back(view, *times, i);
        arguments.append(
            QStringLiteral("%1=%2").arg(view.instrument()).arg(services->quoteOf(view.instrument()).lastClose));
    }
    QProcess publisher;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TIMESHARE_FEED_CREDENTIALS"),
                       qEnvironmentVariable("PUBLISHER_CREDENTIALS"));
    publisher.setProcessEnvironment(environment);
    publisher.setProcessChannelMode(QProcess::ForwardedChannels);
    publisher.start(QApplication::applicationFilePath(), arguments);
    const double begun = now();
    runUntil([&] { return now() - begun > 4.0 && services->trouble().isEmpty(); });
    times->phase = 1;
    for (const char *what : {"5 000 instruments once in 3 s", "100 000 messages a second"}) {
        const int phase = times->phase;
        std::vector<double> late;
        application.late = &late;
        application.repaints = 0;
        const double start = now();
        const double cpu = secondsOf(CLOCK_PROCESS_CPUTIME_ID);
        runUntil([&] { return times->phase != phase; });
        if (phase == 2) { // what is still on its way counts
            const double end = now();
            runUntil([&] { return now() - end > 1.0; });
        }
        application.late = nullptr;
        print(what, late, application.repaints, now() - start);
        std::printf("    processor time of the terminal: %.1f %% of a core\n",
                    100.0 * (secondsOf(CLOCK_PROCESS_CPUTIME_ID) - cpu) / (now() - start));
    }
    publisher.waitForFinished();
    return publisher.exitCode();
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    if (argc > 1 && QByteArray(argv[1]) == "publish") {
        QCoreApplication application(argc, argv);
        return publish(QCoreApplication::arguments());
    }
    Application application(argc, argv);
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(13);
    QApplication::setFont(font);
    const QStringList arguments = QApplication::arguments();
    return measure(application, arguments.value(1), arguments.value(2, QStringLiteral("60")),
                   arguments.size() > 3 ? arguments[3].toInt() : 16);
}
