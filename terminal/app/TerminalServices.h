#pragma once

#include "terminal/app/ChartSources.h"
#include "terminal/app/Heartbeat.h"
#include "terminal/app/InstrumentSearch.h"
#include "terminal/app/PastDays.h"
#include "terminal/app/QuoteList.h"
#include "terminal/app/RunningMarket.h"
#include "terminal/app/SmartKeyService.h"
#include "terminal/app/WindowRequests.h"
#include "terminal/config/ConfigService.h"
#include "terminal/config/IndexTemplateService.h"
#include "terminal/files/FileClient.h"
#include "terminal/formula/FormulaCatalogue.h"
#include "terminal/formula/FormulaMessages.h"
#include "terminal/formula/FormulaService.h"
#include "terminal/formula/HistoryCache.h"
#include "terminal/formula/RequestIds.h"
#include "terminal/market/CMarketStore.h"
#include "terminal/market/CompositeFeed.h"
#include "terminal/market/MarketFill.h"
#include "terminal/market/MarketServices.h"
#include "terminal/market/SimulatedClock.h"
#include "terminal/market/StoreSelfStocks.h"
#include "terminal/replay/ReplayService.h"
#include "terminal/trade/EnhanceDrawService.h"
#include "terminal/trade/StrategyService.h"
#include "terminal/trade/TradeService.h"

#include <QDate>
#include <QStringList>

#include <memory>
#include <optional>

namespace terminal {

/// Installs a service while it lives, and what was there before afterwards.
template <class Service> class Installation {
public:
    explicit Installation(Service &service) : mBefore(TC::CSingletonT<Service>::install(&service)) {}
    ~Installation() { TC::CSingletonT<Service>::install(mBefore); }
    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;

private:
    Service *mBefore;
};

/// Where a terminal keeps its files and how it starts.
struct TerminalSettings {
    QString store; ///< file of the market store; empty for the default one
    QString config; ///< file of the configuration; empty for none
    QString formulas; ///< folder of the user's own formulas; empty for none
    QString scripts; ///< folder of the script models; empty for none
    double speed = 1.0; ///< market seconds a second
    QString
        feed; ///< server of a live market; empty for the one of the configuration, or the terminal's own market
    QString history; ///< server of past days; empty for the one of the configuration, or none
    bool leavesFill = false; ///< days that the store lacks are left to TerminalServices::fill()
    std::optional<qint64>
        start; ///< market time to start at, milliseconds since the epoch; else by the real time
};

/// Every service of the terminal, made, installed and owned. On the user-interface thread.
class TerminalServices {
public:
    /// Opens the store, fills it on the first run, and starts the exchange. Answers null, and one line that says why,
    /// when that fails or `progress` stops it.
    static std::unique_ptr<TerminalServices> open(const TerminalSettings &settings, QString &error,
                                                  const Progress &progress = {});
    ~TerminalServices();

    /// Whether the store lacks days that were left: fill() adds them, on any thread, and begin() lets the market run then. Until
    /// then there are instruments and no prices that hold.
    bool isFillDue() const { return !mRunning->isStarted(); }
    /// Answers an empty text or what went wrong.
    QString fill(const Progress &progress);
    void begin();

    CMarketStore &store() { return mStore; }
    ConfigService &config() { return mConfig; }
    SimulatedClock &clock() { return *mClock; }
    SimulatedExchange &exchange() { return mRunning->exchange(); }
    /// Where the running day comes from.
    RunningMarket &running() { return *mRunning; }
    /// The prices of instruments, user-defined indexes and portfolios.
    MarketFeed &feed() { return *mFeed; }
    FormulaService &formulas() { return *mFormulas; }
    /// Where days before the running one come from.
    PastDays &pastDays() { return mPastDays; }
    /// Waits, at most so long, for what a server has of a day of an instrument; a null day is the running one.
    void awaitHistory(const QString &key, const QDate &day, std::chrono::milliseconds atMost);
    /// What is missing of what servers have, and since when; empty when nothing is.
    QString trouble() const;
    /// What a status line tells as long as it holds: that, and that there is no running market where there is none.
    QString standingNotice() const;
    HistoryCache &historyCache() { return mCache; }
    FormulaMessages &messages() { return mMessages; }
    TradeService &trade() { return *mTrade; }
    FileClient &files() { return mFiles; }
    FormulaCatalogue &catalogue() { return mCatalogue; }
    ReplayService &replay() { return *mReplay; }
    StoreSelfStocks &selfStocks() { return mSelfStocks; }
    WindowRequests &windowRequests() { return mIndependent.windowRequests; }

