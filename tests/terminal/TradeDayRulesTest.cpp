// The rules of an exchange and of money, checked on every record of every day of the demonstration. Everything that a
// record is compared with is worked out here anew, from the bars of the store and the rules alone.

#include "tests/support/Effort.h"
#include "tests/terminal/TradeFixture.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

using namespace terminal;

namespace {

/// How the instruments of the demonstration are traded.
struct Terms {
    double tick;
    int lot;
    double multiplier;
    bool future;
    bool sameDay; ///< may be sold on the day it was bought
    std::vector<std::pair<int, int>> sessions; ///< clock minutes, first and last end
};
const std::vector<std::pair<int, int>> kShareHours{{570, 690}, {781, 900}};
const std::vector<std::pair<int, int>> kGoldHours{{1261, 1440}, {0, 150}, {541, 615}, {631, 690}, {811, 900}};
const std::vector<std::pair<int, int>> kSteelHours{{1261, 1380}, {541, 615}, {631, 690}, {811, 900}};
const std::map<std::string, Terms> kTerms{{"SH600000", {0.01, 100, 1, false, false, kShareHours}},
                                          {"SH600519", {0.01, 100, 1, false, false, kShareHours}},
                                          {"SH510300", {0.001, 100, 1, false, false, kShareHours}},
                                          {"SZ000001", {0.01, 100, 1, false, false, kShareHours}},
                                          {"SZ300750", {0.01, 100, 1, false, false, kShareHours}},
                                          {"SH113050", {0.001, 10, 1, false, true, kShareHours}},
                                          {"CFFEXIF2612", {0.2, 1, 300, true, true, kShareHours}},
                                          {"SHFEAU2612", {0.02, 1, 1000, true, true, kGoldHours}},
                                          {"SHFERB2701", {1, 1, 10, true, true, kSteelHours}}};

/// What the accounts have in the morning.
const std::map<std::string, double> kCash{{"80010001", 5e6}, {"80020002", 3e6}, {"90010001", 6e6}};
const std::map<std::string, std::map<std::string, int>> kHeld{
    {"80010001", {{"SH600000", 80000}, {"SH600519", 1000}, {"SH510300", 500000}}},
    {"80020002", {{"SH600000", 90000}, {"SZ000001", 40000}, {"SZ300750", 4000}, {"SH113050", 600}}}};
constexpr double kMargin = 0.12;

/// One row of the store.
struct Row {
    std::string account;
    std::string key;
    std::string order;
    std::string instrument;
    qint64 time = 0;
    bool buy = false;
    int offset = 0;
    double price = 0.0;
    int volume = 0;
    int traded = 0;
    int status = 0;
    double commission = 0.0;

    const Terms &terms() const { return kTerms.at(instrument); }
    double amount() const { return price * volume * terms().multiplier; }
};

double feesOf(const Row &deal) {
    if (deal.terms().future) {
        return 0.000023 * deal.amount();
    }
    return std::max(0.00025 * deal.amount(), 5.0) + (deal.buy ? 0.0 : 0.0005 * deal.amount());
}

bool isOnTick(double price, double tick) {
    return std::abs(price / tick - std::round(price / tick)) < 1e-6;
}

qint64 minuteEndOf(qint64 time) {
    return (time + 59999) / 60000 * 60000;
}

/// An account that lives through a day's deals.
class Ledger {
public:
    explicit Ledger(const std::string &account) : mCash(kCash.at(account)) {
        const auto held = kHeld.find(account);
        if (held != kHeld.end()) {
            mSellable = held->second;
        }
    }
    void take(const Row &deal) {
        deal.terms().future ? takeFuture(deal) : takeShare(deal);
        mCash -= feesOf(deal);
        EXPECT_GE(mCash, 0.0) << deal.account << ' ' << deal.key;
    }
    void expectFlatFutures(const std::string &account) const {
        for (const auto &side : mOpened) {
            EXPECT_EQ(side.second.volume, 0) << account << ' ' << side.first.first << " after the close";
        }
    }

private:
    struct Position {
        int volume = 0;
        double cost = 0.0;
    };

