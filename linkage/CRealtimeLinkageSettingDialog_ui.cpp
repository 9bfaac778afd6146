// The controls.

#include "host/toolkit/CAutoExpandToolBar.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CRadioButton.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CWidgetList.h"
#include "linkage/CRealtimeLinkageSettingDialog.h"
#include "linkage/LinkageControls.h"

namespace TC {
namespace {

using GZ::CAutoExpandToolBar;
using GZ::CStandardTable;
using GZ::CWidgetList;

constexpr int kGap = 4; ///< pixels around and between the parts
constexpr int kButtonHeight = 22;
constexpr int kWholeMenu = 511; ///< of a table
constexpr int kAnchored = CWidgetList::eAnchorBoth;
constexpr int kCentered = CWidgetList::eAnchorNone;

/// A row of a fixed height that begins with a space; its rest is free.
CWidgetList *kindRow(const QList<QWidget *> &controls) {
    auto *row = new CWidgetList(Qt::Horizontal);
    row->setFixedHeight(30);
    row->setSpacing(2);
    row->addSpace(10);
    for (QWidget *control : controls) {
        row->addFixedWidget(control, kAnchored, false);
    }
    row->addStretch();
    return row;
}

} // namespace

void CRealtimeLinkageSettingDialog::createUi() {
    auto *bar = new CAutoExpandToolBar;
    bar->setFixedHeight(25);
    mImportOrderButton = smallButton(tr("导入委托"), eImportOrders, 90);
    mImportDealButton = smallButton(tr("导入成交"), eImportDeals, 90);
    for (QWidget *button :
         {mImportOrderButton, mImportDealButton, smallButton(tr("清空导入数据"), eClearImports, 90)}) {
        bar->addFixedWidget(button, kCentered, false);
    }
    auto *root = new CWidgetList(Qt::Vertical);
    root->setMargins(QMargins(kGap, kGap, kGap, 0));
    root->addFixedWidget(bar, kAnchored, false);
    root->addStretchWidget(createBody(), 1, kAnchored, false);
    setInnerWidget(root);
    mMinButton = new GZ::CPushButton(QStringLiteral("img_sys_btn_min"), eMinimise, this);
    mMinButton->setAutoRaise(true);
    mMinButton->setAutoDefault(false);
}

CWidgetList *CRealtimeLinkageSettingDialog::createBody() {
    mAccountTable = createTable(0, {30, 75, 75});
    mStrategyTable = createTable(1, {30, 150});
    mStockTable = createTable(2, {35, 50, 85, 85});
    auto *accounts = new GZ::CGroupBox(tr("资金账号"));
    accounts->setFixedHeight(110);
    accounts->setInnerWidget(mAccountTable);
    auto *kinds = new GZ::CGroupBox(tr("交易数据"));
    kinds->setInnerWidget(createKinds());
    mStrategySelectAllBox = new GZ::CCheckBox(tr("自动全选"), eStrategySelectAll);
    mStrategySelectAllBox->setChecked(mStrategySelectAll);
    mStrategyGroup = new GZ::CGroupBox(tr("交易策略"));
    mStrategyGroup->setFixedHeight(195);
    mStrategyGroup->setInnerWidget(
        createSelection(mStrategyTable, mStrategySelectAllBox, eAllStrategies, eRevertStrategies));
    auto *left = new CWidgetList(Qt::Vertical);
    left->setSpacing(kGap);
    left->setFixedWidth(230);
    left->addFixedWidget(accounts, kAnchored, false);
    left->addStretchWidget(kinds, 1, kAnchored, false);
    left->addFixedWidget(mStrategyGroup, kAnchored, false);
    mStrategyGroup->hide();
    mStockSelectAllBox = new GZ::CCheckBox(tr("自动全选"), eStockSelectAll);
    mStockSelectAllBox->setChecked(mStockSelectAll);
    auto *stocks = new GZ::CGroupBox(tr("选择证券"));
    stocks->setInnerWidget(createSelection(mStockTable, mStockSelectAllBox, eAllStocks, eRevertStocks));
    auto *body = new CWidgetList(Qt::Horizontal);
    body->setMargin(kGap);
    body->setSpacing(kGap);
    body->addFixedWidget(left, kAnchored, false);
    body->addStretchWidget(stocks, 1, kAnchored, false);
    return body;
}

QWidget *CRealtimeLinkageSettingDialog::createKinds() {
    const QString texts[] = {tr("委托"),   tr("成交"), tr("任务"), tr("买卖额"),
                             tr("净买额"), tr("盈亏"), tr("配平")};
    for (size_t kind = 0; kind < mKindBoxes.size(); ++kind) {
        mKindBoxes[kind] = new GZ::CCheckBox(texts[kind], eFirstKind + static_cast<int>(kind));
    }
    mSeeAllButton = new GZ::CRadioButton(tr("全部查看"), eSeeAll);
    mSeeByStrategyButton = new GZ::CRadioButton(tr("按策略查看"), eSeeStrategies);
    mSeeAllButton->setChecked(true);
    auto *kinds = new CWidgetList(Qt::Vertical);
    for (CWidgetList *row : {kindRow({mKindBoxes[eShowOrders], mKindBoxes[eShowDeals], mKindBoxes[eShowTasks]}),
                             kindRow({mKindBoxes[eShowTotals], mKindBoxes[eShowNet], mKindBoxes[eShowProfit],
                                      mKindBoxes[eShowBalance]}),
                             kindRow({mSeeAllButton, mSeeByStrategyButton})}) {
        kinds->addFixedWidget(row, kAnchored, false);
    }
    kinds->addStretch();
    return kinds;
}

/// A table of check boxes under the bar that chooses in it.
QWidget *CRealtimeLinkageSettingDialog::createSelection(CStandardTable *table, GZ::CCheckBox *selectAll,
                                                        int allId, int revertId) {
    auto *bar = new CAutoExpandToolBar;
    bar->setBackground(QStringLiteral("tc_img_op_hedge_type_bg"), 2, 8, 2, 8, -1);
    bar->setMargin(2);
    bar->setSpacing(kGap);
    bar->addFixedWidget(selectAll, kCentered, false);
    bar->addFixedWidget(smallButton(tr("全选"), allId, 40), kCentered, false);
    bar->addFixedWidget(smallButton(tr("反选"), revertId, 40), kCentered, false);
    auto *list = new CWidgetList(Qt::Vertical);
    list->addFixedWidget(bar, kAnchored, false);
    list->addStretchWidget(table, 1, kAnchored, false);
    return list;
}

GZ::CSmallNoNormalButton *CRealtimeLinkageSettingDialog::smallButton(const QString &text, int id, int width) {
    auto *button = new GZ::CSmallNoNormalButton(text, id);
    button->setFontKey(QStringLiteral("fnt_default_normal_fix"));
    button->setFixedSize(width, kButtonHeight);
    return button;
}

CStandardTable *CRealtimeLinkageSettingDialog::createTable(int id, const QList<int> &widths) {
    auto *table = new CStandardTable(id, kWholeMenu);
    table->setFlag(CStandardTable::eFocus, false);
    table->setFlag(CStandardTable::eSort, false);
    table->setAutoAdjust(false);
    table->setHeaderHeight(0);
    QStringList headers;
    for (int column = 0; column < widths.size(); ++column) {
        headers.append(QString());
    }
    table->setHeaders(headers);
    for (int column = 0; column < widths.size(); ++column) {
        table->setDefaultWidth(column, widths[column]);
    }
    return table;
}

} // namespace TC
