// What a wall of live views costs while a full market comes from a server, and how late a change is on the screen.
//
//     timeshare_wall_bench FEED-URL [SECONDS, 60] [VIEWS, 16] [BURST, 20000]
//
// The terminal's credentials stand in TIMESHARE_FEED_CREDENTIALS, those of the feed in PUBLISHER_CREDENTIALS. A process of its
// own publishes 5 000 instruments, each once in 3 s, and once a minute, twice at least, a burst of that many changes within a
// second: by turns of all instruments and of the shown ones alone. The terminal has all 5 000 in its catalogue and hears each of
// them. Offscreen, on 3840x2160. See feed.py, which starts the server.

#include "bench/BenchTerminal.h"
#include "bench/ShownChanges.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/WallWindow.h"
#include "terminal/market/MarketWriter.h"
#include "terminal/market/SimulatedInstruments.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFont>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <functional>

namespace {

using namespace terminal;

constexpr QSize kScreen(3840, 2160);
constexpr double kBetweenBursts = 60.0; ///< seconds
constexpr int kSettling = 500; ///< milliseconds after a burst that count as part of it
constexpr int kMarketThere = 120000; ///< milliseconds to wait for the market

/// Memory that the process has for itself, in MB.
double ownMegabytes() {
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("RssAnon:")) {
            return line.mid(8).simplified().split(' ').value(0).toDouble() / 1024.0;
        }
    }
    return 0.0;
}

/// What was seen while the market was of one kind.
struct Figures {
    double time = 0.0;
    double drawing = 0.0; ///< seconds of processor time of the thread that draws
    double all = 0.0; ///< and of the whole process
    qint64 frames = 0;
    double longestEvent = 0.0; ///< milliseconds
    double longestPause = 0.0; ///< between two frames while each had something to show, milliseconds
    int longestQueue = 0; ///< results that waited for the thread that draws
    std::vector<double> late; ///< changes, from their publishing to the window, milliseconds

    /// A turn of it begins or ends.
    void count(double sign) {
        time += sign * secondsOf(CLOCK_MONOTONIC);
        drawing += sign * secondsOf(CLOCK_THREAD_CPUTIME_ID);
        all += sign * secondsOf(CLOCK_PROCESS_CPUTIME_ID);
    }
    void print(const char *what) {
        std::printf(
            "%s, %.0f s: %.1f %% of one core for the thread that draws, %.1f %% in all; %.1f frames a second, "
            "%.1f ms at most for one event; %d results waited at most\n",
            what, time, 100.0 * drawing / time, 100.0 * all / time, double(frames) / time, longestEvent,
            longestQueue);
        if (longestPause > 0.0) {
            std::printf("    %.1f ms at most from one frame to the next\n", longestPause);
        }
        if (!late.empty()) {
            std::sort(late.begin(), late.end());
            std::printf(
                "    from publishing to the window: median %.1f ms, 99 %% %.1f, most %.1f, of %zu changes\n",
                late[late.size() / 2], late[late.size() * 99 / 100], late.back(), late.size());
        }
    }
};

/// Measures every event of the thread that draws; a repaint of all that has changed is one, a frame.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    std::vector<ShownChanges> shown;
    std::function<int()> waiting; ///< results that wait
    std::function<bool()> isFlooded; ///< whether every frame has something to show
    void measure(Figures *into) { mFigures = into; }

    bool notify(QObject *receiver, QEvent *event) override {
        if (event->type() == QEvent::Paint) {
            for (ShownChanges &each : shown) {
                if (each.graph() == receiver) {
                    each.onPaint();
                }
            }
        }
        if (mDepth > 0 || !mFigures) {
            return QApplication::notify(receiver, event);
        }
        const bool isFrame = event->type() == QEvent::UpdateRequest;
        mFigures->longestQueue = std::max(mFigures->longestQueue, waiting());
        const double before = secondsOf(CLOCK_MONOTONIC);
        ++mDepth;
        const bool answer = QApplication::notify(receiver, event);
        --mDepth;
        onDone(before, isFrame);
        return answer;
    }

