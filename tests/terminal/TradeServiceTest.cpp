#include "terminal/trade/TradeFigures.h"
#include "tests/support/MessageGuard.h"
#include "tests/terminal/TradeFixture.h"

#include <QSqlQuery>
#include <QVariant>

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <thread>

using namespace terminal;

namespace {

class TradeServiceTest : public TradeFixture {};

int minuteOfClock(const std::string &time) {
    const QTime clock = QTime::fromString(QString::fromStdString(time), QStringLiteral("hh:mm:ss"));
    return clock.hour() * 60 + clock.minute() + (clock.second() > 0 ? 1 : 0);
}

} // namespace

TEST_F(TradeServiceTest, AccountsAreKnownByTypeIdAndName) {
    EXPECT_TRUE(mTrade->isEnabled());
    EXPECT_EQ(mTrade->getAccountIds(2), (std::vector<std::string>{"80010001", "80020002"}));
    EXPECT_EQ(mTrade->getAccountIds(1), (std::vector<std::string>{"90010001"}));
    EXPECT_TRUE(mTrade->getAccountIds(3).empty());
    EXPECT_EQ(mTrade->getAccounts().size(), 3U);
    Keys found;
    EXPECT_TRUE(mTrade->getAccounts(
        {QStringLiteral("80010001"), QStringLiteral("期货一号"), QStringLiteral("?")}, found));
    EXPECT_EQ(found, (Keys{"80010001", "90010001"}));
    Keys none{"80020002"}; // of an earlier question
    EXPECT_FALSE(mTrade->getAccounts({QStringLiteral("nobody")}, none));
    EXPECT_TRUE(none.empty());
}

TEST_F(TradeServiceTest, NothingIsTradedBeforeTheMarketOpens) {
    wantFigures();
    goTo(at(9, 29));
    EXPECT_TRUE(mTrade->getOrderDetails(mDay, kShare, kAllAccounts).empty());
    EXPECT_TRUE(mTrade->getTotalProfits({kShare}, kAllAccounts, {}, false).empty());
    EXPECT_EQ(mTrade->getOrderAmplitude({kShare}, kAllAccounts), 0.0);
}

TEST_F(TradeServiceTest, DayHasOrdersOfEveryFateAndTasks) {
    goTo(at(15, 2));
    std::set<int> fates;
    int partly = 0;
    for (const std::string &key : mTrade->getStocks()) {
        for (const auto &order : flat(mTrade->getOrderDetails(mDay, key, kAllAccounts))) {
            fates.insert(order->mStatus);
            partly += order->mTradedVolume > 0 && order->mTradedVolume < order->mVolume;
        }
    }
    EXPECT_EQ(fates,
              (std::set<int>{kvservice::eOrderFilled, kvservice::eOrderCancelled, kvservice::eOrderRejected}));
    EXPECT_GT(partly, 0);
    const auto task = firstTask(kShare, "80010001");
    ASSERT_TRUE(task);
    EXPECT_TRUE(task->mStatus == kvservice::eTaskFinished || task->mStatus == kvservice::eTaskExpired);
    EXPECT_GE(mTrade->getStrategys().size(), 4U);
}

TEST_F(TradeServiceTest, RecordsAreConsistentAllDay) {
    for (qint64 time = at(9, 31); time <= at(15, 2); time += 17 * 60000) {
        goTo(time);
        for (const std::string &key : mTrade->getStocks()) {
            std::map<std::string, int> dealt;
            for (const auto &deal : flat(mTrade->getDealDetails(mDay, key, kStockAccounts))) {
                dealt[deal->mAccount + deal->mDealKey.substr(0, deal->mDealKey.rfind('-'))] += deal->mVolume;
                EXPECT_DOUBLE_EQ(deal->mAmount, deal->mPrice * deal->mVolume);
                EXPECT_LE(minuteOfClock(deal->mTime), minuteAt(time));
            }
            for (const auto &order : flat(mTrade->getOrderDetails(mDay, key, kStockAccounts))) {
                EXPECT_LE(order->mTradedVolume, order->mVolume);
                EXPECT_EQ(order->mTradedVolume, dealt[order->mAccount + order->mOrderKey]) << order->mOrderKey;
                EXPECT_EQ(order->mStatus == kvservice::eOrderFilled, order->mTradedVolume == order->mVolume);
            }
        }
    }
}