    /// All that a chart can show, to search in.
    InstrumentSearch search() const;
    /// Reads what the smart keyboard offers anew, as after an import or an edit of the formulas.
    void refreshSmartKeys();
    /// Name of an instrument, a user-defined index or a portfolio; empty for an unknown key.
    QString nameOf(const QString &key) const;
    /// Key and name, and of a day whose previous close is not known what stands for it.
    QString titleOf(const QString &key, const QDate &day);
    /// Whether the first price stands for the previous close of a day.
    bool isCloseGuessed(const QString &key, const QDate &day);
    /// Puts what was found wrong in the store since the last time among the messages. Answers a line that says so, or
    /// nothing.
    QString tellStoreFaults();
    /// Says what came of the file of orders or deals that was read last, with the first lines that were left out.
    QString tellTradeImport();
    /// The record of an instrument, or null.
    TC::CInstrumentDetailPtr detailOf(const QString &key) const;
    ChartSources chartSources();
    /// The positions of a portfolio; none for any other key.
    TC::RPCUiPortfolioDetail portfolioDetailOf(const QString &key) const;
    /// Of the running day; before its first trade the close of the day before stands for the price.
    InstrumentQuote quoteOf(const QString &key);
    /// The sectors that an instrument belongs to, or is the index of, from the coarsest to the finest.
    QVector<QuoteList> sectorsOf(const QString &key) const;
    /// Trading days of an instrument that can be shown, the newest first: those stored and the running one.
    QVector<QDate> daysOf(const QString &key);
    /// The day of an instrument that is shown where none is chosen: null for the running one, which is live, and where there is no
    /// running market the newest that is known.
    QDate latestDayOf(const QString &key);
    /// Milliseconds after which a window has a look though nothing has happened in it: what servers do, or leave, is to be
    /// told within a second.
    int longestRest() const { return mRunning->hasOwnMarket() ? Heartbeat::kRest : Heartbeat::kInterval; }
    /// Whether an instrument is traded now, or a few minutes before or after; false for an unknown one.
    bool isTrading(const QString &key) const;
    /// The running trading day of an instrument; null for an unknown one.
    QDate runningDayOf(const QString &key) const;

private:
    TerminalServices(const TerminalSettings &settings);
    /// The instrument whose trading days are those of a key: itself, or the first member of an index or portfolio.
    static const Instrument *dayInstrumentOf(const Catalogue &catalogue, const QString &key);
    QString openMarket(const TerminalSettings &settings);
    QString openStore(const TerminalSettings &settings, const QString &history);
    QString start(const TerminalSettings &settings, const Progress &progress);
    int requestedDay(const TC::CFormulaParam &param);

    /// Services that use no other one.
    struct Independent {
        RequestIds ids;
        StrategyService strategies;
        EnhanceDrawService enhance;
        WindowRequests windowRequests;
    };

    // In the order of use: each is gone before those above it.
    Independent mIndependent;
    ConfigService mConfig;
    CMarketStore mStore;
    std::unique_ptr<SimulatedClock> mClock;
    std::unique_ptr<Installation<TC::CHostClock>> mClockInstallation;
    std::unique_ptr<MarketServices> mMarket;
    std::unique_ptr<RunningMarket> mRunning;
    std::unique_ptr<CompositeFeed> mFeed; ///< of the running market's prices
    FormulaMessages mMessages;
    FormulaCatalogue mCatalogue;
    HistoryCache mCache;
    PastDays mPastDays{mStore};
    std::unique_ptr<TradeService> mTrade;
    FileClient mFiles;
    SmartKeyService mSmartKeys;
    IndexTemplateService mTemplates{mConfig, mCatalogue};
    StoreSelfStocks mSelfStocks{mStore};
    std::unique_ptr<FormulaService> mFormulas;
    std::unique_ptr<ReplayService> mReplay;
    struct Installations;
    std::unique_ptr<Installations> mInstallations;
};

/// The market time to start at when it is `now`, both in milliseconds since the epoch: `now` while the Chinese share
/// market trades, otherwise an hour into its day, today's or the last one.
qint64 marketStart(const Catalogue &catalogue, qint64 now);

} // namespace terminal
