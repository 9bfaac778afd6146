#pragma once

#include "terminal/market/CMarketStore.h"
#include "terminal/market/ImportTarget.h"
#include "terminal/market/RowInserter.h"
#include "terminal/market/StoreTurn.h"

#include <QSqlQuery>
#include <QVariant>

#include <map>
#include <memory>

namespace terminal {

/// One transaction on the store: all of what is written through it, or nothing. It waits for the program's other
/// writers to end. It is rolled back when it goes without commit(). To be used on the thread that made it. After an error every further call answers false.
class MarketWriter : public ImportTarget {
public:
    explicit MarketWriter(CMarketStore &store);
    ~MarketWriter() override;
    MarketWriter(const MarketWriter &) = delete;
    MarketWriter &operator=(const MarketWriter &) = delete;

    bool isGood() const override { return mError.isEmpty(); }
    QString error() const override { return mError; }
    qint64 putInstrument(const Instrument &instrument) override;
    bool putTradingDay(const QString &market, const QDate &date, bool open) override;
    /// Whether the store has a day of an instrument, sound or not.
    bool hasDay(qint64 instrument, int day);
    bool putDay(qint64 instrument, int day, BarSource source, const MinuteBars &bars) override;
    /// It is written with others, by commit() at the latest.
    bool putTick(qint64 instrument, int day, int ordinal, const Tick &tick) override;
    bool putNote(const QString &name, const QString &value);
    bool putPreviousClose(qint64 instrument, int day, double price) override;
    bool putDaySessions(qint64 instrument, int day, const DaySessions &sessions) override;
    MinuteBars importedBars(qint64 instrument, int day) override;
    Ticks importedTicks(qint64 instrument, int day) override;

    // The members of these are named by key and have to be in the store. What is there already stays as it is.
    bool addSector(const Sector &sector);
    bool addConvertible(const QString &bond, const QString &share);
    bool addListedPair(const QString &aShare, const QString &hShare);
    bool addIndex(const UserIndex &index);
    bool addPortfolio(const Portfolio &portfolio);

    /// Row of the instrument of a key; 0, and an error, when there is none.
    qint64 rowOf(const QString &key);

    /// Ends the transaction, and has the store read its catalogue again if anything of it was written.
    bool commit() override;

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
    bool mChangesCatalogue = false;
    QString mError;
};

/// Figures of a day from its bars.
DaySummary summarize(int day, BarSource source, const MinuteBars &bars);

} // namespace terminal