TEST_F(TradeServiceTest, DealsLieWithinTheirMinutesPrices) {
    goTo(at(15, 2));
    int seen = 0;
    for (const std::string &key : mTrade->getStocks()) {
        std::map<int, MinuteBar> bars;
        for (const MinuteBar &bar : mExchange.dayBars(QString::fromStdString(key), mDay)) {
            bars[minuteAt(bar.time)] = bar;
        }
        for (const auto &deal : flat(mTrade->getDealDetails(mDay, key, kStockAccounts))) {
            const auto bar = bars.find(minuteOfClock(deal->mTime));
            ASSERT_NE(bar, bars.end()) << key << deal->mTime;
            EXPECT_LE(deal->mPrice, bar->second.high + 1e-9) << key << deal->mTime;
            EXPECT_GE(deal->mPrice, bar->second.low - 1e-9) << key << deal->mTime;
            ++seen;
        }
    }
    EXPECT_GT(seen, 50);
}

TEST_F(TradeServiceTest, ADayThatIsReadAheadNeedsTheStoreNoMore) {
    const int past = dayOf(mDate.addDays(-1));
    goTo(at(9, 26));
    recordPast();
    const std::vector<OrderState> recorded = orderStates(past, kShare);
    ASSERT_FALSE(recorded.empty());
    restart();
    mTrade->readAhead(past); // nobody is there yet who reads
    mTrade->start();
    mTrade->readAhead(past);
    mTrade->readAhead(past);
    mTrade->stop();
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(query.exec(QStringLiteral("ALTER TABLE trade_orders RENAME TO elsewhere")));
    EXPECT_EQ(orderStates(past, kShare), recorded);
    ASSERT_TRUE(query.exec(QStringLiteral("ALTER TABLE elsewhere RENAME TO trade_orders")));
}

TEST_F(TradeServiceTest, ADayThatCouldNotBeReadAheadIsReadTheNextTime) {
    const int past = dayOf(mDate.addDays(-1));
    goTo(at(9, 26));
    recordPast();
    const std::vector<OrderState> recorded = orderStates(past, kShare);
    ASSERT_FALSE(recorded.empty());
    restart();
    goTo(at(9, 26));
    const auto readAheadBy = [&](const char *statement) {
        QSqlQuery query(mStore.connection());
        EXPECT_TRUE(query.exec(QString::fromLatin1(statement)));
        mTrade->start();
        mTrade->readAhead(past);
        mTrade->stop();
    };
    {
        const tests::ExpectMessages told("no such table: trade_orders");
        readAheadBy("ALTER TABLE trade_orders RENAME TO elsewhere");
    }
    readAheadBy("ALTER TABLE elsewhere RENAME TO trade_orders");
    QSqlQuery query(mStore.connection());
    ASSERT_TRUE(query.exec(QStringLiteral("ALTER TABLE trade_orders RENAME TO elsewhere")));
    EXPECT_EQ(orderStates(past, kShare), recorded);
    ASSERT_TRUE(query.exec(QStringLiteral("ALTER TABLE elsewhere RENAME TO trade_orders")));
}

TEST_F(TradeServiceTest, SameRecordsAtWhateverPaceAndStart) {
    for (qint64 time = at(9, 25); time < at(13, 20); time += 47000) {
        goTo(time);
    }
    goTo(at(13, 20));
    const auto orders = orderStates(mDay, kShare);
    const auto deals = dealStates(mDay, kShare);
    ASSERT_FALSE(deals.empty());
    restart();
    goTo(at(13, 20)); // in the middle of the day, at once
    EXPECT_EQ(orderStates(mDay, kShare), orders);
    EXPECT_EQ(dealStates(mDay, kShare), deals);
}