    void takeShare(const Row &deal) {
        EXPECT_EQ(deal.offset, 0);
        mCash += deal.buy ? -deal.amount() : deal.amount();
        int &sellable = mSellable[deal.instrument];
        sellable += deal.buy ? (deal.terms().sameDay ? deal.volume : 0) : -deal.volume;
        EXPECT_GE(sellable, 0) << deal.account << ' ' << deal.key << " sells what may not be sold";
    }
    void takeFuture(const Row &deal) {
        ASSERT_TRUE(deal.offset == 48 || deal.offset == 49) << deal.key;
        const bool opens = deal.offset == 48;
        Position &position = mOpened[{deal.instrument, deal.buy == opens}];
        if (opens) {
            mCash -= kMargin * deal.amount();
            position.volume += deal.volume;
            position.cost += deal.amount();
            return;
        }
        ASSERT_GE(position.volume, deal.volume)
            << deal.account << ' ' << deal.key << " closes what is not open";
        const double cost = position.cost * deal.volume / position.volume;
        mCash += kMargin * cost + (deal.buy ? cost - deal.amount() : deal.amount() - cost);
        position.volume -= deal.volume;
        position.cost -= cost;
    }

    double mCash;
    std::map<std::string, int> mSellable;
    std::map<std::pair<std::string, bool>, Position> mOpened; ///< by instrument and whether it is long
};

class TradeDayRulesTest : public TradeFixture {
protected:
    /// Recording takes a while, so it is done once, and then the store is copied.
    static QString recorded() {
        static QTemporaryDir folder;
        return folder.filePath(QStringLiteral("recorded.db"));
    }
    void openDay() override {
        if (!QFile::exists(recorded())) {
            TradeFixture::openDay();
            return;
        }
        ASSERT_TRUE(QFile::copy(recorded(), storePath()));
        openStore();
        mClock.setTime(at(15, 35));
    }
    void SetUp() override {
        TradeFixture::SetUp();
        goTo(at(15, 35));
        recordPast();
        if (!QFile::exists(recorded())) {
            mTrade.reset(); // has written all
            ASSERT_TRUE(
                QSqlQuery(mStore.connection()).exec(QStringLiteral("VACUUM INTO '%1'").arg(recorded())));
            restart();
        }
    }
    std::vector<int> days() {
        std::vector<int> all;
        QSqlQuery query(mStore.connection());
        query.exec(QStringLiteral("SELECT DISTINCT day FROM trade_orders ORDER BY day"));
        while (query.next()) {
            all.push_back(query.value(0).toInt());
        }
        return all;
    }
    /// Orders or deals of a day, in the order of their times.
    std::vector<Row> rows(const char *question, int day) {
        std::vector<Row> all;
        QSqlQuery query(mStore.connection());
        query.prepare(QLatin1String(question));
        query.addBindValue(day);
        EXPECT_TRUE(query.exec());
        while (query.next()) {
            const auto text = [&](int column) { return query.value(column).toString().toStdString(); };
            Row row;
            row.account = text(0);
            row.key = text(1);
            row.order = text(2);
            row.instrument = text(3);
            row.time = query.value(4).toLongLong();
            row.buy = query.value(5).toInt() == 48;
            row.offset = query.value(6).toInt();
            row.price = query.value(7).toDouble();
            row.volume = query.value(8).toInt();
            row.traded = query.value(9).toInt();
            row.status = query.value(10).toInt();
            row.commission = query.value(9).toDouble();
            all.push_back(row);
        }
        return all;
    }
    std::vector<Row> orders(int day) {
        return rows("SELECT account, key, '', instrument, time, direction, offset_flag, price, volume, traded, "
                    "status FROM trade_orders WHERE day = ? ORDER BY time, key",
                    day);
    }
    std::vector<Row> deals(int day) {
        return rows("SELECT account, key, order_key, instrument, time, direction, offset_flag, price, volume, "
                    "commission, 0 FROM trade_deals WHERE day = ? ORDER BY time, key",
                    day);
    }
    /// The bars of an instrument's day by the ends of their minutes.
    const std::map<qint64, MinuteBar> &bars(const std::string &instrument, int day) {
        std::map<qint64, MinuteBar> &known = mBars[{instrument, day}];
        if (known.empty()) {
            for (const MinuteBar &bar : mExchange.dayBars(QString::fromStdString(instrument), day)) {
                known[minuteEndOf(bar.time)] = bar;
            }
        }
        return known;
    }

