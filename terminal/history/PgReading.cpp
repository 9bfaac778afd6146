#include "terminal/history/PgReading.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketLimits.h"

#include <algorithm>

namespace terminal {
namespace {

constexpr qint64 kEpochDate = 2440588; ///< Julian day of 1970-01-01

QVector<int> pgNumbers(const QByteArray &text) {
    QVector<int> numbers;
    for (const QByteArray &word : text.isEmpty() ? QList<QByteArray>() : text.split(',')) {
        numbers.append(word.toInt());
    }
    return numbers;
}

bool isPgName(const QString &text) {
    return !text.isEmpty() && text.size() <= 64 &&
           std::none_of(text.begin(), text.end(), [](QChar c) { return c.isSpace() || !c.isPrint(); });
}

bool isServedInstrument(const Instrument &instrument) {
    const bool isKind =
        instrument.kind >= InstrumentKind::Stock && instrument.kind <= InstrumentKind::SectorIndex;
    return isPgName(instrument.market) && isPgName(instrument.code) && isKind && instrument.priceTick >= 1e-9 &&
           instrument.priceTick <= kLargestPrice && instrument.floatShares >= 0.0 &&
           instrument.floatShares <= kLargestVolume && !instrument.sessions.isEmpty();
}

} // namespace

const char *const kPgInstruments =
    "SELECT stamp, market, code, name, initials, product, kind, array_to_string(types, ','), price_tick, "
    "last_close, float_shares, underlying_market, underlying_code, array_to_string(sessions, ','), "
    "own_sessions::int "
    "FROM timeshare.instruments, (SELECT count(*) || ':' || max(revision) AS stamp FROM timeshare.instruments) "
    "s "
    "WHERE stamp IS DISTINCT FROM $1 ORDER BY key";

int dayOfPgDate(int days) {
    return dayOf(QDate::fromJulianDay(kEpochDate + days));
}

QByteArray pgDate(int day) {
    return dateOf(day).toString(Qt::ISODate).toLatin1();
}

QByteArray pgDates(const QVector<int> &days) {
    QByteArray text;
    for (const int day : days) {
        text += (text.isEmpty() ? "" : ",") + pgDate(day);
    }
    return '{' + text + '}';
}

DaySessions pgSessions(const QByteArray &text) {
    return sessionsOf(pgNumbers(text));
}

MinuteBar pgBar(const PgRows &rows, int row, int column) {
    const auto number = [&](int i) { return rows.number(row, column + i); };
    return {
        rows.wide(row, column), number(1), number(2), number(3), number(4), number(5), number(6), number(7)};
}

QVector<Instrument> pgInstruments(const PgRows &rows) {
    QVector<Instrument> instruments;
    for (int row = 0; row < rows.count(); ++row) {
        const auto text = [&](int column) { return QString::fromUtf8(rows.text(row, column)); };
        Instrument instrument;
        instrument.market = text(1);
        instrument.code = text(2);
        instrument.name = text(3);
        instrument.initials = text(4);
        instrument.product = text(5);
        instrument.kind = static_cast<InstrumentKind>(rows.whole(row, 6));
        instrument.types = pgNumbers(rows.text(row, 7));
        instrument.priceTick = rows.number(row, 8);
        instrument.lastClose = rows.isNull(row, 9) ? TC::kUnsetValue : rows.number(row, 9);
        instrument.floatShares = rows.number(row, 10);
        instrument.underlyingMarket = text(11);
        instrument.underlyingCode = text(12);
        instrument.sessions = pgSessions(rows.text(row, 13));
        instrument.ownSessions = rows.whole(row, 14) != 0;
        if (isServedInstrument(instrument)) {
            instruments.append(instrument);
        }
    }
    return instruments;
}

} // namespace terminal
