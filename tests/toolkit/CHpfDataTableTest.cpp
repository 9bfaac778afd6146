#include "host/toolkit/CHpfDataTable.h"

#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/records/CTaskDetail.h"
#include "tests/chartview/ChartFixture.h"

#include <limits>

using GZ::CHpfDataTable;
using kvservice::CDealDetail;
using kvservice::COrderDetail;

namespace {

class CHpfDataTableTest : public tests::ChartFixture {
protected:
    CHpfDataTableTest() { mDetail->mName = "浦发银行"; }
    static boost::shared_ptr<COrderDetail> order(const std::string &key = "20240315-00007") {
        auto record = boost::make_shared<COrderDetail>();
        record->mOrderKey = key;
        record->mContractNo = key;
        record->mAccount = "80010001";
        record->mStockKey = "SH600000";
        record->mDirection = 48;
        record->mPrice = 10.1;
        record->mVolume = 12000;
        record->mTradedVolume = 300;
        record->mStatus = kvservice::eOrderPartlyFilled;
        record->mDate = "20240315";
        record->mTime = "093105";
        record->mCommand = boost::make_shared<kvservice::CCommandDetail>();
        record->mCommand->mStrategyName = "日内回转";
        return record;
    }
    static boost::shared_ptr<CDealDetail> deal() {
        auto record = boost::make_shared<CDealDetail>();
        record->mDealKey = "20240315-00007-1";
        record->mContractNo = "20240315-00007";
        record->mAccount = "90020001";
        record->mStockKey = "SFAU2406";
        record->mDirection = 49;
        record->mOffsetFlag = 49;
        record->mPrice = 512.3456;
        record->mVolume = 3;
        record->mAmount = 1537.0368;
        record->mTime = "21:05:09";
        return record;
    }
    static QStringList row(const CHpfDataTable &table, int number) {
        QStringList texts;
        for (int column = 0; column < table.columnCount(); ++column) {
            texts.append(table.textAt(number, column));
        }
        return texts;
    }
    static QStringList headings(const CHpfDataTable &table) {
        QStringList texts;
        for (int column = 0; column < table.columnCount(); ++column) {
            texts.append(table.horizontalHeaderItem(column)->text());
        }
        return texts;
    }
    static QString cell(const CHpfDataTable &table, int number, const char *heading) {
        return table.textAt(number, headings(table).indexOf(QString::fromUtf8(heading)));
    }
};

TEST_F(CHpfDataTableTest, OrderIsToldInTheWordsOfATrader) {
    CHpfDataTable table(19, 542, nullptr, false);
    EXPECT_EQ(table.getID(), 542);
    table.updateData(order(), true);
    EXPECT_EQ(headings(table),
              (QStringList{"委托时间", "资金账号", "证券代码", "证券名称", "买卖方向", "委托价格", "委托数量",
                           "成交数量", "委托状态", "交易策略", "合同编号", "委托日期"}));
    EXPECT_EQ(row(table, 0),
              (QStringList{"09:31:05", "80010001", "600000", "浦发银行", "买入", "10.10", "12,000", "300",
                           "部成", "日内回转", "20240315-00007", "2024-03-15"}));
    EXPECT_EQ(table.item(0, 4)->foreground().color(), color("ic_clr_index_default_rise"));
}

TEST_F(CHpfDataTableTest, DealOfAFutureTellsItsOffsetAndAnUnknownInstrumentItsKey) {
    CHpfDataTable table(17, 544, nullptr, false);
    table.updateData(deal(), true);
    EXPECT_EQ(headings(table),
              (QStringList{"成交时间", "资金账号", "证券代码", "证券名称", "买卖方向", "成交价格", "成交数量",
                           "成交金额", "交易策略", "成交编号", "合同编号"}));
    EXPECT_EQ(row(table, 0), (QStringList{"21:05:09", "90020001", "SFAU2406", "", "卖出平仓", "512.35", "3",
                                          "1,537.04", "", "20240315-00007-1", "20240315-00007"}));
    EXPECT_EQ(table.item(0, 4)->foreground().color(), color("ic_clr_index_default_fall"));
}

TEST_F(CHpfDataTableTest, StatusesOfOrdersHaveTheirWords) {
    CHpfDataTable table(19, 542, nullptr, false);
    const struct {
        int status;
        int traded;
        const char *text;
    } cases[] = {{kvservice::eOrderReported, 0, "已报"},
                 {kvservice::eOrderPartlyFilled, 100, "部成"},
                 {kvservice::eOrderFilled, 12000, "已成"},
                 {kvservice::eOrderCancelled, 0, "已撤"},
                 {kvservice::eOrderCancelled, 100, "部成已撤"},
                 {kvservice::eOrderRejected, 0, "废单"},
                 {77, 0, "状态 77"}};
    int number = 0;
    for (const auto &one : cases) {
        const auto record = order();
        record->mStatus = one.status;
        record->mTradedVolume = one.traded;
        table.updateData(record, true);
        EXPECT_EQ(cell(table, number++, "委托状态"), QString::fromUtf8(one.text));
    }
}

TEST_F(CHpfDataTableTest, RecordIsAppendedOrTakesTheRowOfItsKey) {
    CHpfDataTable table(19, 542, nullptr, false);
    table.updateData(order("a"), true);
    table.updateData(order("b"), true);
    const auto changed = order("a");
    changed->mTradedVolume = 5000;
    table.updateData(changed, false);
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(cell(table, 0, "成交数量"), QStringLiteral("5,000"));
    table.updateData(changed, true); // the same key may stand twice when that is asked for
    table.updateData(order("c"), false);
    EXPECT_EQ(table.rowCount(), 4);
}

TEST_F(CHpfDataTableTest, NumbersSortBySizeAndThoseThatAreNoneAreDashes) {
    CHpfDataTable table(19, 542, nullptr, false);
    for (const double price : {9.99, 10.0, std::numeric_limits<double>::quiet_NaN(), 100.0}) {
        const auto record = order(std::to_string(price));
        record->mPrice = price;
        table.updateData(record, true);
    }
    table.sortRows(5, Qt::DescendingOrder);
    EXPECT_EQ(table.textAt(0, 5), QStringLiteral("--"));
    EXPECT_EQ(table.textAt(1, 5), QStringLiteral("100.00"));
    EXPECT_EQ(table.textAt(2, 5), QStringLiteral("10.00"));
    EXPECT_EQ(table.textAt(3, 5), QStringLiteral("9.99"));
}

TEST_F(CHpfDataTableTest, NothingAndRecordsOfAnotherKindAreLeftOut) {
    CHpfDataTable table(19, 542, nullptr, false);
    table.updateData(nullptr, true);
    table.updateData(deal(), true);
    EXPECT_EQ(table.rowCount(), 0);
    CHpfDataTable deals(17, 544, nullptr, false);
    deals.updateData(order(), true);
    EXPECT_EQ(deals.rowCount(), 0);
}

TEST_F(CHpfDataTableTest, TypeWithoutColumnsShowsTheKeyOfAnyRecord) {
    CHpfDataTable table(3, 1, nullptr, false);
    const auto task = boost::make_shared<kvservice::CTaskDetail>();
    task->mTaskId = 42;
    table.updateData(task, true);
    EXPECT_EQ(row(table, 0), QStringList("42"));
}

TEST_F(CHpfDataTableTest, FixedOrderDoesNotSort) {
    EXPECT_FALSE(CHpfDataTable(19, 542, nullptr, true).getFlags() & GZ::CStandardTable::eSort);
    EXPECT_TRUE(CHpfDataTable(19, 542, nullptr, false).getFlags() & GZ::CStandardTable::eSort);
}

TEST_F(CHpfDataTableTest, ColoursFollowTheTheme) {
    CHpfDataTable table(19, 542, nullptr, false);
    table.updateData(order(), true);
    const QColor dark = color("ic_clr_index_default_rise");
    GZ::CUiResource::instance().setTheme(QStringLiteral("light"));
    EXPECT_NE(color("ic_clr_index_default_rise"), dark);
    EXPECT_EQ(table.item(0, 4)->foreground().color(), color("ic_clr_index_default_rise"));
}

} // namespace
