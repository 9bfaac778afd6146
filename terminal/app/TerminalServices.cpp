#include "terminal/app/TerminalServices.h"

#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Wording.h"
#include "terminal/app/DefaultPaths.h"
#include "terminal/formula/HostFormulaInputs.h"
#include "terminal/formula/RequestDays.h"
#include "terminal/market/Compositions.h"
#include "terminal/market/MarketDate.h"
#include "terminal/market/PreviousClose.h"
#include "terminal/market/TradedSpan.h"
#include "terminal/market/TransactionTape.h"
#include "terminal/threads/ThreadStart.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <system_error>

namespace terminal {
namespace {

constexpr qint64 kAroundTrading = 10 * 60 * 1000LL; ///< milliseconds before and after a minute of trading
constexpr int kFinestLevel = 3; ///< of sectors
constexpr qint64 kHour = 3600 * 1000LL;
constexpr int kFormulaWorkers = 2; ///< for formulas that are quick
constexpr qint64 kShareDay =
    5 * kHour + kHour / 2 + 5 * 60 * 1000LL; ///< opening auction to the close, noon included

/// Times of the positions of the trading day of an instrument, a user-defined index or a portfolio. A night session that was not held keeps its positions, as it
/// does on the axis of a chart.
std::vector<qint64> dayPositions(const CMarketStore &store, const StoreTradeTimes &times, const QString &key,
                                 int day) {
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const Instrument *instrument = catalogue->find(key);
    const bool isComposite = catalogue->indexes.contains(key) || catalogue->portfolios.contains(key);
    if (!instrument && !isComposite) {
        return {};
    }
    const Instrument *axis = instrument ? instrument : axisFutureOf(*catalogue, key);
    const MarketCalendar calendar = catalogue->calendar(axis ? axis->market : QStringLiteral("SH"));
    const QDate date = dateOf(day);
    const QDate held = calendar.eveningBefore(date);
    const DaySessions sessions = instrument ? times.axisSessions(key) : compositeSessions(*catalogue, key);
    return sessions.times(date, held.isNull() ? calendar.previous(date) : held);
}

QVector<SearchEntry> instrumentEntries(const Catalogue &catalogue) {
    QVector<SearchEntry> entries;
    for (const Instrument &instrument : catalogue.instruments) {
        entries.append({instrument.key(), instrument.code, instrument.name, instrument.initials});
    }
    return entries;
}

QVector<SearchEntry> indexEntries(const Catalogue &catalogue) {
    QVector<SearchEntry> entries;
    for (const UserIndex &index : catalogue.indexes) {
        entries.append({index.key, index.key, index.detail.mCode, {}});
    }
    return entries;
}

QVector<SearchEntry> portfolioEntries(const Catalogue &catalogue) {
    QVector<SearchEntry> entries;
    for (const Portfolio &portfolio : catalogue.portfolios) {
        entries.append({portfolio.key(), portfolio.key(), portfolio.name, {}});
    }
    return entries;
}

QVector<SearchEntry> formulaEntries(const TC::CFormulaCatalogDetail &folder) {
    QVector<SearchEntry> entries;
    for (const TC::CFormulaCatalogDetailPtr &node : folder.children()) {
        if (node->isFolder()) {
            entries += formulaEntries(*node);
        } else {
            entries.append({{}, node->catalogName(), {}, {}});
        }
    }
    return entries;
}

} // namespace

struct TerminalServices::Installations {
    explicit Installations(TerminalServices &s)
        : config(s.mConfig), ids(s.mIndependent.ids), catalogue(s.mCatalogue), cache(s.mCache),
          strategies(s.mIndependent.strategies), trade(*s.mTrade), files(s.mFiles),
          enhance(s.mIndependent.enhance), smartKeys(s.mSmartKeys), templates(s.mTemplates),
          selfStocks(s.mSelfStocks), windowRequests(s.mIndependent.windowRequests), formulas(*s.mFormulas),
          replay(*s.mReplay) {}