TEST_F(TradeServiceTest, ClockThatGoesBackTakesTheRecordsBack) {
    goTo(at(10, 30));
    const auto early = orderStates(mDay, kShare);
    goTo(at(14, 0));
    EXPECT_GT(orderStates(mDay, kShare).size(), early.size());
    goTo(at(10, 30));
    EXPECT_EQ(orderStates(mDay, kShare), early);
    restart();
    EXPECT_EQ(orderStates(mDay, kShare), early); // nothing of the afternoon is left in the store
}

TEST_F(TradeServiceTest, RecordOnceHandedOutNeverChanges) {
    goTo(at(9, 50));
    const Orders before = mTrade->getOrderDetails(mDay, kShare, kAllAccounts);
    const auto task = firstTask(kShare, "80010001");
    const auto copy = states(before);
    ASSERT_FALSE(copy.empty());
    ASSERT_TRUE(task);
    const int status = task->mStatus;
    goTo(at(15, 2));
    EXPECT_EQ(states(before), copy);
    EXPECT_EQ(task->mStatus, status);
    EXPECT_NE(firstTask(kShare, "80010001")->mStatus, status);
}

TEST_F(TradeServiceTest, PastDaysAreRecordedAndSurviveARestart) {
    goTo(at(10, 30));
    recordPast();
    const int past = dayOf(QDate(2026, 11, 18));
    const auto orders = orderStates(past, kShare);
    const auto deals = dealStates(past, kShare);
    EXPECT_GT(orders.size(), 20U);
    EXPECT_GT(deals.size(), 10U);
    restart();
    EXPECT_EQ(orderStates(past, kShare), orders);
    EXPECT_EQ(dealStates(past, kShare), deals);
    goTo(at(10, 31));
    EXPECT_FALSE(mTrade->recordPastDay());
}

TEST_F(TradeServiceTest, DayThatWasLeftInTheMiddleIsCompletedLater) {
    goTo(at(10, 30));
    recordPast();
    const size_t early = orderStates(mDay, kShare).size();
    restart();
    const QDate monday(2026, 11, 23);
    ASSERT_EQ(fillStore(mStore, timeOf(monday, 10 * 60)).toStdString(), "");
    mClock.setTime(timeOf(monday, 10 * 60));
    mTrade->advance();
    EXPECT_TRUE(mTrade->recordPastDay());
    recordPast();
    EXPECT_GT(orderStates(mDay, kShare).size(), early);
    for (const auto &order : flat(mTrade->getOrderDetails(mDay, kShare, kAllAccounts))) {
        EXPECT_GT(order->mStatus, kvservice::eOrderPartlyFilled) << "still open after its day";
    }
}

TEST_F(TradeServiceTest, NewTradingDayIsTold) {
    std::vector<std::string> days;
    mTrade->sigNewTradingDay.connect([&](const std::string &day) { days.push_back(day); });
    goTo(at(15, 30));
    EXPECT_TRUE(days.empty());
    const QDate monday(2026, 11, 23);
    ASSERT_EQ(fillStore(mStore, timeOf(monday, 10 * 60)).toStdString(), "");
    mClock.setTime(timeOf(monday, 10 * 60));
    mTrade->advance();
    EXPECT_EQ(days, std::vector<std::string>{"20261123"}); // once, for all accounts
}

TEST_F(TradeServiceTest, NightSessionIsTheFuturesNewTradingDay) {
    goTo(at(15, 30));
    std::vector<std::string> days;
    mTrade->sigNewTradingDay.connect([&](const std::string &day) { days.push_back(day); });
    goTo(at(21, 0));
    EXPECT_EQ(days, std::vector<std::string>{"20261123"});
    goTo(at(21, 30));
    EXPECT_EQ(days.size(), 1U);
}

