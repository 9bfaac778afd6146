#include "terminal/app/TerminalServices.h"

#include "terminal/formula/NativeFormulas.h"
#include "terminal/formula/RequestDays.h"
#include "terminal/market/Compositions.h"
#include "terminal/market/MarketDate.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace terminal {
namespace {

constexpr qint64 kHour = 3600 * 1000LL;
constexpr qint64 kShareDay =
    5 * kHour + kHour / 2 + 5 * 60 * 1000LL; ///< opening auction to the close, noon included

/// Times of the positions of the trading day of an instrument, a user-defined index or a portfolio. A night session that was not held keeps its positions, as it
/// does on the axis of a chart.
std::vector<qint64> dayPositions(CMarketStore &store, const QString &key, int day) {
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const Instrument *instrument = catalogue->find(key);
    const bool isComposite = catalogue->indexes.contains(key) || catalogue->portfolios.contains(key);
    if (!instrument && !isComposite) {
        return {};
    }
    const MarketCalendar calendar = catalogue->calendar(instrument ? instrument->market : QStringLiteral("SH"));
    const QDate date = dateOf(day);
    const QDate held = calendar.eveningBefore(date);
    const TradingSessions sessions = instrument ? instrument->sessions : compositeSessions(*catalogue, key);
    return sessions.times(date, held.isNull() ? calendar.previous(date) : held);
}

} // namespace

struct TerminalServices::Installations {
    explicit Installations(TerminalServices &s)
        : config(s.mConfig), ids(s.mIds), catalogue(s.mCatalogue), cache(s.mCache), strategies(s.mStrategies),
          trade(s.mTrade), enhance(s.mEnhance), formulas(*s.mFormulas), replay(*s.mReplay) {}

    Installation<TC::CConfigService> config;
    Installation<se::IdGenerator> ids;
    Installation<TC::CFormulaOperateManager> catalogue;
    Installation<TC::CMultiRequestDataManager> cache;
    Installation<TC::CStrategyTradeManager> strategies;
    Installation<TC::CLinkageManager> trade;
    Installation<TC::CEnhanceDrawManager> enhance;
    Installation<TC::CFormulaManager> formulas;
    Installation<TC::CReplayManager> replay;
};

std::unique_ptr<TerminalServices> TerminalServices::open(const TerminalSettings &settings, QString &error,
                                                         const Progress &progress) {
    std::unique_ptr<TerminalServices> services(new TerminalServices(settings));
    error = services->start(settings, progress);
    return error.isEmpty() ? std::move(services) : nullptr;
}

TerminalServices::TerminalServices(const TerminalSettings &settings) : mConfig(settings.config) {}

TerminalServices::~TerminalServices() {
    if (mExchange) {
        mExchange->stop();
    }
}

QString TerminalServices::start(const TerminalSettings &settings, const Progress &progress) {
    const QString folder = QFileInfo(settings.store).absolutePath();
    if (!QDir().mkpath(folder)) {
        return QStringLiteral("%1: the folder of the store cannot be made: give another place with --store")
            .arg(folder);
    }
    const QString failed = mStore.open(settings.store);
    if (!failed.isEmpty()) {
        return failed;
    }
    const qint64 start = settings.start ? *settings.start
                                        : marketStart(*mStore.catalogue(), QDateTime::currentMSecsSinceEpoch());
    mClock = std::make_unique<SimulatedClock>(start, settings.speed);
    mClockInstallation = std::make_unique<Installation<TC::CHostClock>>(*mClock);
    mClock->pause(); // until all is in place
    const QString unfilled = fillStore(mStore, start, progress);
    if (!unfilled.isEmpty()) {
        return unfilled;
    }
    mMarket = std::make_unique<MarketServices>(mStore);
    mExchange = std::make_unique<SimulatedExchange>(mStore, *mClock);
    mFeed = std::make_unique<CompositeFeed>(*mExchange, [this](const QString &key, int day) {
        return compositionOf(mStore, key, day, [](const QString &member, int date) {
            return TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose(member, date);
        });
    });
    mFormulas = std::make_unique<FormulaService>(
        *mFeed, makeNativeFormula, requestDayOf,
        [this](const QString &key, int day) { return dayPositions(mStore, key, day); });
    mFormulas->setScriptModels(ScriptModelSettings(), mMessages.sink());
    mFormulas->setHistorySource(&mHistory);
    mReplay = std::make_unique<ReplayService>(*mFeed, makeNativeFormula, requestDayOf);
    mInstallations = std::make_unique<Installations>(*this);
    mClock->resume();
    mExchange->start();
    return {};
}

InstrumentSearch TerminalServices::search() const {
    QVector<SearchEntry> entries;
    for (const Instrument &instrument : mStore.catalogue()->instruments) {
        entries.append({instrument.key(), instrument.code, instrument.name, instrument.initials});
    }
    return InstrumentSearch(entries);
}

TC::CInstrumentDetailPtr TerminalServices::detailOf(const QString &key) const {
    return TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail(key);
}

QVector<QDate> TerminalServices::daysOf(const QString &key) {
    QVector<QDate> dates;
    if (const Instrument *instrument = mStore.catalogue()->find(key)) {
        for (const int day : mStore.days(instrument->id)) {
            dates.append(dateOf(day));
        }
        const QDate running = runningDayOf(key);
        if (instrument->simulated && !dates.contains(running)) {
            dates.append(running);
        }
    }
    std::sort(dates.begin(), dates.end(), [](const QDate &a, const QDate &b) { return a > b; });
    return dates;
}

QDate TerminalServices::runningDayOf(const QString &key) const {
    const int day = mExchange->runningDay(key);
    return day == 0 ? QDate() : dateOf(day);
}

qint64 marketStart(const Catalogue &catalogue, qint64 now) {
    const qint64 auction = simulationStart(catalogue, now);
    return now > auction && now < auction + kShareDay ? now : auction + kHour;
}

QString defaultStorePath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/market.db");
}

QString defaultConfigPath() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/config.json");
}

} // namespace terminal