    /// What the deals of a day have come to at the end of a minute: bought, sold, profit, balance.
    std::array<double, 4> figuresAt(qint64 time, int day, const std::vector<Row> &deals) {
        std::array<double, 4> sums{};
        std::map<std::string, int> positions;
        double cash = 0.0;
        for (const Row &deal : deals) {
            if (minuteEndOf(deal.time) <= time) {
                sums[deal.buy ? 0 : 1] += deal.amount();
                positions[deal.instrument] += deal.buy ? deal.volume : -deal.volume;
                cash += (deal.buy ? -deal.amount() : deal.amount()) - feesOf(deal);
            }
        }
        for (const auto &position : positions) {
            const auto &known = bars(position.first, day);
            const auto after = known.upper_bound(time);
            EXPECT_NE(after, known.begin());
            sums[3] += position.second * std::prev(after)->second.price * kTerms.at(position.first).multiplier;
        }
        sums[2] = cash + sums[3];
        return sums;
    }
    /// Compares the curves of some instruments, minute by minute.
    static bool isNightMinute(qint64 time) {
        const int hour = minuteAt(time) / 60;
        return hour >= 20 || hour < 5;
    }
    void expectCurves(int day, const Keys &instruments, const std::vector<Row> &deals) {
        const auto amounts = mTrade->getTotalBuySellAmounts(instruments, kAllAccounts, {}, false);
        const auto profits = mTrade->getTotalProfits(instruments, kAllAccounts, {}, false);
        const auto balances = mTrade->getTotalBalances(instruments, kAllAccounts, {}, false);
        std::set<qint64> minutes;
        std::set<std::string> dealt;
        for (const Row &deal : deals) {
            minutes.insert(minuteEndOf(deal.time));
            if (dealt.insert(deal.instrument).second) {
                for (const auto &bar : bars(deal.instrument, day)) {
                    minutes.insert(bar.first);
                }
            }
        }
        // With an instrument that is not traded at night the curves have no night.
        const bool byDay = std::any_of(deals.begin(), deals.end(), [&](const Row &deal) {
            const auto traded = bars(deal.instrument, day);
            return !traded.empty() && !isNightMinute(traded.begin()->first);
        });
        for (auto minute = minutes.begin(); byDay && minute != minutes.end();) {
            minute = isNightMinute(*minute) ? minutes.erase(minute) : std::next(minute);
        }
        EXPECT_EQ(amounts.size(), minutes.size());
        EXPECT_EQ(profits.size(), minutes.size());
        EXPECT_EQ(balances.size(), minutes.size());
        for (const qint64 minute : minutes) {
            const int key = minuteAt(minute) == 0 ? 1440 : minuteAt(minute);
            const std::array<double, 4> expected = figuresAt(minute, day, deals);
            EXPECT_NEAR(amounts.at(key).first, expected[0], 1e-4) << key;
            EXPECT_NEAR(amounts.at(key).second, expected[1], 1e-4) << key;
            EXPECT_NEAR(profits.at(key), expected[2], 1e-4) << key;
            EXPECT_NEAR(balances.at(key), expected[3], 1e-4) << key;
        }
    }

    std::map<std::pair<std::string, int>, std::map<qint64, MinuteBar>> mBars;
};

} // namespace

TEST_F(TradeDayRulesTest, EveryDayOfTheStoreHasOrdersOfEveryInstrumentAndAccount) {
    const std::vector<int> all = days();
    EXPECT_EQ(all.size(), static_cast<size_t>(kFilledDays));
    for (const int day : all) {
        std::set<std::string> instruments, accounts;
        for (const Row &order : orders(day)) {
            instruments.insert(order.instrument);
            accounts.insert(order.account);
        }
        EXPECT_EQ(instruments.size(), kTerms.size()) << day;
        EXPECT_EQ(accounts, kAllAccounts) << day;
        EXPECT_GT(deals(day).size(), 60U) << day;
    }
}

TEST_F(TradeDayRulesTest, OrdersAreInLotsOnTheTickAndWithinTheSessions) {
    for (const int day : days()) {
        for (const Row &order : orders(day)) {
            EXPECT_EQ(order.volume % order.terms().lot, 0) << order.key;
            EXPECT_TRUE(isOnTick(order.price, order.terms().tick)) << order.key << ' ' << order.price;
            const int minute = minuteAt(minuteEndOf(order.time));
            const auto &sessions = order.terms().sessions;
            EXPECT_TRUE(std::any_of(
                sessions.begin(), sessions.end(),
                [minute](const auto &session) { return minute >= session.first && minute <= session.second; }))
                << order.instrument << ' ' << order.key << " at minute " << minute;
            EXPECT_LT(bars(order.instrument, day).begin()->first, order.time) << "before the first price";
        }
    }
}

