#include "terminal/market/CatalogueReader.h"

#include "terminal/market/SqlColumns.h"

#include <QVariant>

namespace terminal {

CatalogueReader::CatalogueReader(const QSqlDatabase &database, Catalogue &catalogue)
    : mQuery(database), mCatalogue(catalogue) {
    mQuery.setForwardOnly(true);
}

bool CatalogueReader::read() {
    return readInstruments() && readCalendars() && readSectors() && readLinks() && readIndexes() &&
           readPortfolios();
}

bool CatalogueReader::eachRow(const QString &statement, const std::function<void(const QSqlQuery &)> &take) {
    if (!mQuery.exec(statement)) {
        return false;
    }
    while (mQuery.next()) {
        take(mQuery);
    }
    return !mQuery.lastError().isValid();
}

Instrument *CatalogueReader::byId(const QVariant &id) {
    const auto key = mKeys.constFind(id.toLongLong());
    return key == mKeys.constEnd() ? nullptr : &mCatalogue.instruments[*key];
}

bool CatalogueReader::readInstruments() {
    const QString statement =
        QStringLiteral("SELECT id, market, code, name, initials, product, kind, price_tick, last_close, "
                       "float_shares, underlying_market, underlying_code, own_sessions, simulated "
                       "FROM instruments");
    Sessions sessions;
    const bool read = eachRow(statement, [this](const QSqlQuery &row) { takeInstrument(row); }) &&
                      eachRow(QStringLiteral("SELECT instrument, type FROM instrument_types"),
                              [this](const QSqlQuery &row) {
                                  if (Instrument *instrument = byId(row.value(0))) {
                                      instrument->types.append(row.value(1).toInt());
                                  }
                              }) &&
                      eachRow(QStringLiteral("SELECT instrument, first_minute, last_minute FROM sessions "
                                             "ORDER BY instrument, ordinal"),
                              [&sessions](const QSqlQuery &row) {
                                  sessions[row.value(0).toLongLong()].append(
                                      qMakePair(row.value(1).toInt(), row.value(2).toInt()));
                              });
    takeSessions(sessions);
    return read;
}

void CatalogueReader::takeInstrument(const QSqlQuery &row) {
    Instrument instrument;
    QVariant lastClose;
    takeColumns(row, instrument.id, instrument.market, instrument.code, instrument.name, instrument.initials,
                instrument.product, instrument.kind, instrument.priceTick, lastClose, instrument.floatShares,
                instrument.underlyingMarket, instrument.underlyingCode, instrument.ownSessions,
                instrument.simulated);
    instrument.lastClose = lastClose.isNull() ? TC::kUnsetValue : lastClose.toDouble();
    mKeys[instrument.id] = instrument.key();
    mCatalogue.instruments[instrument.key()] = instrument;
}

void CatalogueReader::takeSessions(const Sessions &sessions) {
    for (auto entry = sessions.begin(); entry != sessions.end(); ++entry) {
        Instrument *instrument = byId(entry.key());
        if (!instrument) {
            continue;
        }
        instrument->sessions = DaySessions(entry.value());
        if (instrument->sessions.hasNight()) {
            mCatalogue.nightMarkets.insert(instrument->market);
        }
    }
}

bool CatalogueReader::readCalendars() {
    for (const Instrument &instrument : qAsConst(mCatalogue.instruments)) {
        calendarOf(instrument.market);
    }
    return eachRow(QStringLiteral("SELECT market, date, open FROM trading_days"), [this](const QSqlQuery &row) {
        const QDate date = QDate::fromString(row.value(1).toString(), Qt::ISODate);
        calendarOf(row.value(0).toString()).setException(date, row.value(2).toBool());
    });
}

/// The calendar of a market, made at the first asking.
MarketCalendar &CatalogueReader::calendarOf(const QString &market) {
    if (!mCatalogue.calendars.contains(market)) {
        mCatalogue.calendars[market] = MarketCalendar::ofMarket(market);
    }
    return mCatalogue.calendars[market];
}

bool CatalogueReader::readSectors() {
    QMap<qint64, Sector> sectors;
    const bool read =
        eachRow(QStringLiteral("SELECT id, level, name, index_instrument FROM sectors"),
                [&](const QSqlQuery &row) {
                    sectors[row.value(0).toLongLong()] = {
                        row.value(1).toInt(), row.value(2).toString(), keyOf(row.value(3)), {}};
                }) &&
        eachRow(QStringLiteral("SELECT sector, instrument FROM sector_members"), [&](const QSqlQuery &row) {
            sectors[row.value(0).toLongLong()].members.append(keyOf(row.value(1)));
        });
    for (const Sector &sector : qAsConst(sectors)) {
        mCatalogue.sectors.append(sector);
    }
    return read;
}

bool CatalogueReader::readLinks() {
    return eachRow(QStringLiteral("SELECT bond, share FROM convertible_links"),
                   [this](const QSqlQuery &row) {
                       mCatalogue.convertibles[keyOf(row.value(0))].insert(keyOf(row.value(1)));
                       mCatalogue.convertibles[keyOf(row.value(1))].insert(keyOf(row.value(0)));
                   }) &&
           eachRow(QStringLiteral("SELECT a_share, h_share FROM listed_pairs"), [this](const QSqlQuery &row) {
               mCatalogue.hShareOf[keyOf(row.value(0))] = keyOf(row.value(1));
               mCatalogue.aShareOf[keyOf(row.value(1))] = keyOf(row.value(0));
           });
}

bool CatalogueReader::readIndexes() {
    QMap<qint64, QString> keys;
    return eachRow(QStringLiteral("SELECT id, key, name, start_time, base_value, option1, option2, option3, "
                                  "last_value FROM user_indexes"),
                   [&](const QSqlQuery &row) {
                       UserIndex index;
                       index.key = row.value(1).toString();
                       index.detail = TC::CIndexDetail(index.key);
                       index.detail.mCode = row.value(2).toString();
                       index.detail.mStartTime = row.value(3).toLongLong();
                       index.detail.mBaseValue = row.value(4).toDouble();
                       index.detail.mOption1 = row.value(5).toInt();
                       index.detail.mOption2 = row.value(6).toInt();
                       index.detail.mOption3 = row.value(7).toInt();
                       index.lastValue = row.value(8).toDouble();
                       keys[row.value(0).toLongLong()] = index.key;
                       mCatalogue.indexes[index.key] = index;
                   }) &&
           eachRow(QStringLiteral("SELECT user_index, instrument FROM user_index_members "
                                  "ORDER BY user_index, ordinal"),
                   [&](const QSqlQuery &row) {
                       mCatalogue.indexes[keys.value(row.value(0).toLongLong())].detail.mMembers.append(
                           keyOf(row.value(1)));
                   });
}

bool CatalogueReader::readPortfolios() {
    QMap<int, Portfolio> portfolios;
    const bool read =
        eachRow(QStringLiteral("SELECT number, name FROM portfolios"),
                [&](const QSqlQuery &row) {
                    portfolios[row.value(0).toInt()] = {row.value(0).toInt(), row.value(1).toString(), {}};
                }) &&
        eachRow(QStringLiteral("SELECT portfolio, instrument, quantity FROM portfolio_positions"),
                [&](const QSqlQuery &row) {
                    portfolios[row.value(0).toInt()].positions.append(
                        {keyOf(row.value(1)), row.value(2).toDouble()});
                });
    for (const Portfolio &portfolio : qAsConst(portfolios)) {
        mCatalogue.portfolios[portfolio.key()] = portfolio;
    }
    return read;
}

} // namespace terminal
