#include "terminal/trade/TradeBook.h"

#include <algorithm>

namespace terminal {
namespace {

/// Enters a record among those of a shelf and keeps the span of their prices.
template <class Record>
void enter(std::map<std::string, boost::shared_ptr<Record>> &records, TradeBook::Span &span,
           const boost::shared_ptr<Record> &record) {
    boost::shared_ptr<Record> &place = records[record->getKey()];
    const bool moved = place && place->mPrice != record->mPrice;
    place = record;
    if (moved) {
        span = {};
        for (const auto &entry : records) {
            span.add(entry.second->mPrice);
        }
    } else {
        span.add(record->mPrice);
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

void TradeBook::forgetOwn(const std::string &account) {
    for (auto &shelves : mLayers[static_cast<size_t>(TradeSource::Own)]) {
        shelves.second.erase(account);
    }
    for (auto task = mTasks.begin(); task != mTasks.end();) {
        task = task->second.account == account ? mTasks.erase(task) : std::next(task);
    }
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
