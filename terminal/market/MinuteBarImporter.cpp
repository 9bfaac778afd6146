#include "terminal/market/MinuteBarImporter.h"

#include "terminal/market/MarketDate.h"
#include "terminal/market/MarketSessions.h"

#include <QFile>

#include <algorithm>

namespace terminal {
namespace {

constexpr double kLot = 100.0; ///< shares of a lot
constexpr double kReadingPart = 0.4; ///< of the whole work
constexpr int kRowsBetweenReports = 20000;
const QString kStopped = QStringLiteral("the import was stopped");

bool isShareMarket(const QString &market) {
    return market == QLatin1String("SH") || market == QLatin1String("SZ") || market == QLatin1String("BJ");
}

/// Where the night of an unknown product ends, by the latest bar that it has.
int observedNightEnd(const std::vector<BarRow> &rows) {
    int evening = 0;
    int morning = 0;
    for (const BarRow &row : rows) {
        evening = row.clock >= 1260 ? std::max(evening, row.clock) : evening;
        morning = row.clock < 300 && row.clock > 0 ? std::max(morning, row.clock) : morning;
    }
    if (morning > 0 || evening > 1380) {
        return morning > 60 ? 150 : 60;
    }
    return evening > 0 ? 1380 : 0;
}

/// All that an import can change of a bar but for its average, which depends on the day's other bars.
bool sameTrade(const MinuteBar &a, const MinuteBar &b) {
    return a.open == b.open && a.high == b.high && a.low == b.low && a.price == b.price &&
           a.volume == b.volume && a.amount == b.amount;
}

/// Line of the row that became the bar of a time.
int lineOf(const std::vector<BarRow> &rows, qint64 time) {
    const auto found = std::find_if(rows.begin(), rows.end(), [time](const BarRow &row) {
        return timeOf(calendarDate(row.date), row.clock) == time;
    });
    return found == rows.end() ? 0 : found->line;
}

QString located(const QString &path, const BarFault &fault) {
    return QStringLiteral("%1:%2: %3").arg(path).arg(fault.line).arg(fault.reason);
}

} // namespace

bool MinuteBarImporter::goesOn(double part) const {
    return !mProgress || mProgress(static_cast<int>(part * 1000.0), 1000);
}

QString MinuteBarImporter::checkOptions() const {
    if (!mOptions.market.isEmpty() && !knownMarkets().contains(mOptions.market)) {
        return QStringLiteral("unknown market \"%1\"; give --market with one of %2")
            .arg(mOptions.market, knownMarkets().join(QLatin1Char(' ')));
    }
    return {};
}

ImportOutcome MinuteBarImporter::importFile(const QString &path) {
    ImportOutcome outcome;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        outcome.error = QStringLiteral("%1: cannot be read: %2").arg(path, file.errorString());
        return outcome;
    }
    const QByteArray content = file.readAll();
    mGroups.clear();
    mGroupOf.clear();
    mLastSymbol.clear();
    BarFault fault{1, checkOptions()};
    if (fault.isNone()) {
        fault = readRows({content.constData(), static_cast<size_t>(content.size())});
    }
    if (!fault.isNone()) {
        outcome.error = located(path, fault);
        return outcome;
    }
    MarketWriter writer(mStore);
    for (Group &group : mGroups) {
        ImportedBars imported;
        fault = writer.isGood() ? store(writer, group, imported) : BarFault();
        if (!fault.isNone()) {
            outcome.error = located(path, fault);
            outcome.instruments.clear();
            return outcome;
        }
        outcome.instruments.append(imported);
    }
    if (!writer.commit()) {
        outcome.error = writer.error();
        outcome.instruments.clear();
    }
    return outcome;
}

