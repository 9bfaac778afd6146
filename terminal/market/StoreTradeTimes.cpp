#include "terminal/market/StoreTradeTimes.h"

#include "terminal/market/MarketSessions.h"

namespace terminal {

bool StoreTradeTimes::getTradeTime(const QString &market, const QString &code,
                                   QVector<QPair<int, int>> &sessions, int &count) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(market + code);
    if (!instrument || !instrument->ownSessions || instrument->sessions.isEmpty()) {
        return false;
    }
    sessions = instrument->sessions.table();
    count = instrument->sessions.count();
    return true;
}

bool StoreTradeTimes::hasNightQuoter(const QString &market, const QString &code) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *known = catalogue->find(market + code);
    const Instrument *instrument = known ? known : catalogue->find(exchangeOf(market) + code);
    return instrument && instrument->sessions.hasNight();
}

} // namespace terminal