TEST_F(TradeServiceTest, NightSessionBelongsToTheFollowingDay) {
    goTo(at(21, 30));
    const int monday = dayOf(QDate(2026, 11, 23));
    int atNight = 0;
    for (const auto &order : flat(mTrade->getOrderDetails(monday, "SHFEAU2612", kAllAccounts))) {
        atNight += order->mTime > "21:00:00";
        EXPECT_EQ(order->mDate, "20261120");
    }
    EXPECT_GT(atNight, 0);
    EXPECT_TRUE(mTrade->getOrderDetails(monday, kShare, kAllAccounts).empty());
    const auto totals = mTrade->getTotalBuySellAmounts({"SHFEAU2612"}, kAllAccounts, {}, false);
    ASSERT_FALSE(totals.empty());
    EXPECT_GE(totals.begin()->first, 1260);
}

TEST_F(TradeServiceTest, TotalsAreThoseOfTheDeals) {
    goTo(at(14, 10));
    double bought = 0.0, sold = 0.0;
    for (const auto &deal : flat(mTrade->getDealDetails(mDay, kShare, kStockAccounts))) {
        (deal->mDirection == 48 ? bought : sold) += deal->mAmount;
    }
    const auto totals = mTrade->getTotalBuySellAmounts({kShare}, kStockAccounts, {}, false);
    ASSERT_FALSE(totals.empty());
    EXPECT_NEAR(totals.rbegin()->second.first, bought, 1e-6);
    EXPECT_NEAR(totals.rbegin()->second.second, sold, 1e-6);
    EXPECT_EQ(totals.rbegin()->first, 850); // 14:10
    EXPECT_EQ(totals.begin()->first, 570);
    double previous = 0.0;
    for (const auto &at : totals) {
        EXPECT_GE(at.second.first, previous);
        previous = at.second.first;
    }
}

TEST_F(TradeServiceTest, BalanceIsTheNetPositionAtTheMinutesPrice) {
    wantFigures();
    goTo(at(11, 0));
    std::map<int, double> price;
    for (const MinuteBar &bar : mExchange.dayBars(QString::fromStdString(kShare), mDay)) {
        price[minuteAt(bar.time)] = bar.price;
    }
    const auto deals = flat(mTrade->getDealDetails(mDay, kShare, {"80020002"}));
    ASSERT_FALSE(deals.empty());
    const auto balances = mTrade->getTotalBalances({kShare}, {"80020002"}, {}, false);
    const auto profits = mTrade->getTotalProfits({kShare}, {"80020002"}, {}, false);
    for (const int minute : {571, 600, 630, 655}) {
        double position = 0.0, cash = 0.0, fees = 0.0;
        for (const auto &deal : deals) {
            if (minuteOfClock(deal->mTime) <= minute) {
                const bool buy = deal->mDirection == 48;
                position += buy ? deal->mVolume : -deal->mVolume;
                cash += buy ? -deal->mAmount : deal->mAmount;
                fees += std::max(0.00025 * deal->mAmount, 5.0) + (buy ? 0.0 : 0.0005 * deal->mAmount);
            }
        }
        EXPECT_NEAR(balances.at(minute), position * price[minute], 1e-6) << minute;
        EXPECT_NEAR(profits.at(minute), cash + position * price[minute] - fees, 1e-6) << minute;
    }
}

TEST_F(TradeServiceTest, FilterTakesTheStrategiesDealsAlone) {
    goTo(at(14, 30));
    double ofStrategy = 0.0, all = 0.0;
    for (const auto &deal : flat(mTrade->getDealDetails(mDay, kShare, kStockAccounts))) {
        all += deal->mDirection == 48 ? deal->mAmount : 0.0;
        const bool matches = deal->mCommand && deal->mCommand->mStrategyName == "TWAP拆单";
        ofStrategy += matches && deal->mDirection == 48 ? deal->mAmount : 0.0;
    }
    ASSERT_GT(ofStrategy, 0.0);
    ASSERT_LT(ofStrategy, all);
    const Keys one{"TWAP拆单"};
    wantFigures();
    EXPECT_NEAR(mTrade->getTotalBuySellAmounts({kShare}, kStockAccounts, one, true).rbegin()->second.first,
                ofStrategy, 1e-6);
    EXPECT_NEAR(mTrade->getTotalBuySellAmounts({kShare}, kStockAccounts, one, false).rbegin()->second.first,
                all, 1e-6);
    EXPECT_TRUE(mTrade->getTotalProfits({kShare}, kStockAccounts, {}, true).empty());
    EXPECT_TRUE(mTrade->getTotalProfits({kShare}, {}, {}, false).empty());
}

