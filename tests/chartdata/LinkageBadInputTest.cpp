#include "tests/chartdata/LinkageFixture.h"

#include "tests/support/Numbers.h"

#include <climits>
#include <cmath>

using namespace TC;
using tests::kInfinity;
using tests::kNaN;

namespace {

const double kNoPrices[] = {kInfinity, -kInfinity, kNaN, kUnsetValue};

class LinkageBadInput : public tests::LinkageFixture {
protected:
    /// The marks of both views.
    LinkageBadInput() {
        show({0, 1, 2});
        mUiParam->mLinkageFlags = 6;
        mUiParam->mStockAccounts = {QStringLiteral("A")};
        mUiParam->mLinkageStocks = {"SH600000", "SZ000001"};
        mHost.mClock.mNow.setTime(QTime(9, 30));
    }
    bool isAnythingHit(int x, int y) const {
        return mData->hitOrder(x, y) || mData->hitDeal(x, y) || mData->hitTask(x, y);
    }
    bool isAllHit(int x, int y) const {
        return mData->hitOrder(x, y) && mData->hitDeal(x, y) && mData->hitTask(x, y);
    }
    /// One of each kind at 10:00.
    void addEach(double price, const std::string &key = "1") {
        addOrder(key, kBuy, price, "10:00:00");
        addDeal(key, kBuy, price, "10:00:00");
        addTask(std::stoi(key), true, price, QTime(10, 0), 0, 1);
    }
};

TEST_F(LinkageBadInput, PriceThatIsNoNumberIsSkipped) {
    for (const double price : kNoPrices) {
        addEach(price);
        EXPECT_EQ(drawn(), blank()) << price;
        EXPECT_TRUE(mUiParam->mLinkageBuys.empty()) << price;
    }
}

TEST_F(LinkageBadInput, PricesOfZeroAndBelowLieInTheirRows) {
    addEach(0.0);
    drawn();
    EXPECT_TRUE(isAllHit(61, 1100));
    addEach(-10.0);
    drawn();
    EXPECT_TRUE(isAllHit(61, 2100));
    EXPECT_FALSE(isAnythingHit(61, 1100));
}

TEST_F(LinkageBadInput, PriceBeyondAllPixelsDoesNoHarm) {
    for (const double price : {1e300, -1e300, 1e12}) {
        addEach(price);
        EXPECT_EQ(drawn(), blank()) << price;
    }
}

TEST_F(LinkageBadInput, InstrumentWhoseCloseIsNoneIsSkipped) {
    mUiParam->mLinkageFlags = 4;
    addOrder("1", kBuy, 21.0, "10:00:00", "SZ000001");
    addDeal("1", kBuy, 21.0, "10:00:00", 100, "SZ000001");
    addTask(1, true, 21.0, QTime(10, 0), 0, 1, "SZ", "000001");
    drawn();
    EXPECT_TRUE(isAllHit(61, 50));
    for (const double close : {0.0, kUnsetValue, kInfinity, std::nan("")}) {
        mOther->mLastClose = close;
        EXPECT_EQ(drawn(), blank()) << close;
        EXPECT_FALSE(isAnythingHit(61, 50)) << close;
    }
}

TEST_F(LinkageBadInput, MainInstrumentThatTheHostDoesNotListHasNoMarks) {
    addEach(10.5);
    mHost.mStocks.mDetails.remove(kStock); // the view still holds its record
    EXPECT_EQ(drawn(), blank());
    EXPECT_TRUE(mUiParam->mLinkageBuys.empty());
}

TEST_F(LinkageBadInput, NullEntriesAreSkippedAndTheOthersShown) {
    addEach(10.5);
    mHost.mLinkage.mOrders["SH600000"]["A"]["0"] = nullptr;
    mHost.mLinkage.mDeals["SH600000"]["A"]["0"] = nullptr;
    mHost.mLinkage.mTasks["SH600000"]["A"]["0"] = nullptr;
    drawn();
    EXPECT_TRUE(isAllHit(61, 50));
    EXPECT_EQ(ordersAt(61, 50) + dealsAt(61, 50) + tasksAt(61, 50), 3);
}

TEST_F(LinkageBadInput, TaskWithoutItemsOrAFirstItemIsSkipped) {
    addTask(1, true, 10.5, QTime(10, 0), 0, 1)->mItems.clear();
    const auto task = addTask(2, true, 10.5, QTime(10, 0), 0, 1);
    task->mItems.insert(task->mItems.begin(), nullptr);
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageBadInput, NullItemBehindTheFirstIsSkippedByItself) {
    const auto task = addTask(1, true, 10.5, QTime(10, 0), 0, 1);
    task->mItems.insert(task->mItems.end(), {nullptr, task->mItems.front()});
    task->mItems.back() = boost::make_shared<kvservice::CTaskItem>(*task->mItems.front());
    task->mItems.back()->mPrice = 9.5;
    drawn();
    EXPECT_TRUE(mData->hitTask(61, 50) && mData->hitTask(61, 150));
}

TEST_F(LinkageBadInput, DealWithAnUnreadableTimeCountsAtTheFirstIndex) {
    for (const char *time : {"", "noon", "25:61:61", "10:00", "99999999999999999999"}) {
        addDeal("1", kBuy, 10.5, time);
        drawn();
        EXPECT_TRUE(mData->hitDeal(1, 50)) << time;
        EXPECT_EQ(mUiParam->mLinkageBuys.begin()->first, 0) << time;
    }
}

TEST_F(LinkageBadInput, TaskAtAnyMomentHasAColumn) {
    for (const int moment : {INT_MIN, -1, 0, INT_MAX - 1}) {
        addTask(1, true, 10.5, QTime(10, 0), 0, 1)->mStartTime = moment;
        drawn();
        const QTime time = QDateTime::fromSecsSinceEpoch(moment).time();
        EXPECT_TRUE(mData->hitTask(mUiParam->getXAxisByIndex(mUiParam->getIndexByTime(time)), 50)) << moment;
    }
}

TEST_F(LinkageBadInput, DealWhoseAmountIsNoNumberIsMarkedAndDoesNotCount) {
    addDeal("1", kBuy, 10.0, "10:00:00");
    for (const double amount : kNoPrices) {
        addDeal("2", kBuy, 10.5, "10:30:00")->mAmount = amount;
        drawn();
        EXPECT_TRUE(mData->hitDeal(121, 50));
        EXPECT_EQ(mUiParam->mLinkageBuys[30], std::make_pair(100, 1000.0));
        EXPECT_EQ(mUiParam->mLinkageBuys[60], std::make_pair(0, 0.0));
    }
}

TEST_F(LinkageBadInput, CountsAreHeldToWhatTheyCanBe) {
    addDeal("1", kBuy, 10.0, "10:00:00", INT_MAX);
    addDeal("2", kBuy, 10.0, "10:00:00", 100);
    addDeal("3", kSell, 10.0, "10:00:00", INT_MIN);
    addDeal("4", kSell, 10.0, "10:00:00", -100);
    drawn();
    EXPECT_EQ(mUiParam->mLinkageBuys[30].first, INT_MAX);
    EXPECT_EQ(mUiParam->mLinkageSells[30].first, INT_MIN);
}

TEST_F(LinkageBadInput, WithoutAnAxisStripMarksLieAboveTheGraph) {
    addEach(10.5);
    mData->setAxisWidget(nullptr);
    drawn();
    EXPECT_TRUE(isAllHit(61, -1));
}

TEST_F(LinkageBadInput, NoPainterAndNoRoomDrawNothing) {
    addEach(10.5);
    mData->drawLinkageMarks(nullptr, kGraph);
    EXPECT_FALSE(isAnythingHit(61, 50));
    QImage image = blank();
    QPainter painter(&image);
    mData->drawLinkageMarks(&painter, QRect());
    EXPECT_FALSE(isAnythingHit(61, 50));
    EXPECT_EQ(image, blank());
}

TEST_F(LinkageBadInput, HostilePricesAndRecordsDoNoHarm) {
    show({0, 1, 2});
    mUiParam->mLinkageFlags = 6;
    mUiParam->mStockAccounts = {QStringLiteral("A")};
    mUiParam->mLinkageStocks = {"SH600000", "SZ000001", "XX1", ""};
    int id = 0;
    for (const double price : {0.0, -10.0, kInfinity, -kInfinity, std::nan(""), kUnsetValue, -1e300, 1e300}) {
        for (const char *stock : {"SH600000", "SZ000001", "XX1"}) {
            const std::string key = std::to_string(++id);
            addOrder(key, kBuy, price, "25:61:61", stock);
            addDeal(key, kSell, price, "10:00:00", INT_MAX, stock);
            addDeal("x" + key, 7, price, "", INT_MIN, stock);
        }
        addTask(++id, true, price, QTime(10, 0), LLONG_MIN, LLONG_MAX);
        addTask(++id, true, price, QTime(10, 0), -5, -3)->mItems.push_back(nullptr);
    }
    mHost.mLinkage.mOrders["SH600000"]["A"]["null"] = nullptr;
    mHost.mLinkage.mDeals["SH600000"]["A"]["null"] = nullptr;
    mHost.mLinkage.mTasks["SH600000"]["A"]["null"] = nullptr;
    addTask(++id, true, 10.0, QTime(10, 0), 0, 1)->mItems.clear();
    addTask(++id, true, 10.0, QTime(10, 0), 0, 1)->mItems = {nullptr};
    mOther->mLastClose = 0.0;
    drawn();
    EXPECT_TRUE(mData->hitDeal(61, 1100)) << "a price of 0 lies in row 1100";
    for (const int far : {INT_MIN, INT_MAX}) {
        EXPECT_FALSE(mData->hitOrder(far, far) || mData->hitDeal(far, far) || mData->hitTask(far, far));
    }
    mStrip->resize(1, 1);
    mUiParam->resize(QRect());
    drawn();
}

TEST_F(LinkageBadInput, InstrumentWithoutARecordIsSkipped) {
    show({0, 1, 2});
    mUiParam->mLinkageStocks = {"XX1"};
    addOrder("1", kBuy, 10.5, "10:00:00", "XX1");
    addDeal("1", kBuy, 10.5, "10:00:00", 100, "XX1");
    addTask(1, true, 10.5, QTime(10, 0), 0, 1, "XX", "1");
    EXPECT_EQ(drawn(), blank());
}

TEST_F(LinkageBadInput, OrderWithAnUnreadableTimeLandsWhereTheNullTimeDoes) {
    show({0});
    addOrder("1", kBuy, 10.5, "");
    addOrder("2", kBuy, 10.2, "noon");
    drawn();
    EXPECT_TRUE(mData->hitOrder(1, 50)) << "before the first minute: column 1";
    EXPECT_TRUE(mData->hitOrder(1, 80));
}

} // namespace
