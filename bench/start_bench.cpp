// The terminal, which tells when its window and its first complete picture are on the screen, and ends then.
//
//     START_BEGUN=SECONDS timeshare_start_bench [OPTIONS OF THE TERMINAL]
//
// The line that it prints has, in milliseconds, the time since START_BEGUN of the steady clock and the processor time since the
// beginning of the process: of the window's first frame, then of the first with a complete chart. It ends START_STAY seconds after
// that, 0 when nothing is said. See start.py.

#include "terminal/app/ChartView.h"
#include "terminal/app/Program.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

double secondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Sees every frame before it is drawn, and once more after that.
class FrameWatch : public QObject {
public:
    explicit FrameWatch(QObject *application) : QObject(application) { application->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() == QEvent::UpdateRequest) {
            mIsComplete = isChartComplete();
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        }
        return false;
    }
    bool event(QEvent *event) override {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        if (!mIsWindowTold) {
            mIsWindowTold = true;
            tell();
        }
        if (mIsComplete && !mIsOver) {
            mIsOver = true;
            tell();
            // A store that is not closed is looked over by the next start.
            QTimer::singleShot(qEnvironmentVariableIntValue("START_STAY") * 1000,
                               [] { QCoreApplication::quit(); });
        }
        return true;
    }

private:
    static bool isChartComplete() {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            for (const auto *view : window->findChildren<terminal::ChartView *>()) {
                if (window->isVisible() && view->isComplete()) {
                    return true;
                }
            }
        }
        return false;
    }
    static void tell() {
        const double begun = std::atof(std::getenv("START_BEGUN"));
        std::printf("%.1f %.1f ", 1e3 * (secondsOf(CLOCK_MONOTONIC) - begun),
                    1e3 * secondsOf(CLOCK_PROCESS_CPUTIME_ID));
    }

    bool mIsOver = false;
    bool mIsWindowTold = false;
    bool mIsComplete = false;
};

void watchFrames() {
    new FrameWatch(QCoreApplication::instance());
}
Q_COREAPP_STARTUP_FUNCTION(watchFrames)

} // namespace

int main(int argc, char **argv) {
    return terminal::runTerminal(argc, argv);
}