TEST_F(TradeServiceTest, AmplitudesAreThoseOfTheFarthestPrices) {
    goTo(at(14, 30));
    const int friday = mDay;
    const double close = TC::CSingletonT<TC::CStockManager>::instance().getCurrentDateLastClose(
        QString::fromStdString(kShare), friday);
    double orders = 0.0, deals = 0.0;
    for (const auto &order : flat(mTrade->getOrderDetails(friday, kShare, kStockAccounts))) {
        orders = std::max(orders, std::abs(order->mPrice - close) / close);
    }
    for (const auto &deal : flat(mTrade->getDealDetails(friday, kShare, kStockAccounts))) {
        deals = std::max(deals, std::abs(deal->mPrice - close) / close);
    }
    ASSERT_GT(deals, 0.0);
    EXPECT_DOUBLE_EQ(mTrade->getOrderAmplitude({kShare}, kStockAccounts), orders);
    EXPECT_DOUBLE_EQ(mTrade->getDealAmplitude({kShare, "nothing"}, kStockAccounts), deals);
    EXPECT_EQ(mTrade->getDealAmplitude({kShare}, {"nobody"}), 0.0);
}

TEST_F(TradeServiceTest, TaskGrowsUntilItIsDone) {
    goTo(at(10, 0));
    const auto task = firstTask(kShare, "80010001");
    ASSERT_TRUE(task);
    EXPECT_EQ(task->mStatus, kvservice::eTaskRunning);
    const long long early = mTrade->getTaskItemFinishNumber(task, kShare);
    goTo(at(10, 40));
    const long long later = mTrade->getTaskItemFinishNumber(task, kShare);
    EXPECT_GT(later, early);
    EXPECT_LE(later, task->mItems.front()->mQuantity);
    EXPECT_EQ(mTrade->getTaskItemFinishNumber(task, "SZ000001"), 0);
    EXPECT_EQ(mTrade->getTaskItemFinishNumber(nullptr, kShare), 0);
    long long dealt = 0;
    for (const auto &deal : flat(mTrade->getDealDetails(mDay, kShare, {"80010001"}))) {
        dealt += deal->mCommand && deal->mCommand->mCommandId == task->mCommand->mCommandId ? deal->mVolume : 0;
    }
    EXPECT_EQ(later, dealt);
}

TEST_F(TradeServiceTest, CancelledTaskStopsAndStaysCancelled) {
    goTo(at(10, 0));
    const auto task = firstTask(kShare, "80010001");
    std::set<std::string> told;
    mTrade->sigTaskChanged.connect(
        [&](const std::vector<std::string> &keys) { told.insert(keys.begin(), keys.end()); });
    mTrade->cancelTask(task->mTaskId, QStringLiteral("test"));
    mTrade->advance();
    EXPECT_EQ(told.count(kShare), 1U);
    const auto cancelled = firstTask(kShare, "80010001");
    EXPECT_EQ(cancelled->mStatus, kvservice::eTaskCancelled);
    EXPECT_EQ(cancelled->mCancelTime, static_cast<int>(at(10, 0) / 1000));
    EXPECT_EQ(cancelled->mEndTime, TC::kUnsetTime);
    EXPECT_EQ(cancelled->mCommand->mCancelDisabled, 1);
    const long long finished = mTrade->getTaskItemFinishNumber(cancelled, kShare);
    goTo(at(14, 0));
    EXPECT_EQ(mTrade->getTaskItemFinishNumber(cancelled, kShare), finished);
    for (const auto &order : flat(mTrade->getOrderDetails(mDay, kShare, {"80010001"}))) {
        if (order->mCommand && order->mCommand->mCommandId == task->mCommand->mCommandId) {
            EXPECT_GT(order->mStatus, kvservice::eOrderPartlyFilled);
        }
    }
    const auto afternoon = orderStates(mDay, kShare);
    restart();
    goTo(at(14, 0));
    EXPECT_EQ(orderStates(mDay, kShare), afternoon);
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, kvservice::eTaskCancelled);
}

