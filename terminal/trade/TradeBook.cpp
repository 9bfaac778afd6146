#include "terminal/trade/TradeBook.h"

#include <algorithm>

namespace terminal {
namespace {

template <class Records> TradeBook::Span spanOf(const Records &records) {
    TradeBook::Span span;
    for (const auto &entry : records) {
        span.add(entry.second->mPrice);
    }
    return span;
}

/// Enters a record among those of a shelf and keeps the span of their prices.
template <class Record>
void enter(std::map<std::string, boost::shared_ptr<Record>> &records, TradeBook::Span &span,
           const boost::shared_ptr<Record> &record) {
    boost::shared_ptr<Record> &place = records[record->getKey()];
    const bool moved = place && place->mPrice != record->mPrice;
    place = record;
    if (moved) {
        span = spanOf(records);
    } else {
        span.add(record->mPrice);
    }
}

/// Enters the records of another list, which keeps those that are replaced. Tells each pair of these before, the old one first.
template <class Records, class Tell> void takeAll(Records &records, Records &changes, Tell tell) {
    for (auto &change : changes) {
        const auto known = records.find(change.first);
        if (known != records.end()) {
            tell(known->second, change.second);
            std::swap(known->second, change.second);
        }
    }
    records.merge(changes);
}

template <class Records> void takeAll(Records &records, Records &changes) {
    takeAll(records, changes, [](const auto &, const auto &) {});
}

/// The same, and keeps the span of their prices.
template <class Records>
void takeAll(Records &records, TradeBook::Span &span, Records &changes, const TradeBook::Span &spanOfChanges) {
    bool moved = false;
    takeAll(records, changes, [&moved](const auto &known, const auto &change) {
        moved = moved || known->mPrice != change->mPrice;
    });
    if (moved) {
        span = spanOf(records);
    } else {
        span.add(spanOfChanges);
    }
}

} // namespace

void TradeBook::Span::add(double price) {
    lowest = lowest > 0.0 ? std::min(lowest, price) : price;
    highest = std::max(highest, price);
}

void TradeBook::Span::add(const Span &other) {
    if (other.highest > 0.0) {
        add(other.lowest);
        add(other.highest);
    }
}

void TradeBook::put(const TradeOrder &order) {
    Shelf &place = shelf(order.source, order.instrument, order.account);
    enter(place.orders, place.orderPrices, detailOf(order));
}

void TradeBook::put(const TradeDeal &deal) {
    Shelf &place = shelf(deal.source, deal.instrument, deal.account);
    enter(place.deals, place.dealPrices, detailOf(deal));
    place.figures[deal.key] = deal;
}

void TradeBook::put(const TradeTask &task) {
    const boost::shared_ptr<kvservice::CTaskDetail> detail = detailOf(task);
    for (const TradeTaskItem &item : task.items) {
        shelf(TradeSource::Own, item.instrument(), task.account).tasks[detail->getKey()] = detail;
    }
    mTasks[task.id] = task;
}

void TradeBook::put(const TradeChanges &changes) {
    for (const TradeTask &task : changes.tasks) {
        put(task);
    }
    for (const TradeOrder &order : changes.orders) {
        put(order);
    }
    for (const TradeDeal &deal : changes.deals) {
        put(deal);
    }
}

void TradeBook::take(TradeBook &changes) {
    for (size_t layer = 0; layer < mLayers.size(); ++layer) {
        for (auto &[instrument, shelves] : changes.mLayers[layer]) {
            for (auto &[account, change] : shelves) {
                Shelf &place = mLayers[layer][instrument][account];
                takeAll(place.orders, place.orderPrices, change.orders, change.orderPrices);
                takeAll(place.deals, place.dealPrices, change.deals, change.dealPrices);
                takeAll(place.tasks, change.tasks);
                takeAll(place.figures, change.figures);
            }
        }
    }
    takeAll(mTasks, changes.mTasks);
}

const TradeBook::Shelf *TradeBook::ownShelf(const std::string &instrument, const std::string &account) const {
    const Layer &own = mLayers[static_cast<size_t>(TradeSource::Own)];
    const auto shelves = own.find(instrument);
    if (shelves == own.end()) {
        return nullptr;
    }
    const auto found = shelves->second.find(account);
    return found == shelves->second.end() ? nullptr : &found->second;
}

void TradeBook::forgetImports() {
    mLayers[static_cast<size_t>(TradeSource::Imported)].clear();
}

TradeBook TradeBook::forgetOwn(const std::string &account) {
    TradeBook forgotten;
    constexpr auto kOwn = static_cast<size_t>(TradeSource::Own);
    for (auto &[instrument, shelves] : mLayers[kOwn]) {
        forgotten.mLayers[kOwn][instrument].insert(shelves.extract(account));
    }
    for (auto task = mTasks.begin(); task != mTasks.end();) {
        const auto next = std::next(task);
        if (task->second.account == account) {
            forgotten.mTasks.insert(mTasks.extract(task));
        }
        task = next;
    }
    return forgotten;
}

template <class Visit>
void TradeBook::forShelves(const std::string &instrument, const Keys &accounts, Visit visit) const {
    for (const Layer &layer : mLayers) {
        const auto shelves = layer.find(instrument);
        if (shelves == layer.end()) {
            continue;
        }
        for (const auto &shelf : shelves->second) {
            if (accounts.count(shelf.first) > 0) {
                visit(shelf.first, shelf.second);
            }
        }
    }
}

template <class Record, class List>
TradeBook::Records<Record> TradeBook::listed(const std::string &instrument, const Keys &accounts,
                                             List list) const {
    Records<Record> records;
    forShelves(instrument, accounts, [&](const std::string &account, const Shelf &shelf) {
        const auto &found = shelf.*list;
        if (!found.empty()) {
            records[account].insert(found.begin(), found.end());
        }
    });
    return records;
}

TradeBook::Records<kvservice::COrderDetail> TradeBook::orders(const std::string &instrument,
                                                              const Keys &accounts) const {
    return listed<kvservice::COrderDetail>(instrument, accounts, &Shelf::orders);
}

TradeBook::Records<kvservice::CDealDetail> TradeBook::deals(const std::string &instrument,
                                                            const Keys &accounts) const {
    return listed<kvservice::CDealDetail>(instrument, accounts, &Shelf::deals);
}

TradeBook::Records<kvservice::CTaskDetail> TradeBook::tasks(const std::string &instrument,
                                                            const Keys &accounts) const {
    return listed<kvservice::CTaskDetail>(instrument, accounts, &Shelf::tasks);
}

std::vector<TradeDeal> TradeBook::dealsOf(const std::string &instrument, const Keys &accounts,
                                          const Keys &strategies, bool filter) const {
    std::vector<TradeDeal> deals;
    forShelves(instrument, accounts, [&](const std::string &account, const Shelf &shelf) {
        const Shelf *own = ownShelf(instrument, account);
        for (const auto &deal : shelf.figures) {
            if (own && own != &shelf && own->deals.count(deal.first) > 0) {
                continue; // hidden
            }
            if (!filter || (!deal.second.strategy.empty() && strategies.count(deal.second.strategy) > 0)) {
                deals.push_back(deal.second);
            }
        }
    });
    return deals;
}

const TradeTask *TradeBook::task(int id) const {
    const auto found = mTasks.find(id);
    return found == mTasks.end() ? nullptr : &found->second;
}

TradeBook::Keys TradeBook::instruments() const {
    Keys keys;
    for (const Layer &layer : mLayers) {
        for (const auto &shelves : layer) {
            keys.insert(shelves.first);
        }
    }
    return keys;
}

TradeBook::Span TradeBook::orderSpan(const std::string &instrument, const Keys &accounts) const {
    Span span;
    forShelves(instrument, accounts,
               [&](const std::string &, const Shelf &shelf) { span.add(shelf.orderPrices); });
    return span;
}

TradeBook::Span TradeBook::dealSpan(const std::string &instrument, const Keys &accounts) const {
    Span span;
    forShelves(instrument, accounts,
               [&](const std::string &, const Shelf &shelf) { span.add(shelf.dealPrices); });
    return span;
}

} // namespace terminal
