#include "terminal/market/StoreTradeTimes.h"

#include "terminal/market/MarketSessions.h"

namespace terminal {

bool StoreTradeTimes::getTradeTime(const QString &market, const QString &code,
                                   QVector<QPair<int, int>> &sessions, int &count) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(market + code);
    const DaySessions ofDay = sessionsOfDay(market + code);
    if (!instrument || (!instrument->ownSessions && ofDay.isEmpty()) || instrument->sessions.isEmpty()) {
        return false;
    }
    const DaySessions &shown = ofDay.isEmpty() ? instrument->sessions : ofDay;
    sessions = shown.table();
    count = shown.count();
    return true;
}

void StoreTradeTimes::setAxisDay(const QString &key, int day) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    const DaySessions kept = instrument ? mStore.daySessions(instrument->id, day) : DaySessions();
    std::lock_guard<std::mutex> hold(mLock);
    if (kept.isEmpty()) {
        mOfDays.remove(key);
    } else {
        mOfDays[key] = kept;
    }
}

DaySessions StoreTradeTimes::sessionsOfDay(const QString &key) const {
    std::lock_guard<std::mutex> hold(mLock);
    return mOfDays.value(key);
}

DaySessions StoreTradeTimes::axisSessions(const QString &key) const {
    const DaySessions ofDay = sessionsOfDay(key);
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    return !ofDay.isEmpty() || !instrument ? ofDay : instrument->sessions;
}

bool StoreTradeTimes::hasNightQuoter(const QString &market, const QString &code) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *known = catalogue->find(market + code);
    const Instrument *instrument = known ? known : catalogue->find(exchangeOf(market) + code);
    return instrument && instrument->sessions.hasNight();
}

} // namespace terminal
