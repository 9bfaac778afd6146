#include "terminal/market/Compositions.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"
#include "terminal/market/SimulatedInstruments.h"

#include <algorithm>
#include <cmath>

namespace terminal {
namespace {

constexpr double kDefaultBase = 100.0;
constexpr int kLongestChain = 2500; ///< trading days, about ten years

/// Money of one contract at a price of 1: that of the product.
double multiplierOf(const Instrument &instrument) {
    if (instrument.kind != InstrumentKind::Future) {
        return 1.0;
    }
    const QVector<SimulatedInstrument> &known = simulatedInstruments();
    const auto same = std::find_if(known.begin(), known.end(), [&instrument](const SimulatedInstrument &other) {
        return other.instrument.kind == InstrumentKind::Future &&
               other.instrument.product == instrument.product;
    });
    return same == known.end() ? 1.0 : same->multiplier;
}

double closeOr0(double close) {
    return std::isfinite(close) && close > 0.0 && close < TC::kUnsetValue ? close : 0.0;
}

/// The mean over the members of a finished day's close against the close before it; 1 when none is known.
double dayFactor(CMarketStore &store, const Catalogue &catalogue, const UserIndex &index, int day,
                 const PreviousCloseOf &previousClose) {
    double sum = 0.0;
    int count = 0;
    for (const QString &key : index.detail.mMembers) {
        const Instrument *member = catalogue.find(key);
        const double before = member ? closeOr0(previousClose(key, day)) : 0.0;
        if (before <= 0.0) {
            continue;
        }
        const std::optional<DaySummary> summary = store.summary(member->id, day);
        sum += summary ? summary->close / before : 1.0;
        ++count;
    }
    return count > 0 ? sum / count : 1.0;
}

double levelBefore(CMarketStore &store, const Catalogue &catalogue, const UserIndex &index, int day,
                   const PreviousCloseOf &previousClose) {
    double level = index.detail.mBaseValue > 0.0 ? index.detail.mBaseValue : kDefaultBase;
    if (index.detail.mStartTime <= 0) {
        return level;
    }
    const MarketCalendar calendar = catalogue.calendar(QStringLiteral("SH"));
    const QDate start =
        std::max(dateAt(index.detail.mStartTime), calendar.shifted(dateOf(day), -kLongestChain));
    for (QDate date = calendar.isTradingDay(start) ? start : calendar.next(start); date < dateOf(day);
         date = calendar.next(date)) {
        level *= dayFactor(store, catalogue, index, dayOf(date), previousClose);
    }
    return level;
}

std::vector<CompositeMember> indexMembers(CMarketStore &store, const Catalogue &catalogue,
                                          const UserIndex &index, int day,
                                          const PreviousCloseOf &previousClose) {
    std::vector<CompositeMember> members;
    for (const QString &key : index.detail.mMembers) {
        const double before = catalogue.find(key) ? closeOr0(previousClose(key, day)) : 0.0;
        if (before > 0.0) {
            members.push_back({key, 0.0, before});
        }
    }
    const double share =
        levelBefore(store, catalogue, index, day, previousClose) / std::max<size_t>(1, members.size());
    for (CompositeMember &member : members) {
        member.weight = share / member.previousClose;
    }
    return members;
}

std::vector<CompositeMember> portfolioMembers(const Catalogue &catalogue, const Portfolio &portfolio, int day,
                                              const PreviousCloseOf &previousClose) {
    std::vector<CompositeMember> members;
    for (const PortfolioPosition &position : portfolio.positions) {
        if (const Instrument *instrument = catalogue.find(position.key)) {
            members.push_back({position.key, position.quantity * multiplierOf(*instrument),
                               closeOr0(previousClose(position.key, day))});
        }
    }
    return members;
}

} // namespace

std::optional<std::vector<CompositeMember>> compositionOf(CMarketStore &store, const QString &key, int day,
                                                          const PreviousCloseOf &previousClose) {
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const auto index = catalogue->indexes.constFind(key);
    if (index != catalogue->indexes.constEnd()) {
        return indexMembers(store, *catalogue, *index, day, previousClose);
    }
    const auto portfolio = catalogue->portfolios.constFind(key);
    if (portfolio != catalogue->portfolios.constEnd()) {
        return portfolioMembers(*catalogue, *portfolio, day, previousClose);
    }
    return std::nullopt;
}

const Instrument *axisFutureOf(const Catalogue &catalogue, const QString &key) {
    const Instrument *last = nullptr;
    for (const PortfolioPosition &position : catalogue.portfolios.value(key).positions) {
        const Instrument *instrument = catalogue.find(position.key);
        if (instrument && tellsPortfolioAxis(instrument->market)) {
            last = instrument;
        }
    }
    return last;
}

DaySessions compositeSessions(const Catalogue &catalogue, const QString &key) {
    const Instrument *future = axisFutureOf(catalogue, key);
    return future ? portfolioSessions(future->market, future->sessions.hasNight())
                  : marketSessions({QStringLiteral("SH"), QString(), QString(), {}});
}

} // namespace terminal
