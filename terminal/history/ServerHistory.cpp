#include "terminal/history/ServerHistory.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketWriter.h"

#include <QCoreApplication>

#include <algorithm>

namespace terminal {
namespace {

struct ServerHistoryWords {
    Q_DECLARE_TR_FUNCTIONS(ServerHistory)
};

const QString kStampNote = QStringLiteral("instruments of the server");

bool listsDay(const QVector<ListedDay> &days, const ListedDay &day) {
    return std::any_of(days.begin(), days.end(), [&day](const ListedDay &other) {
        return other.day == day.day && other.bars == day.bars;
    });
}

} // namespace

HistoryFailure ServerHistory::takeInstruments(int &taken) {
    std::lock_guard<std::mutex> hold(mAsking);
    taken = 0;
    QString stamp = mStore.note(kStampNote);
    QVector<Instrument> instruments;
    HistoryFailure failure = mServer.instruments(stamp, instruments);
    if (!failure.isNone() || instruments.isEmpty()) {
        return failure;
    }
    MarketWriter writer(mStore);
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    for (const Instrument &instrument : instruments) {
        const Instrument *known = catalogue->find(instrument.key());
        if (!known || !known->simulated) {
            taken += writer.putInstrument(instrument) != 0 ? 1 : 0;
        }
    }
    writer.putNote(kStampNote, stamp);
    return writer.isGood() && writer.commit() ? HistoryFailure()
                                              : HistoryFailure{HistoryTrouble::Cache, writer.error()};
}

HistoryFailure ServerHistory::list(const QString &key) {
    std::lock_guard<std::mutex> hold(mAsking);
    QVector<ListedDay> days;
    HistoryFailure failure = mServer.days(key, days);
    if (failure.isNone()) {
        std::lock_guard<std::mutex> keep(mLock);
        mKnown[key] = days;
    }
    return failure;
}

QVector<int> ServerHistory::knownDays(const QString &key) const {
    std::lock_guard<std::mutex> hold(mLock);
    QVector<int> days;
    for (const ListedDay &listed : mKnown.value(key)) {
        days.append(listed.day);
    }
    return days;
}

QVector<int> ServerHistory::lackingDays(const QString &key) {
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    QVector<int> lacking;
    if (!instrument) {
        return lacking;
    }
    const QMap<int, int> stored = mStore.importedCounts(instrument->id);
    std::lock_guard<std::mutex> hold(mLock);
    for (const ListedDay &listed : mKnown.value(key)) {
        if (stored.value(listed.day) < listed.bars && !listsDay(mBad.value(key), listed)) {
            lacking.append(listed.day);
        }
    }
    return lacking;
}

HistoryFailure ServerHistory::fetch(const QString &key, const QVector<int> &days, int &taken) {
    std::lock_guard<std::mutex> hold(mAsking);
    taken = 0;
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *instrument = catalogue->find(key);
    QVector<ServedDay> served;
    HistoryFailure failure = instrument ? mServer.read(key, days, served) : HistoryFailure();
    if (!failure.isNone() || served.isEmpty()) {
        return failure;
    }
    HistoryFailure bad;
    const auto isBad = [&](const ServedDay &day) {
        const QString fault = faultOf(day);
        if (!fault.isEmpty()) {
            bad = {HistoryTrouble::BadDay,
                   QStringLiteral("%1 %2: %3").arg(key, dateOf(day.day).toString(Qt::ISODate), fault)};
            std::lock_guard<std::mutex> keep(mLock);
            mBad[key].append({day.day, day.count});
        }
        return !fault.isEmpty();
    };
    served.erase(std::remove_if(served.begin(), served.end(), isBad), served.end());
    const QString unwritten = put(*instrument, served);
    if (!unwritten.isEmpty()) {
        return {HistoryTrouble::Cache, unwritten};
    }
    taken = served.size();
    return bad;
}

/// Writes days into the store, all or none.
QString ServerHistory::put(const Instrument &instrument, const QVector<ServedDay> &days) {
    const MarketCalendar calendar = mStore.catalogue()->calendar(instrument.market);
    MarketWriter writer(mStore);
    for (const ServedDay &day : days) {
        writer.putDay(instrument.id, day.day, BarSource::Imported, day.bars);
        writer.putDaySessions(instrument.id, day.day, day.sessions);
        if (day.previousClose > 0.0) {
            writer.putPreviousClose(instrument.id, day.day, day.previousClose);
        }
        if (!calendar.isTradingDay(dateOf(day.day))) {
            writer.putTradingDay(instrument.market, dateOf(day.day), true);
        }
    }
    if (writer.isGood()) {
        writer.commit();
    }
    return writer.error();
}

int ServerHistory::badDays() const {
    std::lock_guard<std::mutex> hold(mLock);
    int count = 0;
    for (const QVector<ListedDay> &days : mBad) {
        count += days.size();
    }
    return count;
}

QVector<int> ServerHistory::missingDays(const QString &key, qint64 start, qint64 end) {
    list(key); // when that fails the fetching of days that were known tells why
    QVector<int> missing;
    for (const int day : lackingDays(key)) {
        if (day * 1000LL >= dayOf(dateAt(std::max<qint64>(0, start))) * 1000LL && day * 1000LL <= end) {
            missing.append(day);
        }
    }
    return missing;
}

QString ServerHistory::fetchDay(const QString &key, int day) {
    int taken = 0;
    const HistoryFailure failure = fetch(key, {day}, taken);
    if (!failure.isNone()) {
        return ServerHistoryWords::tr("%1 的历史行情没有取到：%2").arg(key, failure.reason);
    }
    return taken > 0 ? QString() : ServerHistoryWords::tr("历史服务器没有 %1 的这一天").arg(key);
}

} // namespace terminal
