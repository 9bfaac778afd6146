#pragma once

#include "host/services/CLinkageManager.h"
#include "terminal/trade/TradeRecords.h"

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace terminal {

/// The records of one trading day in memory. What it hands out is a copy of the lists; the records themselves are
/// never changed, a change puts a new one in the place. Not for several threads at once.
class TradeBook {
public:
    using Keys = TC::CLinkageManager::Keys;
    template <class Record> using Records = TC::CLinkageManager::Records<Record>;

    /// Enters a record, or replaces the one with its key. An own record hides an imported one with its key, which is
    /// the same record told by somebody else.
    void put(const TradeOrder &order);
    void put(const TradeDeal &deal);
    void put(const TradeTask &task);
    void put(const TradeChanges &changes);
    /// Enters all that another book holds, as if each record were put, without making one anew; that book keeps what was
    /// replaced.
    void take(TradeBook &changes);

    /// Whether nothing was put in, or all of it was imported and forgotten again.
    bool isEmpty() const { return mLayers[0].empty() && mLayers[1].empty() && mTasks.empty(); }

    void forgetImports();
    /// Drops the own records of an account, and answers them.
    TradeBook forgetOwn(const std::string &account);

    Records<kvservice::COrderDetail> orders(const std::string &instrument, const Keys &accounts) const;
    Records<kvservice::CDealDetail> deals(const std::string &instrument, const Keys &accounts) const;
    Records<kvservice::CTaskDetail> tasks(const std::string &instrument, const Keys &accounts) const;
    /// The deals that figures are made of: of these accounts and, with `filter`, these strategies alone.
    std::vector<TradeDeal> dealsOf(const std::string &instrument, const Keys &accounts, const Keys &strategies,
                                   bool filter) const;
    /// The task of an id, or null.
    const TradeTask *task(int id) const;
    /// Instruments that have or had records.
    Keys instruments() const;

    /// Lowest and highest price; 0 and 0 of none.
    struct Span {
        double lowest = 0.0;
        double highest = 0.0;
        void add(double price);
        void add(const Span &other);
    };
    Span orderSpan(const std::string &instrument, const Keys &accounts) const;
    Span dealSpan(const std::string &instrument, const Keys &accounts) const;

private:
    /// The records of one account in one instrument.
    struct Shelf {
        std::map<std::string, boost::shared_ptr<kvservice::COrderDetail>> orders;
        std::map<std::string, boost::shared_ptr<kvservice::CDealDetail>> deals;
        std::map<std::string, boost::shared_ptr<kvservice::CTaskDetail>> tasks;
        std::map<std::string, TradeDeal> figures; ///< the deals once more, with all that the figures need
        Span orderPrices;
        Span dealPrices;
    };
    using Layer = std::map<std::string, std::map<std::string, Shelf>>; ///< by instrument and account

    Shelf &shelf(TradeSource source, const std::string &instrument, const std::string &account) {
        return mLayers[static_cast<size_t>(source)][instrument][account];
    }
    const Shelf *ownShelf(const std::string &instrument, const std::string &account) const;
    template <class Visit>
    void forShelves(const std::string &instrument, const Keys &accounts, Visit visit) const;
    template <class Record, class List>
    Records<Record> listed(const std::string &instrument, const Keys &accounts, List list) const;

    std::array<Layer, 2> mLayers; ///< by TradeSource
    std::map<int, TradeTask> mTasks;
};

} // namespace terminal
