#include "terminal/market/CatalogueReader.h"

#include "terminal/market/MarketSessions.h"
#include "terminal/market/SqlColumns.h"

#include <QVariant>

namespace terminal {
CatalogueReader::CatalogueReader(const QSqlDatabase &database, StoreFaults &faults, Catalogue &catalogue)
    : mRows(database, faults), mFaults(faults), mCatalogue(catalogue) {}

bool CatalogueReader::read() {
    return readInstruments() && readSessions() && readCalendars() && readSectors() && readLinks() &&
           readIndexes() && readPortfolios();
}

bool CatalogueReader::eachRow(const char *table, const char *columns, const StoreRows::Take &take,
                              const char *rest) {
    mError = mRows.read({QLatin1String(table), QLatin1String(columns), QLatin1String(rest)}, take);
    return !mError.isValid();
}

Instrument *CatalogueReader::byId(const QVariant &id) {
    const auto key = mKeys.constFind(id.toLongLong());
    return key == mKeys.constEnd() ? nullptr : &mCatalogue.instruments[*key];
}

bool CatalogueReader::readInstruments() {
    return eachRow("instruments",
                   "id, market, code, name, initials, product, kind, price_tick, last_close, float_shares, "
                   "underlying_market, underlying_code, own_sessions, simulated",
                   [this](const QSqlQuery &row) { return takeInstrument(row); }) &&
           eachRow("instrument_types", "instrument, type", [this](const QSqlQuery &row) {
               Instrument *instrument = byId(row.value(0));
               if (instrument) {
                   instrument->types.append(row.value(1).toInt());
               }
               return instrument != nullptr;
           });
}

bool CatalogueReader::takeInstrument(const QSqlQuery &row) {
    Instrument instrument;
    QVariant lastClose;
    takeColumns(row, instrument.id, instrument.market, instrument.code, instrument.name, instrument.initials,
                instrument.product, instrument.kind, instrument.priceTick, lastClose, instrument.floatShares,
                instrument.underlyingMarket, instrument.underlyingCode, instrument.ownSessions,
                instrument.simulated);
    instrument.lastClose = lastClose.isNull() ? TC::kUnsetValue : lastClose.toDouble();
    mKeys[instrument.id] = instrument.key();
    mCatalogue.instruments[instrument.key()] = instrument;
    return true;
}

bool CatalogueReader::readSessions() {
    Sessions sessions;
    const bool read = eachRow(
        "sessions", "instrument, first_minute, last_minute",
        [this, &sessions](const QSqlQuery &row) {
            sessions[row.value(0).toLongLong()].append(qMakePair(row.value(1).toInt(), row.value(2).toInt()));
            return byId(row.value(0)) != nullptr;
        },
        "ORDER BY instrument, ordinal");
    takeSessions(sessions);
    return read;
}

/// An instrument whose sessions cannot be right has those of its market.
void CatalogueReader::takeSessions(const Sessions &sessions) {
    for (auto entry = sessions.begin(); entry != sessions.end(); ++entry) {
        Instrument *instrument = byId(entry.key());
        if (instrument && areApart(entry.value())) {
            instrument->sessions = DaySessions(entry.value());
        } else if (instrument) {
            mFaults.tell(QStringLiteral("sessions"), QStringLiteral("(instrument %1)").arg(entry.key()),
                         QStringLiteral("a minute in two sessions"));
        }
    }
    for (Instrument &instrument : mCatalogue.instruments) {
        if (instrument.sessions.isEmpty()) {
            instrument.sessions =
                marketSessions({instrument.market, instrument.code, instrument.product, instrument.types});
        }
        if (instrument.sessions.hasNight()) {
            mCatalogue.nightMarkets.insert(instrument.market);
        }
    }
}

bool CatalogueReader::readCalendars() {
    for (const Instrument &instrument : qAsConst(mCatalogue.instruments)) {
        calendarOf(instrument.market);
    }
    return eachRow("trading_days", "market, date, open", [this](const QSqlQuery &row) {
        const QDate date = QDate::fromString(row.value(1).toString(), Qt::ISODate);
        if (date.isValid()) {
            calendarOf(row.value(0).toString()).setException(date, row.value(2).toBool());
        }
        return date.isValid();
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
        eachRow("sectors", "id, level, name, index_instrument",
                [&](const QSqlQuery &row) {
                    const bool known = row.value(3).isNull() || byId(row.value(3));
                    if (known) {
                        sectors[row.value(0).toLongLong()] = {
                            row.value(1).toInt(), row.value(2).toString(), keyOf(row.value(3)), {}};
                    }
                    return known;
                }) &&
        readSectorMembers(sectors);
    for (const Sector &sector : qAsConst(sectors)) {
        mCatalogue.sectors.append(sector);
    }
    return read;
}

bool CatalogueReader::readSectorMembers(QMap<qint64, Sector> &sectors) {
    return eachRow("sector_members", "sector, instrument", [&](const QSqlQuery &row) {
        const auto sector = sectors.find(row.value(0).toLongLong());
        const bool known = sector != sectors.end() && byId(row.value(1));
        if (known) {
            sector->members.append(keyOf(row.value(1)));
        }
        return known;
    });
}

bool CatalogueReader::readLinks() {
    return eachRow("convertible_links", "bond, share",
                   [this](const QSqlQuery &row) {
                       const bool known = byId(row.value(0)) && byId(row.value(1));
                       if (known) {
                           mCatalogue.convertibles[keyOf(row.value(0))].insert(keyOf(row.value(1)));
                           mCatalogue.convertibles[keyOf(row.value(1))].insert(keyOf(row.value(0)));
                       }
                       return known;
                   }) &&
           eachRow("listed_pairs", "a_share, h_share", [this](const QSqlQuery &row) {
               const bool known = byId(row.value(0)) && byId(row.value(1));
               if (known) {
                   mCatalogue.hShareOf[keyOf(row.value(0))] = keyOf(row.value(1));
                   mCatalogue.aShareOf[keyOf(row.value(1))] = keyOf(row.value(0));
               }
               return known;
           });
}

bool CatalogueReader::readIndexes() {
    QMap<qint64, QString> keys;
    return eachRow("user_indexes",
                   "id, key, name, start_time, base_value, option1, option2, option3, last_value",
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
                       return true;
                   }) &&
           eachRow(
               "user_index_members", "user_index, instrument",
               [&](const QSqlQuery &row) {
                   const auto key = keys.constFind(row.value(0).toLongLong());
                   const bool known = key != keys.constEnd() && byId(row.value(1));
                   if (known) {
                       mCatalogue.indexes[*key].detail.mMembers.append(keyOf(row.value(1)));
                   }
                   return known;
               },
               "ORDER BY user_index, ordinal");
}

bool CatalogueReader::readPortfolios() {
    QMap<int, Portfolio> portfolios;
    const bool read =
        eachRow("portfolios", "number, name",
                [&](const QSqlQuery &row) {
                    portfolios[row.value(0).toInt()] = {row.value(0).toInt(), row.value(1).toString(), {}};
                    return true;
                }) &&
        eachRow("portfolio_positions", "portfolio, instrument, quantity", [&](const QSqlQuery &row) {
            const auto portfolio = portfolios.find(row.value(0).toInt());
            const bool known = portfolio != portfolios.end() && byId(row.value(1));
            if (known) {
                portfolio->positions.append({keyOf(row.value(1)), row.value(2).toDouble()});
            }
            return known;
        });
    for (const Portfolio &portfolio : qAsConst(portfolios)) {
        mCatalogue.portfolios[portfolio.key()] = portfolio;
    }
    return read;
}

} // namespace terminal
