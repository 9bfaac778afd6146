#include "terminal/trade/TradeBook.h"

#include <gtest/gtest.h>

#include <random>

using namespace terminal;

namespace {

const std::string kAccounts[] = {"a1", "a2"};
const std::string kInstruments[] = {"SH600000", "SZ000001"};

TradeOrder orderOf(int key, const std::string &account, const std::string &instrument, double price,
                   int status) {
    TradeOrder order;
    order.account = account;
    order.key = std::to_string(key);
    order.instrument = instrument;
    order.price = price;
    order.volume = 100;
    order.status = status;
    return order;
}

TradeDeal dealOf(int key, const std::string &account, const std::string &instrument, double price) {
    TradeDeal deal;
    deal.account = account;
    deal.key = std::to_string(key);
    deal.instrument = instrument;
    deal.price = price;
    deal.volume = 100;
    return deal;
}

TradeTask taskOf(int id, const std::string &account, const std::string &instrument, int finished) {
    TradeTask task;
    task.id = id;
    task.account = account;
    task.status = finished;
    TradeTaskItem item;
    item.market = instrument.substr(0, 2);
    item.code = instrument.substr(2);
    item.finished = finished;
    task.items.push_back(item);
    return task;
}

/// What a book tells, as one text.
std::string told(const TradeBook &book) {
    const TradeBook::Keys accounts(std::begin(kAccounts), std::end(kAccounts));
    std::string text;
    const auto line = [&text](auto... parts) {
        ((text += parts + std::string(" ")), ...);
        text += '\n';
    };
    const auto number = [](double value) { return std::to_string(value); };
    for (const std::string &instrument : kInstruments) {
        for (const auto &[account, orders] : book.orders(instrument, accounts)) {
            for (const auto &[key, order] : orders) {
                line(instrument, account, key, number(order->mPrice), number(order->mStatus));
            }
        }
        for (const auto &[account, deals] : book.deals(instrument, accounts)) {
            for (const auto &[key, deal] : deals) {
                line(instrument, account, key, number(deal->mPrice));
            }
        }
        for (const auto &[account, tasks] : book.tasks(instrument, accounts)) {
            for (const auto &[key, task] : tasks) {
                line(instrument, account, key, number(task->mStatus));
            }
        }
        for (const TradeDeal &deal : book.dealsOf(instrument, accounts, {}, false)) {
            line(deal.key, deal.account, number(deal.price));
        }
        const TradeBook::Span orders = book.orderSpan(instrument, accounts);
        const TradeBook::Span deals = book.dealSpan(instrument, accounts);
        line(number(orders.lowest), number(orders.highest), number(deals.lowest), number(deals.highest));
    }
    for (int id = 0; id < 4; ++id) {
        if (const TradeTask *task = book.task(id)) {
            line(number(id), task->account, number(task->items.front().finished));
        }
    }
    for (const std::string &instrument : book.instruments()) {
        line(instrument);
    }
    return text;
}

} // namespace

TEST(TradeBook, TakesWhatAnotherHoldsAndLeavesWhatThatReplaced) {
    TradeBook book;
    book.put(orderOf(1, "a1", "SH600000", 10.0, 1));
    book.put(orderOf(2, "a1", "SH600000", 12.0, 1));
    TradeBook changes;
    changes.put(orderOf(2, "a1", "SH600000", 11.0, 2)); // moved down: 12 is no price of any order now
    changes.put(orderOf(3, "a1", "SH600000", 9.0, 1));
    book.take(changes);
    const auto orders = book.orders("SH600000", {"a1"}).at("a1");
    ASSERT_EQ(orders.size(), 3u);
    EXPECT_EQ(orders.at("1")->mPrice, 10.0);
    EXPECT_EQ(orders.at("2")->mPrice, 11.0);
    EXPECT_EQ(orders.at("3")->mPrice, 9.0);
    EXPECT_EQ(book.orderSpan("SH600000", {"a1"}).lowest, 9.0);
    EXPECT_EQ(book.orderSpan("SH600000", {"a1"}).highest, 11.0);
    const auto replaced = changes.orders("SH600000", {"a1"}).at("a1");
    ASSERT_EQ(replaced.size(), 1u);
    EXPECT_EQ(replaced.at("2")->mPrice, 12.0);
}

TEST(TradeBook, TakesWhatItWouldBePut) {
    std::mt19937 random(20261123);
    const auto below = [&random](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    for (int round = 0; round < 200; ++round) {
        TradeBook put;
        TradeBook taken;
        for (int piece = 0; piece < 4; ++piece) {
            TradeChanges changes;
            for (int i = below(6); i > 0; --i) {
                const std::string &account = kAccounts[below(2)];
                const std::string &instrument = kInstruments[below(2)];
                changes.orders.push_back(orderOf(below(5), account, instrument, 9.0 + below(9), below(3)));
                changes.orders.back().source = below(4) == 0 ? TradeSource::Imported : TradeSource::Own;
                changes.deals.push_back(dealOf(below(5), account, instrument, 9.0 + below(9)));
                changes.deals.back().source = below(4) == 0 ? TradeSource::Imported : TradeSource::Own;
                changes.tasks.push_back(taskOf(below(4), account, instrument, below(100)));
            }
            put.put(changes);
            TradeBook other;
            other.put(changes);
            taken.take(other);
            ASSERT_EQ(told(taken), told(put)) << "round " << round << ", piece " << piece;
        }
        const std::string &account = kAccounts[below(2)];
        const TradeBook forgotten = put.forgetOwn(account);
        taken.forgetOwn(account);
        ASSERT_EQ(told(taken), told(put)) << "round " << round;
    }
}

TEST(TradeBook, AnswersTheOwnRecordsThatItForgets) {
    TradeBook book;
    book.put(orderOf(1, "a1", "SH600000", 10.0, 1));
    book.put(orderOf(2, "a2", "SH600000", 12.0, 1));
    TradeOrder imported = orderOf(3, "a1", "SH600000", 11.0, 1);
    imported.source = TradeSource::Imported;
    book.put(imported);
    book.put(taskOf(1, "a1", "SZ000001", 5));
    book.put(taskOf(2, "a2", "SZ000001", 6));
    const TradeBook forgotten = book.forgetOwn("a1");
    EXPECT_EQ(forgotten.orders("SH600000", {"a1", "a2"}).at("a1").count("1"), 1u);
    EXPECT_EQ(forgotten.orders("SH600000", {"a2"}).size(), 0u);
    EXPECT_NE(forgotten.task(1), nullptr);
    EXPECT_EQ(forgotten.task(2), nullptr);
    EXPECT_EQ(book.orders("SH600000", {"a1"}).at("a1").size(), 1u) << "the imported one";
    EXPECT_EQ(book.orders("SH600000", {"a2"}).at("a2").size(), 1u);
    EXPECT_EQ(book.task(1), nullptr);
    EXPECT_NE(book.task(2), nullptr);
}