    Installation<TC::CConfigService> config;
    Installation<se::IdGenerator> ids;
    Installation<TC::CFormulaOperateManager> catalogue;
    Installation<TC::CMultiRequestDataManager> cache;
    Installation<TC::CStrategyTradeManager> strategies;
    Installation<TC::CLinkageManager> trade;
    Installation<TC::CFileClient> files;
    Installation<TC::CEnhanceDrawManager> enhance;
    Installation<TC::CSmartKeyManager> smartKeys;
    Installation<TC::CIndexTemplateManager> templates;
    Installation<TC::CSelfStockManager> selfStocks;
    Installation<TC::CIndexMainWindowHelper> windowRequests;
    Installation<TC::CFormulaManager> formulas;
    Installation<TC::CReplayManager> replay;
};

std::unique_ptr<TerminalServices> TerminalServices::open(const TerminalSettings &settings, QString &error,
                                                         const Progress &progress) {
    try {
        std::unique_ptr<TerminalServices> services(new TerminalServices(settings));
        error = services->start(settings, progress);
        return error.isEmpty() ? std::move(services) : nullptr;
    } catch (const std::system_error &) { // a service has not got its thread
        error = noThreadText();
        return nullptr;
    }
}

TerminalServices::TerminalServices(const TerminalSettings &settings)
    : mConfig(settings.config), mCatalogue(mConfig, settings.formulas, settings.scripts, mMessages.sink()) {
    mCatalogue.setChangeListener([this](const QString &) {
        mCache.clear();
        refreshSmartKeys();
    });
}

TerminalServices::~TerminalServices() {
    mFiles.stop(); // what it reads goes to the trade service
    mPastDays.stop();
    if (mTrade) {
        mTrade->stop();
    }
    if (mRunning) {
        mRunning->stop();
    }
}

/// With a server of history the store holds its days, and no made-up ones beside them.
QString TerminalServices::openStore(const TerminalSettings &settings, const QString &history) {
    const QString own = history.isEmpty() ? defaultStorePath() : defaultHistoryStorePath();
    const QString path = settings.store.isEmpty() ? own : settings.store;
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        return QStringLiteral("%1: the folder of the store cannot be made: give another place with --store")
            .arg(folder);
    }
    const QString failed = mStore.open(path);
    if (!failed.isEmpty() || history.isEmpty()) {
        return failed;
    }
    return mPastDays.follow(history, [this](const QString &reason) {
        mMessages.sink()({QObject::tr("历史服务器"), 0, reason});
    });
}

/// The store and the running market.
QString TerminalServices::openMarket(const TerminalSettings &settings) {
    const QString history =
        settings.history.isEmpty() ? mConfig.value(QStringLiteral("history")) : settings.history;
    const QString failed = openStore(settings, history);
    if (!failed.isEmpty()) {
        return failed;
    }
    const QString server = settings.feed.isEmpty() ? mConfig.value(QStringLiteral("feed")) : settings.feed;
    const bool isServed = hasServedDays(mStore);
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool isMarketNow = isServed && server.isEmpty(); // with past days alone it is as late as it is
    const qint64 start = settings.start.value_or(isMarketNow ? now : marketStart(*mStore.catalogue(), now));
    mClock = std::make_unique<SimulatedClock>(start, settings.speed);
    mClockInstallation = std::make_unique<Installation<TC::CHostClock>>(*mClock);
    mClock->pause(); // until all is in place
    mRunning = std::make_unique<RunningMarket>(mStore, *mClock);
    if (isServed) {
        mRunning->exchange().close(); // nothing is made up beside days of a server
    }
    const QString wrong = server.isEmpty() ? QString() : mRunning->follow(server);
    return wrong.isEmpty() ? QString() : QStringLiteral("feed: %1").arg(wrong);
}

QString TerminalServices::fill(const Progress &progress) {
    const QString failed = fillStore(mStore, mClock->now(), progress);
    if (!failed.isEmpty() || !mMarket) {
        return failed;
    }
    mRunning->exchange().forgetRunningDays(); // they went on from days that were lacking
    return mStore.reload(); // so did what is known of the instruments
}

QString TerminalServices::start(const TerminalSettings &settings, const Progress &progress) {
    QString failed = openMarket(settings);
    const bool isFillLeft = failed.isEmpty() && settings.leavesFill && lacksDays(mStore, mClock->now());
    if (failed.isEmpty()) {
        failed = isFillLeft ? putInstruments(mStore) : fill(progress);
    }
    if (!failed.isEmpty()) {
        return failed;
    }
    mMarket = std::make_unique<MarketServices>(mStore);
    mFeed = std::make_unique<CompositeFeed>(mRunning->feed(), [this](const QString &key, int day) {
        return compositionOf(mStore, key, day, [](const QString &member, int date) {
            return TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose(member, date);
        });
    });
    const FormulaProgramMaker maker = luaFormulaMaker(
        [this](const TC::CFormulaParam &param) { return mCatalogue.fileOf(param); },
        [this](const TC::CFormulaParam &param) { return hostFormulaInputs(param, *mStore.catalogue()); },
        mMessages.sink());
    mFormulas = std::make_unique<FormulaService>(
        *mFeed, maker, [this](const TC::CFormulaParam &param) { return requestedDay(param); },
        [this](const QString &key, int day) { return dayPositions(mStore, mMarket->times(), key, day); },
        kFormulaWorkers);
    mFormulas->setLanes([this](const TC::CFormulaParam &param) { return mCatalogue.laneOf(param); });
    mFormulas->setScriptModels(ScriptModelSettings(), mMessages.sink());
    mFormulas->setHistorySource(&mPastDays.source());
    mPastDays.start();
    mFormulas->setHistoryCache(&mCache);
    mFormulas->setTransactions([this, tape = std::make_shared<TransactionTape>(mStore, exchange())](
                                   const QString &key, qint64 from, qint64 to, qint64 limit) {
        const TradedSpan span = tradedSpan(*mStore.catalogue(), key, from, to, mClock->now());
        return tape->between(key, span.start, span.end, limit);
    });
    mReplay = std::make_unique<ReplayService>(mFormulas->tools(), requestDayOf, &mCache);
    mTrade = std::make_unique<TradeService>(mStore, *mFeed, *mClock);
    mTrade->importNotes().setLineSource([this] { return mFiles.line(); });
    mInstallations = std::make_unique<Installations>(*this);
    refreshSmartKeys();
    mRunning->setBehindCheck([this] { return mFormulas->pendingResults() > 0; });
    if (!isFillLeft) {
        begin();
    }
    return {};
}

