#include "terminal/app/WallWindow.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/PastDaysWatch.h"
#include "terminal/app/StatusLine.h"
#include "terminal/app/TerminalServices.h"
#include "terminal/app/WindowColors.h"
#include "terminal/app/WindowSize.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr int kFormulaPanes = 2; ///< of each view
constexpr int kGap = 2; ///< pixels between the views

} // namespace

WallWindow::WallWindow(TerminalServices &services, int count, QWidget *parent)
    : QWidget(parent), mServices(services), mStatus(new StatusLine(this)),
      mHeartbeat(Heartbeat::kInterval, services.longestRest()) {
    setObjectName(QStringLiteral("wall_window"));
    setWindowTitle(tr("分时行情墙"));
    setAutoFillBackground(true);
    count = std::clamp(count, 1, kMostWallViews);
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    auto *grid = new QGridLayout;
    rows->addLayout(grid, 1);
    rows->addWidget(mStatus);
    grid->setSpacing(kGap);
    for (int i = 0; i < count; ++i) {
        auto *view = new ChartView(services.chartSources(), this);
        view->setFormulaPanes(kFormulaPanes);
        grid->addWidget(view, i / columns, i % columns);
        mViews.append(view);
    }
    onUiResourceChanged();
    onBeat();
    connect(&mHeartbeat, &Heartbeat::beat, this, &WallWindow::onBeat);
    new PastDaysWatch(
        mServices, mViews, [](const ChartView &) { return true; }, this);
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
        showLatest(*mViews[i], keys[i % keys.size()]);
    }
}

void WallWindow::showLatest(ChartView &view, const QString &key) {
    view.show(key, mServices.latestDayOf(key));
    mRunningDays[&view] = mServices.runningDayOf(key);
}

void WallWindow::onBeat() {
    const QString notice = mServices.standingNotice();
    mStatus->setVisible(!notice.isEmpty());
    mStatus->setTrouble(notice);
    for (ChartView *view : mViews) {
        const QString key = view->instrument();
        if (!key.isEmpty() && mServices.runningDayOf(key) != mRunningDays.value(view)) {
            mServices.historyCache().clear();
            showLatest(*view, key);
        }
    }
}

void WallWindow::onUiResourceChanged() {
    applyWindowColors(*this);
}

} // namespace terminal
