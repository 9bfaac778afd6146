// What a wall of live views costs: processor time of the whole process and of the thread that draws, the longest that
// it is at work for one event, and memory. Offscreen, on 3840x2160, over a market of its own.
//
//     timeshare_wall_bench [seconds, 30] [views, 16] [pace, 1]

#include "bench/BenchTerminal.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/WallWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFont>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <functional>

#include <unistd.h>

namespace {

using namespace terminal;

constexpr QSize kScreen(3840, 2160);

/// Pages of memory that the process has, in MB.
double residentMegabytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// Measures how long the thread that draws is at work for one event; a repaint of all that has changed is one.
class Application : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        if (mDepth > 0) {
            return QApplication::notify(receiver, event);
        }
        QElapsedTimer time;
        time.start();
        ++mDepth;
        const bool answer = QApplication::notify(receiver, event);
        --mDepth;
        mLongest = std::max(mLongest, time.nsecsElapsed());
        ++mEvents;
        return answer;
    }
    void restart() { mLongest = mEvents = 0; }
    double longestMilliseconds() const { return double(mLongest) / 1e6; }
    qint64 events() const { return mEvents; }

private:
    int mDepth = 0;
    qint64 mLongest = 0;
    qint64 mEvents = 0;
};

/// Lets the event loop run for a time, or until a condition holds.
void runFor(int milliseconds, const std::function<bool()> &isDone = {}) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    QTimer look;
    if (isDone) {
        QObject::connect(&look, &QTimer::timeout, &loop, [&] {
            if (isDone()) {
                loop.quit();
            }
        });
        look.start(10);
    }
    loop.exec();
}

bool isComplete(const WallWindow &wall) {
    return std::all_of(wall.views().begin(), wall.views().end(),
                       [](const ChartView *view) { return view->isComplete(); });
}

void measure(Application &application, const WallWindow &wall, int forSeconds, double pace) {
    qint64 changes = 0;
    for (const ChartView *view : wall.views()) {
        QObject::connect(view, &ChartView::changed, &application, [&changes] { ++changes; });
    }
    application.restart();
    const double all = secondsOf(CLOCK_PROCESS_CPUTIME_ID);
    const double drawing = secondsOf(CLOCK_THREAD_CPUTIME_ID);
    const double start = secondsOf(CLOCK_MONOTONIC);
    runFor(forSeconds * 1000);
    const double time = secondsOf(CLOCK_MONOTONIC) - start;
    std::printf("%d views, %.1f s at pace %g: %.2f %% of one core for the thread that draws, %.2f %% in all; "
                "%.1f prices "
                "and %.1f events a second, %.1f ms for one at most\n",
                wall.views().size(), time, pace, (secondsOf(CLOCK_THREAD_CPUTIME_ID) - drawing) / time * 100.0,
                (secondsOf(CLOCK_PROCESS_CPUTIME_ID) - all) / time * 100.0, double(changes) / time,
                double(application.events()) / time, application.longestMilliseconds());
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "Asia/Shanghai");
    Application application(argc, argv);
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(13);
    QApplication::setFont(font);
    const int forSeconds = argc > 1 ? std::atoi(argv[1]) : 30;
    const int views = argc > 2 ? std::atoi(argv[2]) : 16;
    const double pace = argc > 3 ? std::atof(argv[3]) : 1.0;

    const QTemporaryDir folder;
    const std::unique_ptr<TerminalServices> services = openBenchTerminal(folder, pace);
    if (!services) {
        return 1;
    }
    const double before = residentMegabytes();
    const double drawing = secondsOf(CLOCK_THREAD_CPUTIME_ID);
    WallWindow wall(*services, views);
    wall.resize(kScreen);
    wall.show();
    wall.showFrom(QStringLiteral("SH600000"));
    runFor(60000, [&] { return isComplete(wall); });
    if (!isComplete(wall)) {
        std::fprintf(stderr, "the views are not complete after a minute\n");
        return 1;
    }
    runFor(500); // the last of them is painted
    const double pictures =
        2.0 * kScreen.width() * kScreen.height() * 4.0 / 1e6; // of the panes, and of the window
    std::printf("first pictures: %.0f ms of processor time of the thread that draws; %.1f MB a view beside its "
                "pixmaps\n",
                (secondsOf(CLOCK_THREAD_CPUTIME_ID) - drawing) * 1e3,
                (residentMegabytes() - before - pictures) / wall.views().size());
    measure(application, wall, forSeconds, pace);
    return 0;
}
