#include "terminal/trade/TradeBatch.h"

#include <algorithm>
#include <iterator>

namespace terminal {
namespace {

template <class Record, class Condition> void drop(std::vector<Record> &records, Condition isDropped) {
    records.erase(std::remove_if(records.begin(), records.end(), isDropped), records.end());
}

template <class Record> void add(std::vector<Record> &records, std::vector<Record> &more) {
    records.insert(records.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace

bool TradeBatch::isEmpty() const {
    return !forgetImports && forgottenDays.empty() && accounts.empty() && changes.isEmpty() &&
           cancels.empty() && finishedDays.empty();
}

void TradeBatch::append(TradeBatch later) {
    if (later.forgetImports) {
        const auto isImported = [](const auto &record) { return record.source == TradeSource::Imported; };
        drop(accounts, isImported);
        drop(changes.orders, isImported);
        drop(changes.deals, isImported);
        forgetImports = true;
    }
    if (!later.forgottenDays.empty()) {
        const auto isForgotten = [&](const auto &record) {
            return later.forgottenDays.count({record.account, record.day}) > 0;
        };
        const auto isOwn = [](const auto &record) { return record.source == TradeSource::Own; };
        drop(changes.orders, [&](const TradeOrder &order) { return isOwn(order) && isForgotten(order); });
        drop(changes.deals, [&](const TradeDeal &deal) { return isOwn(deal) && isForgotten(deal); });
        drop(changes.tasks, isForgotten);
        for (const AccountDay &day : later.forgottenDays) {
            finishedDays.erase(day);
            forgottenDays.insert(day);
        }
    }
    add(accounts, later.accounts);
    add(changes.orders, later.changes.orders);
    add(changes.deals, later.changes.deals);
    add(changes.tasks, later.changes.tasks);
    add(cancels, later.cancels);
    finishedDays.insert(later.finishedDays.begin(), later.finishedDays.end());
}

} // namespace terminal