TEST_F(TradeServiceTest, CancellationIsThereAtOnceAfterARestart) {
    goTo(at(10, 0, 40));
    mTrade->cancelTask(firstTask(kShare, "80010001")->mTaskId, QStringLiteral("test"));
    mTrade->advance();
    const auto orders = orderStates(mDay, kShare);
    restart();
    goTo(at(10, 0, 40)); // no further minute has settled
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, kvservice::eTaskCancelled);
    EXPECT_EQ(orderStates(mDay, kShare), orders);
}

TEST_F(TradeServiceTest, CancellationIsMadeAgainAtItsTimeWhenTheClockGoesBack) {
    goTo(at(10, 20, 10));
    mTrade->cancelTask(firstTask(kShare, "80010001")->mTaskId, QStringLiteral("test"));
    mTrade->advance();
    const auto orders = orderStates(mDay, kShare);
    restart();
    goTo(at(10, 0)); // before it was cancelled
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, kvservice::eTaskRunning);
    goTo(at(10, 20, 9));
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, kvservice::eTaskRunning);
    goTo(at(10, 20, 10));
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, kvservice::eTaskCancelled);
    EXPECT_EQ(firstTask(kShare, "80010001")->mCancelTime, static_cast<int>(at(10, 20, 10) / 1000));
    EXPECT_EQ(orderStates(mDay, kShare), orders);
}

TEST_F(TradeServiceTest, EarlierCancellationTakesThePlaceOfALaterOne) {
    for (const int minute : {20, 5}) {
        restart();
        goTo(at(10, minute));
        mTrade->cancelTask(firstTask(kShare, "80010001")->mTaskId, QStringLiteral("test"));
        mTrade->advance();
    }
    restart();
    goTo(at(10, 30));
    EXPECT_EQ(firstTask(kShare, "80010001")->mCancelTime, static_cast<int>(at(10, 5) / 1000));
}

TEST_F(TradeServiceTest, InstrumentOfATaskAloneIsAmongTheStocks) {
    TradeTask task;
    task.id = 4711;
    task.account = "80010001";
    task.day = dayOf(QDate(2026, 11, 2));
    task.items = {{"SZ", "002594", kvservice::EOperationType::Buy, 11, 100.0, 500, 0}};
    TradeBatch batch;
    batch.changes.tasks = {task};
    mTrade->advance();
    ASSERT_EQ(TradeStore(mStore).write(batch).toStdString(), "");
    restart();
    EXPECT_EQ(mTrade->getStocks().count("SZ002594"), 1U);
    mTrade->clearImportData();
    mTrade->advance();
    EXPECT_EQ(mTrade->getStocks().count("SZ002594"), 1U);
}

TEST_F(TradeServiceTest, UnknownOrEndedTaskIsNotCancelled) {
    goTo(at(15, 2));
    const auto task = firstTask(kShare, "80010001");
    const int status = task->mStatus;
    int told = 0;
    mTrade->sigTaskChanged.connect([&](const std::vector<std::string> &) { ++told; });
    mTrade->cancelTask(task->mTaskId, QString());
    mTrade->cancelTask(-5, QString());
    mTrade->advance();
    EXPECT_EQ(firstTask(kShare, "80010001")->mStatus, status);
    EXPECT_EQ(told, 0);
}

