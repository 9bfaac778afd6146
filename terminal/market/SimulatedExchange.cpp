#include "terminal/market/SimulatedExchange.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/SimulatedDay.h"
#include "terminal/market/SimulatedRandom.h"
#include "terminal/market/SimulatedTicks.h"
#include "terminal/threads/BehindWindow.h"

#include <QtDebug>

#include <algorithm>
#include <iterator>
#include <vector>

namespace terminal {
namespace {

constexpr int kAuction = 565; ///< 09:25, when the opening auction is matched

quint64 tickSeed(const QString &key) {
    return SimulatedRandom::mix(kMarketSeed, key);
}

/// The bars of a day up to the close, or those after it.
MinuteBars partOf(const MinuteBars &bars, const Instrument &instrument, int day, bool afterHours) {
    const qint64 close = timeOf(dateOf(day), kStockClose);
    MinuteBars wanted;
    std::copy_if(bars.begin(), bars.end(), std::back_inserter(wanted), [&](const MinuteBar &bar) {
        return (instrument.hasAfterHours() && bar.time > close) == afterHours;
    });
    return wanted;
}

int runningDayOf(const Catalogue &catalogue, const QString &market, qint64 now) {
    return dayOf(catalogue.calendar(market).dayAt(now, catalogue.nightMarkets.contains(market)));
}

} // namespace

/// A listener and how far it has been told.
struct SimulatedExchange::Subscriber {
    QString key;
    int day = 0;
    WholeDay bars;
    qint64 told = 0; ///< market time
    std::recursive_mutex calling; ///< held while the listener runs; guards the following
    Listener listener;
    bool active = true;
    bool running = false;
};

SimulatedExchange::SimulatedExchange(CMarketStore &store, const SimulatedClock &clock)
    : mStore(store), mClock(clock), mListening(store.catalogueChanges().add([this] { mAlarm.nudge(); })) {}

SimulatedExchange::~SimulatedExchange() {
    mStore.catalogueChanges().remove(mListening);
    stop();
}

void SimulatedExchange::start() {
    if (mThread.joinable()) {
        return;
    }
    mStopping = false;
    mThread = std::thread([this] { run(); });
}

void SimulatedExchange::stop() {
    if (!mThread.joinable()) {
        return;
    }
    mStopping = true;
    mAlarm.ring();
    mThread.join();
}

void SimulatedExchange::run() {
    leaveProcessor();
    while (!mStopping) {
        const qint64 due = advance();
        mAlarm.waitUntil(due);
    }
}

qint64 SimulatedExchange::advance() {
    std::lock_guard<std::mutex> one(mAdvancing);
    const bool areDaysKept = keepFinishedDays();
    const qint64 now = mClock.now();
    qint64 due = areDaysKept ? MarketCalendar::nextChangeAfter(now) : now;
    std::vector<std::shared_ptr<Subscriber>> subscribers;
    {
        std::lock_guard<std::mutex> hold(mLock);
        for (const auto &entry : mSubscribers) {
            subscribers.push_back(entry.second);
        }
    }
    for (const std::shared_ptr<Subscriber> &subscriber : subscribers) {
        due = deliver(*subscriber, now, due);
    }
    return due;
}

/// When a market has gone on to its next day, the one before becomes a day of the store; as soon as nobody else writes:
/// the market does not wait for an import. Answers whether nothing is left to be kept later.
bool SimulatedExchange::keepFinishedDays() {
    if (mStore.isBeingWritten()) {
        return false;
    }
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const qint64 now = mClock.now();
    bool changed = false;
    for (auto calendar = catalogue->calendars.begin(); calendar != catalogue->calendars.end(); ++calendar) {
        const int day = runningDayOf(*catalogue, calendar.key(), now);
        int &known = mDays[calendar.key()];
        changed = changed || (known != 0 && known != day);
        known = day;
    }
    if (changed) {
        const QString trouble = fillStore(mStore, now);
        if (!trouble.isEmpty()) {
            qWarning("%s", qPrintable(trouble));
        }
    }
    return true;
}

/// Answers when the subscriber is told next, or `due` when that is sooner.
qint64 SimulatedExchange::deliver(Subscriber &subscriber, qint64 now, qint64 due) {
    std::lock_guard<std::recursive_mutex> hold(subscriber.calling);
    if (subscriber.running) {
        return due;
    }
    subscriber.running = true;
    for (const SimulatedTick &tick :
         ticksBetween(*subscriber.bars, subscriber.told, now, tickSeed(subscriber.key))) {
        if (!subscriber.active) {
            break;
        }
        subscriber.listener({subscriber.key, subscriber.day, tick.bar});
    }
    subscriber.told = now;
    subscriber.running = false;
    if (!subscriber.active) {
        subscriber.listener = nullptr;
    }
    return std::min(due, nextTickAfter(*subscriber.bars, now, tickSeed(subscriber.key)).value_or(due));
}

void SimulatedExchange::forgetRunningDays() {
    std::lock_guard<std::mutex> hold(mLock);
    mRunning.clear();
}

int SimulatedExchange::runningDay(const QString &key) const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    return instrument ? runningDayOf(*catalogue, instrument->market, mClock.now()) : 0;
}