private:
    void onDone(double before, bool isFrame) {
        const double now = secondsOf(CLOCK_MONOTONIC);
        mFigures->longestEvent = std::max(mFigures->longestEvent, 1e3 * (now - before));
        if (!isFrame) {
            return;
        }
        ++mFigures->frames;
        if (mLastFrame > 0.0) {
            mFigures->longestPause = std::max(mFigures->longestPause, 1e3 * (now - mLastFrame));
        }
        mLastFrame = isFlooded() ? now : 0.0;
        for (ShownChanges &each : shown) {
            each.onShown(now, mFigures->late);
        }
    }

    Figures *mFigures = nullptr;
    int mDepth = 0;
    double mLastFrame = 0.0;
};

/// Lets the event loop run for a time, or until a condition holds. Answers whether it does.
bool runFor(
    int milliseconds, const std::function<bool()> &isDone = [] { return false; }) {
    QElapsedTimer time;
    time.start();
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone() || time.elapsed() >= milliseconds) {
            loop.quit();
        }
    });
    look.start(20);
    loop.exec();
    return isDone();
}

/// A store with all instruments of the market, most of which have no days.
QString putMarket(const QString &path) {
    CMarketStore store;
    const QString failed = store.open(path);
    if (!failed.isEmpty()) {
        return failed;
    }
    MarketWriter writer(store);
    Instrument instrument = findSimulated(QStringLiteral("SH600000"))->instrument;
    instrument.simulated = false;
    for (int i = 0; i < MarketPublisher::kInstruments; ++i) {
        instrument.code = publishedKey(i).mid(instrument.market.size());
        instrument.name = instrument.code;
        writer.putInstrument(instrument);
    }
    writer.commit();
    return writer.error();
}

/// A terminal that hears all of the market and shows some of it.
class Wall {
public:
    Wall(const QString &url, int views) {
        TerminalSettings settings;
        settings.store = mFolder.filePath(QStringLiteral("market.db"));
        settings.feed = url;
        settings.start = publishedMarketStart();
        QString error = putMarket(settings.store);
        mServices = error.isEmpty() ? TerminalServices::open(settings, error) : nullptr;
        if (!mServices) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return;
        }
        mBare = ownMegabytes();
        mWindow = std::make_unique<WallWindow>(*mServices, views);
        mWindow->resize(kScreen);
        mWindow->show();
        mWindow->showFrom(QStringLiteral("SH600000"));
    }
    ~Wall() {
        for (const int id : mHeard) {
            mServices->feed().unsubscribe(id);
        }
    }

    TerminalServices *services() { return mServices.get(); }
    const QVector<ChartView *> &views() const { return mWindow->views(); }
    QString pathOf(const char *name) const { return mFolder.filePath(QString::fromLatin1(name)); }
    bool isComplete() const {
        return std::all_of(views().begin(), views().end(), [](const ChartView *view) {
            return view->isComplete() && view->pointCount() > 150;
        });
    }
    /// Hears every instrument, beside what is shown.
    void hearAll() {
        for (int i = views().size(); i < MarketPublisher::kInstruments; ++i) {
            const auto count = [this](const MinuteUpdate &) { ++mChanges; };
            const int day = dayOf(dateAt(publishedMarketStart()));
            mHeard.push_back(mServices->feed().subscribe(publishedKey(i), day, count).id);
        }
    }
    qint64 changes() const { return mChanges; }
    /// Of a view, beside the pictures of its panes and of the window.
    double megabytesOfView() const {
        const double pictures = 2.0 * kScreen.width() * kScreen.height() * 4.0 / 1e6;
        return (ownMegabytes() - mBare - pictures) / views().size();
    }

private:
    QTemporaryDir mFolder;
    std::atomic<qint64> mChanges{0};
    std::unique_ptr<TerminalServices> mServices;
    std::unique_ptr<WallWindow> mWindow;
    double mBare = 0.0; ///< memory before there is a window
    std::vector<int> mHeard;
};