TEST_F(TradeDayRulesTest, DealsAreInLotsOnTheTickAndWithinTheMinutesPrices) {
    size_t seen = 0;
    for (const int day : days()) {
        for (const Row &deal : deals(day)) {
            EXPECT_EQ(deal.volume % deal.terms().lot, 0) << deal.key;
            EXPECT_TRUE(isOnTick(deal.price, deal.terms().tick)) << deal.key << ' ' << deal.price;
            EXPECT_NEAR(deal.commission, feesOf(deal), 1e-6) << deal.key;
            const auto &known = bars(deal.instrument, day);
            const auto bar = known.find(minuteEndOf(deal.time));
            ASSERT_NE(bar, known.end()) << deal.instrument << ' ' << deal.key;
            EXPECT_LE(deal.price, bar->second.high + 1e-9) << deal.instrument << ' ' << deal.key;
            EXPECT_GE(deal.price, bar->second.low - 1e-9) << deal.instrument << ' ' << deal.key;
            EXPECT_GT(bar->second.volume, 0.0) << deal.key << " in a minute without trade";
            ++seen;
        }
    }
    EXPECT_GT(seen, 3000U);
}

TEST_F(TradeDayRulesTest, DealsBelongToTheirOrders) {
    for (const int day : days()) {
        std::map<std::pair<std::string, std::string>, Row> known;
        std::map<std::pair<std::string, std::string>, int> dealt;
        for (const Row &order : orders(day)) {
            known[{order.account, order.key}] = order;
        }
        for (const Row &deal : deals(day)) {
            const Row &order = known.at({deal.account, deal.order});
            dealt[{deal.account, deal.order}] += deal.volume;
            EXPECT_EQ(deal.instrument, order.instrument);
            EXPECT_EQ(deal.buy, order.buy);
            EXPECT_EQ(deal.offset, order.offset);
            EXPECT_GT(deal.time, order.time) << deal.key;
            EXPECT_TRUE(deal.buy ? deal.price <= order.price : deal.price >= order.price) << deal.key;
        }
        for (const auto &order : known) {
            EXPECT_EQ(order.second.traded, dealt[order.first]) << order.second.key;
            const int status = order.second.status;
            const bool filled = order.second.traded == order.second.volume;
            EXPECT_TRUE(status == (filled ? 2 : 3) || (status == 4 && order.second.traded == 0))
                << order.second.key << " is " << status;
        }
    }
}

TEST_F(TradeDayRulesTest, NothingIsSoldThatIsNotHeldAndTheMoneyNeverRunsOut) {
    for (const int day : days()) {
        std::map<std::string, Ledger> ledgers;
        for (const std::string &account : kAllAccounts) {
            ledgers.emplace(account, Ledger(account));
        }
        for (const Row &deal : deals(day)) {
            ledgers.at(deal.account).take(deal);
        }
        for (const auto &ledger : ledgers) {
            ledger.second.expectFlatFutures(ledger.first);
        }
    }
}

TEST_F(TradeDayRulesTest, CurvesAreThoseOfTheDealsOnEveryDay) {
    std::vector<int> all = days();
    std::reverse(all.begin(), all.end()); // a day that begins forgets those after it
    for (size_t i = 0; i < all.size(); i += tests::kStride) {
        const int day = all[i];
        mBars.clear();
        goTo(timeOf(dateOf(day), 902));
        wantFigures();
        const std::vector<Row> dealt = deals(day);
        ASSERT_FALSE(dealt.empty());
        Keys instruments;
        for (const auto &terms : kTerms) {
            std::vector<Row> own;
            std::copy_if(dealt.begin(), dealt.end(), std::back_inserter(own),
                         [&](const Row &deal) { return deal.instrument == terms.first; });
            expectCurves(day, {terms.first}, own);
            instruments.insert(terms.first);
        }
        expectCurves(day, instruments, dealt);
    }
}