/// Whether the exchange itself makes the bars of a day: it is the current one, and nothing was imported for it.
bool SimulatedExchange::isRunning(const Instrument &instrument, int day, int runningDay) {
    if (mIsClosed || !instrument.simulated || day != runningDay) {
        return false;
    }
    const std::optional<DaySummary> stored = mStore.summary(instrument.id, day);
    return !stored || stored->source == BarSource::Simulated;
}

/// The bars of a whole simulated day, made from the close before it.
MinuteBars SimulatedExchange::simulatedDay(const Instrument &instrument, int day) {
    const SimulatedInstrument *simulated = findSimulated(instrument.key());
    if (!simulated) {
        return {};
    }
    const std::optional<DaySummary> before = mStore.summaryBefore(instrument.id, day);
    const double close = before && before->close > 0.0 ? before->close : simulated->basePrice;
    const QDate date = dateOf(day);
    const MarketCalendar calendar = mStore.catalogue()->calendar(instrument.market);
    return simulateDay(*simulated, {date, calendar.eveningBefore(date), close, kMarketSeed});
}

/// All bars that the running day is going to have.
SimulatedExchange::WholeDay SimulatedExchange::runningBars(const Instrument &instrument, int day, Part part) {
    const QString name =
        instrument.key() + (part == Part::Ordinary ? QString() : QStringLiteral(" after hours"));
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mRunning.constFind(name);
        if (found != mRunning.constEnd() && found->first == day) {
            return found->second;
        }
    }
    const auto bars = std::make_shared<MinuteBars>(
        partOf(simulatedDay(instrument, day), instrument, day, part == Part::AfterHours));
    std::lock_guard<std::mutex> hold(mLock);
    mRunning[name] = {day, bars};
    return bars;
}

MinuteBars SimulatedExchange::barsOf(const QString &key, int day, Part part, qint64 now) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument) {
        return {};
    }
    const int running = runningDayOf(*catalogue, instrument->market, now);
    if (isRunning(*instrument, day, running)) {
        return barsAt(*runningBars(*instrument, day, part), now, tickSeed(key));
    }
    const std::optional<DaySummary> stored = mStore.summary(instrument->id, day);
    const int firstUnknown =
        mIsClosed ? running : running + 1; // the store has the running day made up in advance
    if (!stored || (stored->source == BarSource::Simulated && day >= firstUnknown)) {
        return {};
    }
    return partOf(mStore.bars(instrument->id, day), *instrument, day, part == Part::AfterHours);
}

Ticks SimulatedExchange::trades(const QString &key, int day) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument || !instrument->simulated) {
        return {};
    }
    const qint64 now = mClock.now();
    const int running = runningDayOf(*catalogue, instrument->market, now);
    MinuteBars bars;
    if (isRunning(*instrument, day, running)) {
        bars = *runningBars(*instrument, day, Part::Ordinary);
        const WholeDay after = runningBars(*instrument, day, Part::AfterHours);
        bars.insert(bars.end(), after->begin(), after->end());
    } else if (day < running) {
        const std::optional<DaySummary> stored = mStore.summary(instrument->id, day);
        if (stored && stored->source == BarSource::Simulated) {
            bars = mStore.bars(instrument->id, day);
        }
    }
    return tradesUntil(bars, now, tickSeed(key));
}

MinuteBars SimulatedExchange::dayBars(const QString &key, int day) {
    return barsOf(key, day, Part::Ordinary, mClock.now());
}

MinuteBars SimulatedExchange::afterHoursBars(const QString &key, int day) {
    return barsOf(key, day, Part::AfterHours, mClock.now());
}

MarketFeed::Subscription SimulatedExchange::subscribe(const QString &key, int day, Listener listener) {
    Subscription subscription;
    const qint64 now = mClock.now();
    subscription.bars = barsOf(key, day, Part::Ordinary, now);
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument || !listener ||
        !isRunning(*instrument, day, runningDayOf(*catalogue, instrument->market, now))) {
        return subscription;
    }
    auto subscriber = std::make_shared<Subscriber>();
    subscriber->key = key;
    subscriber->day = day;
    subscriber->bars = runningBars(*instrument, day, Part::Ordinary);
    subscriber->told = now;
    subscriber->listener = std::move(listener);
    {
        std::lock_guard<std::mutex> hold(mLock);
        subscription.id = ++mLastId;
        mSubscribers[subscription.id] = subscriber;
    }
    mAlarm.nudge();
    return subscription;
}

void SimulatedExchange::unsubscribe(int id) {
    std::shared_ptr<Subscriber> subscriber;
    {
        std::lock_guard<std::mutex> hold(mLock);
        const auto found = mSubscribers.find(id);
        if (found == mSubscribers.end()) {
            return;
        }
        subscriber = found->second;
        mSubscribers.erase(found);
    }
    std::lock_guard<std::recursive_mutex> wait(subscriber->calling);
    subscriber->active = false;
    if (!subscriber->running) {
        subscriber->listener = nullptr;
    }
}

qint64 simulationStart(const Catalogue &catalogue, qint64 now) {
    const MarketCalendar calendar = catalogue.calendar(QStringLiteral("SH"));
    return timeOf(calendar.dayAt(now, false), kAuction);
}

} // namespace terminal