/// The process that publishes, until it is told that the market is over.
class Publishing {
public:
    Publishing(const QString &url, const QString &path, const QString &burst, Wall &wall) : mFile(path) {
        times = MarketTimes::map(mFile, wall.views().size());
        times->done = -1;
        QStringList arguments{QStringLiteral("publish"), url, path, burst};
        for (const ChartView *view : wall.views()) {
            const double base = wall.services()->quoteOf(view->instrument()).lastClose;
            arguments.append(QStringLiteral("%1=%2").arg(view->instrument()).arg(base));
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TIMESHARE_FEED_CREDENTIALS"),
                           qEnvironmentVariable("PUBLISHER_CREDENTIALS"));
        mProcess.setProcessEnvironment(environment);
        mProcess.setProcessChannelMode(QProcess::ForwardedChannels);
        mProcess.start(QApplication::applicationFilePath(), arguments);
    }
    ~Publishing() {
        times->isOver = true;
        mProcess.waitForFinished();
    }

    MarketTimes *times = nullptr;

private:
    QFile mFile;
    QProcess mProcess;
};

void measure(Application &application, Wall &wall, MarketTimes &times, double seconds) {
    Figures even;
    Figures bursts[2]; // of the shown instruments, of all
    const int rounds = std::max(2, static_cast<int>(seconds / kBetweenBursts));
    const double memory = ownMegabytes();
    const qint64 before = wall.changes();
    const double begun = secondsOf(CLOCK_MONOTONIC);
    for (int round = 1; round <= rounds; ++round) {
        Figures &burst = bursts[round % 2];
        application.measure(&even);
        even.count(-1.0);
        runFor(static_cast<int>(1e3 * (seconds / rounds - 1.0)) - kSettling);
        even.count(1.0);
        application.measure(&burst);
        burst.count(-1.0);
        times.asked = round;
        runFor(kMarketThere, [&] { return times.done == round; });
        runFor(kSettling);
        burst.count(1.0);
    }
    application.measure(nullptr);
    const double rate = double(wall.changes() - before) / (secondsOf(CLOCK_MONOTONIC) - begun);
    even.print("even market");
    bursts[1].print("bursts of all instruments");
    bursts[0].print("bursts of the shown ones");
    std::printf(
        "%.0f changes a second were heard of the others; memory of the process %.1f MB before, %.1f after\n",
        rate, memory, ownMegabytes());
}

int run(Application &application, const QString &url, double seconds, int views, const QString &burst) {
    Wall wall(url, views);
    if (!wall.services()) {
        return 1;
    }
    Publishing publishing(url, wall.pathOf("times"), burst, wall);
    const double drawing = secondsOf(CLOCK_THREAD_CPUTIME_ID);
    if (!runFor(kMarketThere, [&] { return publishing.times->done == 0 && wall.isComplete(); })) {
        std::fprintf(stderr, "the views are not complete: %s\n", qPrintable(wall.services()->trouble()));
        return 1;
    }
    runFor(kSettling); // the last of them is painted
    std::printf("first pictures: %.0f ms of processor time of the thread that draws; %.1f MB a view beside its "
                "pixmaps\n",
                (secondsOf(CLOCK_THREAD_CPUTIME_ID) - drawing) * 1e3, wall.megabytesOfView());
    wall.hearAll();
    if (!runFor(kMarketThere, [&] { return wall.services()->trouble().isEmpty(); })) {
        std::fprintf(stderr, "the market is not whole: %s\n", qPrintable(wall.services()->trouble()));
        return 1;
    }
    for (int i = 0; i < wall.views().size(); ++i) {
        application.shown.emplace_back(*wall.views()[i], *publishing.times, i);
    }
    application.waiting = [&] { return wall.services()->formulas().pendingResults(); };
    application.isFlooded = [&times = *publishing.times] {
        return times.asked != times.done && times.asked % 2 == 0;
    };
    measure(application, wall, *publishing.times, seconds);
    application.shown.clear();
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    if (argc > 1 && QByteArray(argv[1]) == "publish") {
        QCoreApplication application(argc, argv);
        return publishMarket(QCoreApplication::arguments().mid(2));
    }
    Application application(argc, argv);
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(13);
    QApplication::setFont(font);
    const QStringList words = QApplication::arguments();
    return run(application, words.value(1), words.value(2, QStringLiteral("60")).toDouble(),
               words.value(3, QStringLiteral("16")).toInt(), words.value(4, QStringLiteral("20000")));
}
