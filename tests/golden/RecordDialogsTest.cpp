// The dialogs of orders, deals and tasks, in both themes and at two pixel ratios.

#include "host/toolkit/CHpfDataTable.h"
#include "linkage/CRealtimeDealDialog.h"
#include "linkage/CRealtimeOrderDialog.h"
#include "tests/linkage/TaskDialogFixture.h"
#include "tests/support/Golden.h"

using namespace TC;
using tests::makeDeal;
using tests::makeOrder;
using tests::makeTask;

namespace {

class RecordDialogs : public tests::TaskDialogFixture {
protected:
    /// Compares a dialog with its pictures.
    void expectPictures(QWidget &dialog, const QString &name) {
        for (const char *theme : {"dark", "light"}) {
            GZ::CUiResource::instance().setTheme(QString::fromLatin1(theme));
            for (const double ratio : {1.0, 2.0}) {
                const QString picture =
                    tests::goldenName(name + QLatin1Char('-') + QLatin1String(theme), ratio);
                EXPECT_TRUE(tests::matchesGolden(tests::rendered(dialog, ratio), picture));
            }
        }
    }
};

TEST_F(RecordDialogs, OrdersSortedByPrice) {
    CRealtimeOrderDialog dialog;
    QList<boost::shared_ptr<kvservice::COrderDetail>> orders;
    for (int i = 0; i < 5; ++i) {
        const auto order = makeOrder("20240315-0000" + std::to_string(i), 10.0 + 0.01 * (i * 3 % 5));
        order->mAccount = "80010001";
        order->mDirection = 48 + i % 2;
        order->mVolume = 1000 * (i + 1);
        order->mTradedVolume = i == 4 ? 1200 : 0;
        order->mStatus = i;
        order->mDate = "20240315";
        orders.append(order);
    }
    orders[1]->mCommand = boost::make_shared<kvservice::CCommandDetail>();
    orders[1]->mCommand->mStrategyName = "日内回转";
    dialog.setData(orders);
    auto *table = qobject_cast<GZ::CHpfDataTable *>(dialog.innerWidget());
    table->sortRows(5, Qt::DescendingOrder);
    table->selectRow(1);
    expectPictures(dialog, QStringLiteral("dialog-orders"));
}

TEST_F(RecordDialogs, Deals) {
    CRealtimeDealDialog dialog;
    const auto deal = makeDeal("20240315-00007-1");
    deal->mAmount = 1000.0;
    deal->mContractNo = "20240315-00007";
    dialog.setData({deal});
    expectPictures(dialog, QStringLiteral("dialog-deals"));
}

TEST_F(RecordDialogs, TasksThatRunAndThatHaveEnded) {
    const auto disabled = makeTask(2, kvservice::eTaskWaiting);
    disabled->mCommand->mCancelDisabled = 1;
    const auto sells = makeTask(3, kvservice::eTaskFinished);
    sells->mItems[0]->mOperation = kvservice::EOperationType::Sell;
    const auto nothing = makeTask(4, kvservice::eTaskExpired);
    nothing->mItems[0]->mQuantity = 0;
    nothing->mEndTime = kUnsetTime;
    mHost.mLinkage.mFinished = {{1, 100}, {3, 300}};
    mDialog->setTaskData({makeTask(1), disabled, sells, nothing}, mDetail);
    mDialog->resize(828, 220);
    expectPictures(*mDialog, QStringLiteral("dialog-tasks"));
}

} // namespace