BarFault MinuteBarImporter::readRows(std::string_view text) {
    if (text.empty()) {
        return {1, QStringLiteral("the file is empty")};
    }
    const size_t zero = text.find('\0');
    if (zero != std::string_view::npos) {
        const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(zero), '\n') + 1;
        return {static_cast<int>(line), QStringLiteral("a binary file, not a text of minute bars")};
    }
    size_t end = text.find('\n');
    const std::string_view header = text.substr(0, end);
    const QString trouble =
        recogniseColumns(QByteArray(header.data(), static_cast<int>(header.size())), mColumns);
    if (!trouble.isEmpty()) {
        return {1, trouble};
    }
    BarRowParser parser(mColumns);
    int line = 1;
    for (size_t start = end; start != std::string_view::npos && start + 1 < text.size(); start = end) {
        ++line;
        end = text.find('\n', start + 1);
        const std::string_view rowText =
            text.substr(start + 1, end == std::string_view::npos ? end : end - start - 1);
        if (end == std::string_view::npos) {
            return {line, QStringLiteral("the file ends in the middle of a line")};
        }
        if (rowText.find_first_not_of(" \t\r") == std::string_view::npos) {
            continue;
        }
        BarRow row;
        row.line = line;
        const QString wrong = parser.parse(rowText, row);
        if (!wrong.isEmpty()) {
            return {line, wrong};
        }
        const BarFault fault = takeRow(row, parser);
        if (!fault.isNone()) {
            return fault;
        }
        if (line % kRowsBetweenReports == 0 &&
            !goesOn(kReadingPart * static_cast<double>(start) / static_cast<double>(text.size()))) {
            return {line, kStopped};
        }
    }
    if (mGroups.empty()) {
        return {line, QStringLiteral("the file has no rows")};
    }
    for (Group &group : mGroups) {
        for (BarRow &row : group.rows) {
            const QString wrong = parser.finish(row);
            if (!wrong.isEmpty()) {
                return {row.line, wrong};
            }
        }
    }
    return {};
}

BarFault MinuteBarImporter::takeRow(const BarRow &row, const BarRowParser &parser) {
    const std::string_view symbol = parser.symbol();
    const bool sameSymbol =
        !mGroups.empty() &&
        symbol == std::string_view(mLastSymbol.constData(), static_cast<size_t>(mLastSymbol.size()));
    if (!sameSymbol) {
        mLastSymbol = QByteArray(symbol.data(), static_cast<int>(symbol.size()));
        const std::string_view exchange = parser.exchange();
        const auto known = mGroupOf.constFind(mLastSymbol);
        if (known != mGroupOf.constEnd()) {
            mLastGroup = *known;
        } else {
            Group group;
            const InstrumentName told =
                readSymbol(QString::fromUtf8(mLastSymbol),
                           QString::fromUtf8(exchange.data(), static_cast<int>(exchange.size())));
            const BarFault fault = nameGroup(told, row.line, group);
            if (!fault.isNone()) {
                return fault;
            }
            mLastGroup = mGroups.size();
            mGroupOf[mLastSymbol] = mLastGroup;
            mGroups.push_back(std::move(group));
        }
    }
    mGroups[mLastGroup].rows.push_back(row);
    return {};
}

BarFault MinuteBarImporter::nameGroup(InstrumentName told, int line, Group &group) const {
    if (!mOptions.code.isEmpty() && !mGroups.empty()) {
        return {line, QStringLiteral("a second instrument \"%1\"; --code names one only").arg(told.code)};
    }
    group.name = {mOptions.market.isEmpty() ? told.market : mOptions.market,
                  mOptions.code.isEmpty() ? told.code : mOptions.code};
    if (group.name.market.isEmpty()) {
        return {line, QStringLiteral("the file does not tell the market; give --market with one of %1")
                          .arg(knownMarkets().join(QLatin1Char(' ')))};
    }
    if (group.name.code.isEmpty()) {
        return {line, QStringLiteral("the file does not tell the instrument; give --code")};
    }
    return {};
}

