#include "terminal/app/ProgressTeller.h"

#include <QApplication>

#include <cstdio>
#include <unistd.h>

namespace terminal {
namespace {

constexpr int kUntold = 300; ///< milliseconds of work before anything is told

} // namespace

ProgressTeller::ProgressTeller(const QString &what, bool inDialog) : mWhat(what) {
    mSince.start();
    if (inDialog) {
        mDialog = std::make_unique<QProgressDialog>(what, QObject::tr("停止"), 0, 100);
        mDialog->setWindowTitle(QObject::tr("分时行情"));
        mDialog->setMinimumDuration(0);
        mDialog->setAutoReset(false);
    }
}

ProgressTeller::~ProgressTeller() {
    if (mToldPercent >= 0) {
        std::fputs("\r\033[K", stderr); // what follows has the line for itself
    }
}

bool ProgressTeller::operator()(int done, int total) {
    const bool goesOn = tell(done, total);
    if (mDialog && mDialog->isVisible()) {
        QApplication::processEvents();
    }
    return goesOn && !(mDialog && mDialog->wasCanceled());
}

bool ProgressTeller::tell(int done, int total) {
    if (mSince.elapsed() < kUntold) {
        return true;
    }
    const int percent = total > 0 ? static_cast<int>(100LL * done / total) : 0;
    if (mDialog) {
        mDialog->setValue(percent);
        return !mDialog->wasCanceled();
    }
    if (percent != mToldPercent && isatty(STDERR_FILENO)) {
        mToldPercent = percent;
        std::fprintf(stderr, "\r%s %d%%", mWhat.toUtf8().constData(), percent);
    }
    return true;
}

} // namespace terminal