TEST_F(TradeServiceTest, ProfitsAndBalancesAreThereWhileTheyAreWanted) {
    goTo(at(10, 30));
    const auto profits = [this] { return mTrade->getTotalProfits({kShare}, kAllAccounts, {}, false).size(); };
    const auto balances = [this] { return mTrade->getTotalBalances({kShare}, kAllAccounts, {}, false).size(); };
    EXPECT_EQ(profits() + balances(), 0U);
    mTrade->startProfitCalculator();
    mTrade->startProfitCalculator();
    EXPECT_EQ(profits(), 61U); // 09:30 to 10:30
    EXPECT_EQ(balances(), 0U);
    mTrade->startBalanceCalculator();
    EXPECT_EQ(balances(), 61U);
    mTrade->stopProfitCalculator(); // once is enough
    EXPECT_EQ(profits(), 0U);
    EXPECT_EQ(balances(), 61U);
    mTrade->stopBalanceCalculator();
    EXPECT_EQ(balances(), 0U);
    EXPECT_EQ(mTrade->getTotalBuySellAmounts({kShare}, kAllAccounts, {}, false).size(), 61U);
}

TEST_F(TradeServiceTest, ACalculatorThatStartsOrStopsIsToldAsAChangeOfData) {
    goTo(at(10, 30));
    int told = 0;
    mTrade->sigDatasChanged.connect([&] { ++told; });
    const auto tellings = [&] {
        told = 0;
        mTrade->advance();
        return told;
    };
    EXPECT_EQ(tellings(), 0);
    mTrade->startBalanceCalculator();
    EXPECT_EQ(tellings(), 1);
    mTrade->startBalanceCalculator();
    EXPECT_EQ(tellings(), 0);
    mTrade->stopBalanceCalculator();
    EXPECT_EQ(tellings(), 1);
    mTrade->stopBalanceCalculator();
    EXPECT_EQ(tellings(), 0);
}

TEST_F(TradeServiceTest, WantedProfitIsToldEveryMinute) {
    goTo(at(11, 0));
    int told = 0;
    mTrade->sigDatasChanged.connect([&] { ++told; });
    mTrade->startProfitCalculator();
    goTo(at(11, 1, 10)); // 11:00 has settled
    EXPECT_EQ(told, 1);
    goTo(at(11, 1, 12));
    EXPECT_EQ(told, 1);
    mTrade->stopProfitCalculator();
}

TEST_F(TradeServiceTest, SignalsComeOnAThreadOfTheService) {
    mClock.setTime(at(10, 30));
    std::mutex lock;
    std::condition_variable came;
    std::set<std::thread::id> threads;
    bool linkage = false;
    mTrade->sigLinkageChanged.connect([&](const std::vector<std::string> &keys) {
        mTrade->getOrderDetails(mDay, keys.front(), kAllAccounts); // may ask back
        std::lock_guard<std::mutex> hold(lock);
        threads.insert(std::this_thread::get_id());
        linkage = true;
        came.notify_all();
    });
    mTrade->start();
    {
        std::unique_lock<std::mutex> hold(lock);
        ASSERT_TRUE(came.wait_for(hold, std::chrono::seconds(20), [&] { return linkage; }));
    }
    mTrade->stop();
    EXPECT_EQ(threads.size(), 1U);
    EXPECT_EQ(threads.count(std::this_thread::get_id()), 0U);
}

TEST_F(TradeServiceTest, ManyThreadsAskWhileItTrades) {
    mClock.setTime(at(9, 31));
    wantFigures();
    mTrade->start();
    std::vector<std::thread> askers;
    std::atomic<int> wrong{0};
    for (int i = 0; i < 3; ++i) {
        askers.emplace_back([&, i] {
            for (int n = 0; n < 60; ++n) {
                for (const auto &order : flat(mTrade->getOrderDetails(mDay, kShare, kAllAccounts))) {
                    wrong += order->mTradedVolume > order->mVolume;
                }
                mTrade->getTotalProfits({kShare}, kAllAccounts, {}, false);
                mTrade->importDeal("X" + std::to_string(i), kShare, std::to_string(n), 10.0, 100,
                                   at(9, 31) / 1000, 48);
                mClock.setTime(at(9, 31) + n * 60000);
            }
        });
    }
    for (std::thread &asker : askers) {
        asker.join();
    }
    mTrade->stop();
    EXPECT_EQ(wrong, 0);
    restart();
    EXPECT_EQ(flat(mTrade->getDealDetails(mDay, kShare, {"X0", "X1", "X2"})).size(), 180U);
}