double MinuteBarImporter::volumeUnit(const Group &group) const {
    if (mOptions.volumeInLots) {
        return *mOptions.volumeInLots ? kLot : 1.0;
    }
    if (!isShareMarket(group.name.market) || mColumns.amount < 0) {
        return 1.0;
    }
    double money = 0.0;
    double weighed = 0.0;
    for (const BarRow &row : group.rows) {
        money += row.amount;
        weighed += row.close * row.volume;
    }
    // Money by price and volume is near 1 when the volume is in shares, and near 100 when it is in lots.
    const double ratio = weighed > 0.0 ? money / weighed : 1.0;
    return ratio > kLot / 2.0 && ratio < kLot * 2.0 ? kLot : 1.0;
}

BarFault MinuteBarImporter::store(MarketWriter &writer, Group &group, ImportedBars &imported) {
    const int line = group.rows.front().line;
    const std::shared_ptr<const Catalogue> catalogue = mStore.catalogue();
    const Instrument *known = catalogue->find(group.name.market + group.name.code);
    Instrument instrument =
        known ? *known : newInstrument(group.name, priceStep(group.rows), observedNightEnd(group.rows));
    BarReading reading;
    reading.sessions = instrument.sessions;
    reading.calendar = catalogue->calendar(instrument.market);
    reading.labelAtStart = mOptions.labelAtStart.value_or(false);
    reading.volumeUnit = volumeUnit(group);
    reading.hasAverage = mColumns.average >= 0;
    BarDays sorted;
    const BarFault fault = sortIntoDays(group.rows, reading, sorted);
    if (!fault.isNone()) {
        return fault;
    }
    if (!known) {
        instrument.id = writer.putInstrument(instrument);
    }
    int done = 0;
    for (auto day = sorted.days.begin(); day != sorted.days.end() && writer.isGood(); ++day) {
        const int before = static_cast<int>(day->size());
        const BarFault clash = mergeStored(instrument, day.key(), group.rows, *day);
        if (!clash.isNone()) {
            return clash;
        }
        fillAverages(*day);
        writer.putDay(instrument.id, dayOf(day.key()), BarSource::Imported, *day);
        imported.bars += before;
        if (!goesOn(kReadingPart + (1.0 - kReadingPart) * ++done / sorted.days.size())) {
            return {line, kStopped};
        }
    }
    for (const QDate &day : qAsConst(sorted.unknownDays)) {
        writer.putTradingDay(instrument.market, day, true);
    }
    for (const QDate &day : qAsConst(sorted.restDays)) {
        writer.putTradingDay(instrument.market, day, false);
    }
    imported.key = instrument.key();
    imported.firstDay = dayOf(sorted.days.firstKey());
    imported.lastDay = dayOf(sorted.days.lastKey());
    return {};
}

/// Adds the bars of the day that an earlier import left in the store.
BarFault MinuteBarImporter::mergeStored(const Instrument &instrument, const QDate &day,
                                        const std::vector<BarRow> &rows, MinuteBars &bars) const {
    const std::optional<DaySummary> summary = mStore.summary(instrument.id, dayOf(day));
    if (!summary || summary->source != BarSource::Imported) {
        return {};
    }
    MinuteBars merged;
    const MinuteBars stored = mStore.bars(instrument.id, dayOf(day));
    auto old = stored.begin();
    for (const MinuteBar &bar : bars) {
        for (; old != stored.end() && old->time < bar.time; ++old) {
            merged.push_back(*old);
        }
        if (old != stored.end() && old->time == bar.time) {
            if (!sameTrade(*old, bar)) {
                return {lineOf(rows, bar.time),
                        QStringLiteral("%1 of %2 is in the store with other values")
                            .arg(marketDateTime(bar.time).toString(QStringLiteral("yyyy-MM-dd HH:mm")),
                                 instrument.key())};
            }
            ++old;
        }
        merged.push_back(bar);
    }
    merged.insert(merged.end(), old, stored.end());
    bars = std::move(merged);
    return {};
}

} // namespace terminal
