#include "terminal/app/WallWindow.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/PastDaysWatch.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/WindowColors.h"
#include "terminal/app/WindowSize.h"

#include <QGridLayout>

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr int kFormulaPanes = 2; ///< of each view
constexpr int kGap = 2; ///< pixels between the views
constexpr int kLook = 1000; ///< milliseconds

} // namespace

WallWindow::WallWindow(TerminalServices &services, int count, QWidget *parent)
    : QWidget(parent), mServices(services) {
    setObjectName(QStringLiteral("wall_window"));
    setWindowTitle(tr("分时行情墙"));
    setAutoFillBackground(true);
    count = std::clamp(count, 1, kMostWallViews);
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(kGap);
    for (int i = 0; i < count; ++i) {
        auto *view = new ChartView(services.chartSources(), this);
        view->setFormulaPanes(kFormulaPanes);
        grid->addWidget(view, i / columns, i % columns);
        mViews.append(view);
    }
    onUiResourceChanged();
    connect(&mSecond, &QTimer::timeout, this, &WallWindow::followDay);
    mSecond.start(kLook);
    new PastDaysWatch(mServices, mViews, this);
}

QStringList WallWindow::instrumentsFrom(const QString &first) const {
    QStringList keys;
    for (const Instrument &instrument : mServices.store().catalogue()->instruments) {
        if (instrument.simulated) {
            keys.append(instrument.key());
        }
    }
    if (!keys.contains(first)) {
        keys.prepend(first);
    }
    std::rotate(keys.begin(), std::find(keys.begin(), keys.end(), first), keys.end());
    return keys;
}

void WallWindow::showFrom(const QString &first) {
    const QStringList keys = instrumentsFrom(first);
    mServices.historyCache().clear();
    for (int i = 0; i < mViews.size(); ++i) {
        showLive(*mViews[i], keys[i % keys.size()]);
    }
}

/// The running day is shown live; where the exchange does not run the instrument, its newest stored one.
void WallWindow::showLive(ChartView &view, const QString &key) {
    const QDate running = mServices.runningDayOf(key);
    const QVector<QDate> known = mServices.daysOf(key);
    view.show(key, known.contains(running) ? QDate() : known.value(0));
    mRunningDays[&view] = running;
}

void WallWindow::followDay() {
    for (ChartView *view : mViews) {
        const QString key = view->instrument();
        if (!key.isEmpty() && mServices.runningDayOf(key) != mRunningDays.value(view)) {
            mServices.historyCache().clear();
            showLive(*view, key);
        }
    }
}

void WallWindow::onUiResourceChanged() {
    applyWindowColors(*this);
}

} // namespace terminal
