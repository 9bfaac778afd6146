// The dialogs of orders and of deals.

#include "host/toolkit/CHpfDataTable.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "tests/chartview/ChartFixture.h"
#include "tests/linkage/TradeRecords.h"

#include <QHeaderView>

using namespace TC;
using tests::makeDeal;
using tests::makeOrder;

namespace {

class RecordDialog : public tests::ChartFixture {
protected:
    static GZ::CHpfDataTable *tableOf(const GZ::CCommonDialog &dialog) {
        return qobject_cast<GZ::CHpfDataTable *>(dialog.innerWidget());
    }
    static QStringList column(const GZ::CCommonDialog &dialog, const char *heading) {
        const GZ::CHpfDataTable *table = tableOf(dialog);
        QStringList texts;
        for (int number = 0; number < table->columnCount(); ++number) {
            if (table->horizontalHeaderItem(number)->text() == QString::fromUtf8(heading)) {
                for (int row = 0; row < table->rowCount(); ++row) {
                    texts.append(table->textAt(row, number));
                }
            }
        }
        return texts;
    }
    QMap<int, QString> &layouts() { return mHost.mConfig.mUserConfig.mTables; }
};

TEST_F(RecordDialog, OrdersHaveTheirTitleSizeAndTable) {
    CRealtimeOrderDialog dialog(mKeeper.get());
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("委托明细"));
    EXPECT_EQ(dialog.parentWidget(), mKeeper.get());
    EXPECT_EQ(dialog.minimumSize(), QSize(400, 200));
    EXPECT_EQ(dialog.size(), QSize(800, 300));
    EXPECT_FALSE(dialog.isModal());
    ASSERT_NE(tableOf(dialog), nullptr);
    EXPECT_EQ(tableOf(dialog)->getID(), 542);
    EXPECT_EQ(tableOf(dialog)->horizontalHeaderItem(0)->text(), QStringLiteral("委托时间"));
}

TEST_F(RecordDialog, DealsHaveTheirTitleSizeAndTable) {
    CRealtimeDealDialog dialog(mKeeper.get());
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("成交明细"));
    EXPECT_EQ(dialog.minimumSize(), QSize(400, 200));
    EXPECT_EQ(dialog.size(), QSize(800, 300));
    ASSERT_NE(tableOf(dialog), nullptr);
    EXPECT_EQ(tableOf(dialog)->getID(), 544);
    EXPECT_EQ(tableOf(dialog)->horizontalHeaderItem(0)->text(), QStringLiteral("成交时间"));
}

TEST_F(RecordDialog, RecordsStandInTheOrderOfTheListAndReplaceThoseBefore) {
    CRealtimeOrderDialog orders;
    orders.setData({makeOrder("c"), makeOrder("a"), makeOrder("b")});
    EXPECT_EQ(column(orders, "合同编号"), (QStringList{"c", "a", "b"}));
    orders.setData({makeOrder("d")});
    EXPECT_EQ(column(orders, "合同编号"), QStringList("d"));
    CRealtimeDealDialog deals;
    deals.setData({makeDeal("2"), makeDeal("1")});
    EXPECT_EQ(column(deals, "成交编号"), (QStringList{"2", "1"}));
    deals.setData({});
    EXPECT_EQ(tableOf(deals)->rowCount(), 0);
}

TEST_F(RecordDialog, ColumnsAreAsWideAsTheirRecords) {
    CRealtimeOrderDialog dialog;
    const std::string longKey(60, 'x');
    dialog.setData({makeOrder(longKey)});
    EXPECT_GE(tableOf(dialog)->columnWidth(10),
              tableOf(dialog)->fontMetrics().horizontalAdvance(QString::fromStdString(longKey)));
}

TEST_F(RecordDialog, LayoutSurvivesInTheUsersConfigurationUnderTheTablesId) {
    {
        CRealtimeOrderDialog orders;
        tableOf(orders)->hideColumn(1);
        CRealtimeDealDialog deals;
        tableOf(deals)->horizontalHeader()->moveSection(3, 0);
    }
    EXPECT_EQ(layouts().keys(), (QList<int>{542, 544}));
    CRealtimeOrderDialog orders;
    EXPECT_TRUE(tableOf(orders)->isColumnHidden(1));
    CRealtimeDealDialog deals;
    EXPECT_EQ(tableOf(deals)->horizontalHeader()->visualIndex(3), 0);
    EXPECT_FALSE(tableOf(deals)->isColumnHidden(1));
}

TEST_F(RecordDialog, WithoutAUserThereIsNoLayoutToLoadOrKeep) {
    layouts()[542] = QStringLiteral("{\"hidden\":[\"资金账号\"]}");
    mHost.mConfig.mHasUserConfig = false;
    {
        CRealtimeOrderDialog orders;
        EXPECT_FALSE(tableOf(orders)->isColumnHidden(1));
    }
    EXPECT_EQ(layouts()[542], QStringLiteral("{\"hidden\":[\"资金账号\"]}"));
}

} // namespace
