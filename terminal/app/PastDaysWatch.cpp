#include "terminal/app/PastDaysWatch.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"

#include <utility>

namespace terminal {

PastDaysWatch::PastDaysWatch(TerminalServices &services, QVector<ChartView *> views,
                             FollowsLatest followsLatest, QObject *parent)
    : QObject(parent), mServices(services), mViews(std::move(views)), mFollowsLatest(std::move(followsLatest)) {
    mServices.pastDays().setListener([this](const QString &key, bool hasDays) { onDays(key, hasDays); });
}

PastDaysWatch::~PastDaysWatch() {
    mServices.pastDays().setListener({});
}

void PastDaysWatch::onDays(const QString &key, bool hasDays) {
    if (key.isEmpty()) {
        Q_EMIT instrumentsCame();
        return;
    }
    for (ChartView *view : mViews) {
        if (partsOf(*mServices.store().catalogue(), view->instrument()).contains(key)) {
            showDays(*view, hasDays);
            Q_EMIT daysChanged();
        }
    }
}

void PastDaysWatch::showDays(ChartView &view, bool hasDays) {
    if (view.isReplay()) {
        return;
    }
    const QDate shown = view.isPastDay() ? view.day() : QDate();
    const QDate day = mFollowsLatest(view) ? mServices.latestDayOf(view.instrument()) : shown;
    if (day != shown || hasDays) {
        mServices.historyCache().clear();
        view.show(QString(view.instrument()), day);
    }
}

} // namespace terminal