void TerminalServices::begin() {
    mTrade->advance(); // the trades of the day so far are there from the start
    mRunning->start();
    mTrade->start();
}

/// The trading day of a request, whose trades will be drawn into what comes of it.
int TerminalServices::requestedDay(const TC::CFormulaParam &param) {
    const int day = requestDayOf(param);
    if (mTrade) {
        mTrade->readAhead(day);
    }
    return day;
}

InstrumentSearch TerminalServices::search() const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    return InstrumentSearch(instrumentEntries(*catalogue) + indexEntries(*catalogue) +
                            portfolioEntries(*catalogue));
}

void TerminalServices::refreshSmartKeys() {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    mSmartKeys.clear();
    mSmartKeys.add(TC::ESmartKeyType::Shortcut, {{{}, QStringLiteral("03"), QObject::tr("上证指数"), {}},
                                                 {{}, QStringLiteral("04"), QObject::tr("深证成指"), {}}});
    mSmartKeys.add(TC::ESmartKeyType::Stock, instrumentEntries(*catalogue) + portfolioEntries(*catalogue));
    mSmartKeys.add(TC::ESmartKeyType::Index, indexEntries(*catalogue));
    mSmartKeys.add(TC::ESmartKeyType::Formula, formulaEntries(*mCatalogue.getRootCatalog()));
}

QString TerminalServices::nameOf(const QString &key) const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    if (const Instrument *instrument = catalogue->find(key)) {
        return instrument->name;
    }
    if (catalogue->indexes.contains(key)) {
        return catalogue->indexes[key].detail.mCode;
    }
    return catalogue->portfolios.value(key).name;
}

QString TerminalServices::titleOf(const QString &key, const QDate &day) {
    const QString title = key + QLatin1Char(' ') + nameOf(key);
    return isCloseGuessed(key, day) ? QObject::tr("%1（昨收未知，以首笔开盘价计）").arg(title) : title;
}

bool TerminalServices::isCloseGuessed(const QString &key, const QDate &day) {
    return previousCloseOf(mStore, key, dayOf(day)).isFirstOpen;
}

QString TerminalServices::tellStoreFaults() {
    const QStringList faults = mStore.faults().takeNew();
    if (faults.isEmpty()) {
        return {};
    }
    const FormulaErrorSink list = mMessages.sink();
    for (const QString &fault : faults) {
        list({QObject::tr("行情库"), 0, fault});
    }
    return QObject::tr("行情库中有 %n 行数据不合理，已略去", nullptr, mStore.faults().count());
}

QString TerminalServices::tellTradeImport() {
    return GZ::phrasesText(mTrade->importNotes().tell(mFiles.line()));
}

ChartSources TerminalServices::chartSources() {
    return {[this](const QString &key) { return portfolioDetailOf(key); },
            [this](const QString &key, const QDate &day) {
                const int shown = dayOf(day.isValid() ? day : runningDayOf(key));
                mMarket->times().setAxisDay(key, shown);
                mCache.expect(key, shown);
                mPastDays.want(key, shown);
            }};
}

TC::RPCUiPortfolioDetail TerminalServices::portfolioDetailOf(const QString &key) const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    TC::RPCUiPortfolioDetail detail;
    for (const PortfolioPosition &position : catalogue->portfolios.value(key).positions) {
        if (const Instrument *instrument = catalogue->find(position.key)) {
            detail.mMarkets.push_back(instrument->market.toStdString());
            detail.mCodes.push_back(instrument->code.toStdString());
        }
    }
    return detail;
}

