#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/RowInserter.h"
#include "terminal/market/StoreTurn.h"

#include <QSqlQuery>
#include <QVariant>

#include <map>
#include <memory>

namespace terminal {

/// One transaction on the store: all of what is written through it, or nothing. It waits for the program's other
/// writers to end. It is rolled back when it goes without commit(). To be used on the thread that made it. After an error every further call answers false.
class MarketWriter {
public:
    explicit MarketWriter(CMarketStore &store);
    ~MarketWriter();
    MarketWriter(const MarketWriter &) = delete;
    MarketWriter &operator=(const MarketWriter &) = delete;

    /// Whether all went well so far, and otherwise one line that says what did not.
    bool isGood() const { return mError.isEmpty(); }
    QString error() const { return mError; }

    /// Adds an instrument with its types and sessions, or replaces the one of the same key; answers its row, 0 on an
    /// error.
    qint64 putInstrument(const Instrument &instrument);
    /// Declares a date of a market open or closed.
    bool putTradingDay(const QString &market, const QDate &date, bool open);
    /// Whether the store has a day of an instrument, sound or not.
    bool hasDay(qint64 instrument, int day);
    /// Replaces a day of an instrument by these bars, in ascending time. Its ticks stay.
    bool putDay(qint64 instrument, int day, BarSource source, const MinuteBars &bars);
    /// Adds a tick to a day that has been put; `ordinal` counts the ticks of the day from 0. It is written with others, by
    /// commit() at the latest.
    bool putTick(qint64 instrument, int day, int ordinal, const Tick &tick);
    bool putNote(const QString &name, const QString &value);
    /// Keeps with a day, which has been put, the close before it as its source tells it.
    bool putPreviousClose(qint64 instrument, int day, double price);
    /// Keeps with a day, which has been put, its sessions as its source shows them; empty ones are those of the
    /// instrument.
    bool putDaySessions(qint64 instrument, int day, const DaySessions &sessions);

    // The members of these are named by key and have to be in the store. What is there already stays as it is.
    bool addSector(const Sector &sector);
    bool addConvertible(const QString &bond, const QString &share);
    bool addListedPair(const QString &aShare, const QString &hShare);
    bool addIndex(const UserIndex &index);
    bool addPortfolio(const Portfolio &portfolio);

    /// Row of the instrument of a key; 0, and an error, when there is none.
    qint64 rowOf(const QString &key);

    /// Ends the transaction and has the store read its catalogue again.
    bool commit();

private:
    bool run(QSqlQuery &query);
    bool runText(const QString &statement, const QVariantList &values = {});

    bool check(RowInserter &rows);
    QSqlQuery &prepared(const QString &statement);
    void finishQueries();

    CMarketStore &mStore;
    StoreTurn mTurn;
    QSqlDatabase mDatabase;
    std::map<QString, QSqlQuery> mPrepared; ///< by their statements
    QSqlQuery mInsertDay;
    QSqlQuery mDeleteBars;
    std::unique_ptr<RowInserter> mBars; ///< as long as the transaction is open
    std::unique_ptr<RowInserter> mTicks;
    bool mOpen = false;
    QString mError;
};

/// Figures of a day from its bars.
DaySummary summarize(int day, BarSource source, const MinuteBars &bars);

} // namespace terminal
