#include "terminal/market/PreviousClose.h"

#include "terminal/market/MarketDate.h"

namespace terminal {
namespace {

constexpr int kTwoWeeks = 14;

/// Whether a stored day is the trading day before `date`. Where the holidays between are unknown, two weeks may lie
/// between them.
bool isDayBefore(const DaySummary &stored, int date, const MarketCalendar &calendar) {
    const QDate day = dateOf(date);
    const QDate before = dateOf(stored.day);
    const bool exact = calendar.knowsYear(day.year()) && calendar.knowsYear(before.year());
    return exact ? before >= calendar.previous(day) : before.daysTo(day) <= kTwoWeeks;
}

} // namespace

PreviousClose previousCloseOf(CMarketStore &store, const QString &key, int day) {
    const std::shared_ptr<const Catalogue> catalogue = store.catalogue();
    const Instrument *instrument = catalogue->find(key);
    if (!instrument) {
        return {};
    }
    if (const std::optional<double> told = store.previousClose(instrument->id, day)) {
        return {*told, false};
    }
    const std::optional<DaySummary> before = store.summaryBefore(instrument->id, day);
    if (before && isDayBefore(*before, day, catalogue->calendar(instrument->market))) {
        return {before->close, false};
    }
    const std::optional<DaySummary> today = store.summary(instrument->id, day);
    if (!today) {
        return {};
    }
    if (today->source == BarSource::Simulated) {
        return {instrument->lastClose, false};
    }
    return today->open > 0.0 ? PreviousClose{today->open, true} : PreviousClose{};
}

} // namespace terminal