const Instrument *TerminalServices::dayInstrumentOf(const Catalogue &catalogue, const QString &key) {
    if (catalogue.indexes.contains(key)) {
        return catalogue.find(catalogue.indexes[key].detail.mMembers.value(0));
    }
    const QVector<PortfolioPosition> positions = catalogue.portfolios.value(key).positions;
    return catalogue.find(positions.isEmpty() ? key : positions.first().key);
}

TC::CInstrumentDetailPtr TerminalServices::detailOf(const QString &key) const {
    return TC::CSingletonT<TC::CStockManager>::instance().getInstrumentDetail(key);
}

InstrumentQuote TerminalServices::quoteOf(const QString &key) {
    InstrumentQuote quote;
    const QDate day = runningDayOf(key);
    if (!day.isValid()) {
        return quote;
    }
    const TC::CInstrumentDetailPtr detail = detailOf(key);
    TC::CIndexDetail *index = TC::CSingletonT<TC::CIndexManager>::instance().getIndex(key);
    quote.lastClose =
        index ? index->mBaseValue
              : TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose(key, dayOf(day));
    if (!(quote.lastClose < TC::kUnsetValue)) {
        quote.lastClose = 0.0;
    }
    const MinuteBars bars = mFeed->dayBars(key, dayOf(day));
    quote.price = bars.empty() ? quote.lastClose : bars.back().price;
    quote.decimals = detail ? qMax(2, TC::decimals(TC::getDetailPriceTick(detail))) : 2;
    return quote;
}

QVector<QuoteList> TerminalServices::sectorsOf(const QString &key) const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    QVector<QuoteList> found;
    for (int level = 1; level <= kFinestLevel; ++level) {
        for (const Sector &sector : catalogue->sectors) {
            if (sector.level == level && (sector.members.contains(key) || sector.indexKey == key)) {
                found.append({QObject::tr("申万%1级 %2").arg(level).arg(sector.name), sector.members});
            }
        }
    }
    return found;
}

QVector<QDate> TerminalServices::daysOf(const QString &key) {
    QVector<QDate> dates;
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    if (const Instrument *instrument = dayInstrumentOf(*catalogue, key)) {
        for (const int day : mStore.days(instrument->id)) {
            dates.append(dateOf(day));
        }
        for (const int day : mPastDays.knownDays(instrument->key())) {
            if (!dates.contains(dateOf(day))) {
                dates.append(dateOf(day));
            }
        }
        const QDate running = runningDayOf(key);
        if (mRunning->hasMarket() && (mRunning->isFollowing() || instrument->simulated) &&
            !dates.contains(running)) {
            dates.append(running);
        }
    }
    std::sort(dates.begin(), dates.end(), [](const QDate &a, const QDate &b) { return a > b; });
    return dates;
}

QDate TerminalServices::latestDayOf(const QString &key) {
    const QVector<QDate> known = daysOf(key);
    return known.contains(runningDayOf(key)) ? QDate() : known.value(0);
}

void TerminalServices::awaitHistory(const QString &key, const QDate &day, std::chrono::milliseconds atMost) {
    mPastDays.await(atMost); // instruments
    mPastDays.want(key, dayOf(day.isValid() ? day : runningDayOf(key)));
    mPastDays.await(atMost);
}

QString TerminalServices::trouble() const {
    QStringList troubles{mRunning->trouble(), mPastDays.trouble()};
    troubles.removeAll(QString());
    return GZ::phrasesText(troubles);
}

QString TerminalServices::standingNotice() const {
    QStringList texts{trouble()};
    if (!mRunning->hasMarket()) {
        texts.append(QObject::tr("没有实时行情（没有给出 --feed），显示的是历史行情"));
    }
    texts.removeAll(QString());
    return GZ::phrasesText(texts);
}

QDate TerminalServices::runningDayOf(const QString &key) const {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = dayInstrumentOf(*catalogue, key);
    const int day = instrument ? mRunning->exchange().runningDay(instrument->key()) : 0;
    return day == 0 ? QDate() : dateOf(day);
}

bool TerminalServices::isTrading(const QString &key) const {
    const QDate day = runningDayOf(key);
    if (!day.isValid()) {
        return false;
    }
    const std::vector<qint64> minutes = dayPositions(mStore, mMarket->times(), key, dayOf(day));
    const qint64 now = mClock->now();
    const auto near = std::lower_bound(minutes.begin(), minutes.end(), now - kAroundTrading);
    return near != minutes.end() && *near <= now + kAroundTrading;
}

qint64 marketStart(const Catalogue &catalogue, qint64 now) {
    const qint64 auction = simulationStart(catalogue, now);
    return now > auction && now < auction + kShareDay ? now : auction + kHour;
}

} // namespace terminal
