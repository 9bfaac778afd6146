#include "terminal/app/PastDaysWatch.h"

#include "terminal/app/ChartView.h"
#include "terminal/app/TerminalServices.h"

#include <utility>

namespace terminal {

PastDaysWatch::PastDaysWatch(TerminalServices &services, QVector<ChartView *> views, QObject *parent)
    : QObject(parent), mServices(services), mViews(std::move(views)) {
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
        if (!partsOf(*mServices.store().catalogue(), view->instrument()).contains(key)) {
            continue;
        }
        if (hasDays && !view->isReplay()) {
            mServices.historyCache().clear();
            view->reload();
        }
        Q_EMIT daysChanged();
    }
}

} // namespace terminal
