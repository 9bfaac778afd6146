#include "linkage/CRealtimeLinkageSettingDialog.h"

#include "chartdata/LinkageScope.h"
#include "host/services/CFileClient.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CAutoExpandToolBar.h"
#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CWidgetList.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/Text.h"
#include "host/windows/CMessageTipWidget.h"
#include "linkage/LinkageControls.h"

#include <QResizeEvent>
#include <QTimer>

namespace TC {
namespace {

using GZ::CWidgetList;

constexpr int kPoll = 1000; ///< milliseconds
constexpr int kGap = 4; ///< pixels around and between the parts
constexpr int kAnchored = CWidgetList::eAnchorBoth;
constexpr int kCentered = CWidgetList::eAnchorNone;

const QString kStockSelectAll = QStringLiteral("stockselectall");
const QString kStrategySelectAll = QStringLiteral("strategyselectall");

} // namespace

CRealtimeLinkageSettingDialog::CRealtimeLinkageSettingDialog(QWidget *parent)
    : CCommonDialog(parent), mLinkage(ServiceContext::of(this).get<CLinkageManager>()),
      mTimer(new QTimer(this)), mKinds(mLinkage),
      mAccountTable(0, {30, 75, 75}, QStringLiteral("account_table")),
      mStrategyChoice(tr("交易策略"), {eStrategySelectAll, eAllStrategies, eRevertStrategies}, 1, {30, 150},
                      QStringLiteral("strategy_table")),
      mStockChoice(tr("选择证券"), {eStockSelectAll, eAllStocks, eRevertStocks}, 2, {35, 50, 85, 85},
                   QStringLiteral("stock_table")),
      mBond(SlotBond<CRealtimeLinkageSettingDialog>::make(this)) {
    setObjectName(QStringLiteral("realtime_linkage_setting_dialog"));
    setWindowTitle(tr("交易详情 [分时]"));
    mAccountTable.setStartsChosen(true);
    createUi();
    setFixedSize(560, 520);
    connectService();
    connect(mTimer, &QTimer::timeout, this, &CRealtimeLinkageSettingDialog::slotTimeout);
    mTimer->start(kPoll);
    connect(&ServiceContext::of(this).get<CFileClient>(), &CFileClient::sigReadFinished, this,
            &CRealtimeLinkageSettingDialog::slotImportFinished);
}

CRealtimeLinkageSettingDialog::~CRealtimeLinkageSettingDialog() {
    mBond->end();
    delete mMessageTip;
}

// Controls

void CRealtimeLinkageSettingDialog::createUi() {
    auto *bar = new GZ::CAutoExpandToolBar;
    bar->setFixedHeight(25);
    for (QWidget *button : {mImport.ordersButton(), mImport.dealsButton(),
                            makeBarButton(tr("清空导入数据"), eClearImports, 90)}) {
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
    auto *accounts = new GZ::CGroupBox(tr("资金账号"));
    accounts->setFixedHeight(110);
    accounts->setInnerWidget(mAccountTable.widget());
    auto *kinds = new GZ::CGroupBox(tr("交易数据"));
    kinds->setInnerWidget(mKinds.widget());
    mStrategyChoice.widget()->setFixedHeight(195);
    auto *left = new CWidgetList(Qt::Vertical);
    left->setSpacing(kGap);
    left->setFixedWidth(230);
    left->addFixedWidget(accounts, kAnchored, false);
    left->addStretchWidget(kinds, 1, kAnchored, false);
    left->addFixedWidget(mStrategyChoice.widget(), kAnchored, false);
    mStrategyChoice.widget()->hide();
    auto *body = new CWidgetList(Qt::Horizontal);
    body->setMargin(kGap);
    body->setSpacing(kGap);
    body->addFixedWidget(left, kAnchored, false);
    body->addStretchWidget(mStockChoice.widget(), 1, kAnchored, false);
    return body;
}

// What the service tells

void CRealtimeLinkageSettingDialog::connectService() {
    const auto tell = [bond = mBond](void (CRealtimeLinkageSettingDialog::*handler)()) {
        return [bond, handler] {
            bond->with([handler](CRealtimeLinkageSettingDialog &dialog) { (dialog.*handler)(); });
        };
    };
    CLinkageManager &linkage = mLinkage;
    mConnections = {
        linkage.sigNewTradingDay.connect([bond = mBond](const std::string &day) {
            bond->with([&day](CRealtimeLinkageSettingDialog &dialog) { dialog.onNewTradingDay(day); });
        }),
        linkage.sigAccountsChanged.connect(tell(&CRealtimeLinkageSettingDialog::onUpdateAccounts)),
        linkage.sigStrategysChanged.connect(tell(&CRealtimeLinkageSettingDialog::onUpdateStrategys)),
        linkage.sigStocksChanged.connect(tell(&CRealtimeLinkageSettingDialog::onUpdateStocks)),
        linkage.sigDatasChanged.connect(tell(&CRealtimeLinkageSettingDialog::onUpdateDatas)),
    };
}

void CRealtimeLinkageSettingDialog::onNewTradingDay(const std::string & /*day*/) {
    mNewTradingDay = true;
}

void CRealtimeLinkageSettingDialog::onUpdateAccounts() {
    mAccountsDirty = true;
}

void CRealtimeLinkageSettingDialog::onUpdateDatas() {
    mDatasDirty = true;
}

void CRealtimeLinkageSettingDialog::onUpdateStocks() {
    mStocksDirty = true;
}

void CRealtimeLinkageSettingDialog::onUpdateStrategys() {
    mStrategysDirty = true;
}

void CRealtimeLinkageSettingDialog::slotTimeout() {
    const bool accounts = mAccountsDirty && updateAccounts();
    const bool strategys = mStrategysDirty && updateStrategys();
    const bool stocks = mStocksDirty && updateStocks();
    mAccountsDirty = false;
    mStrategysDirty = false;
    mStocksDirty = false;
    if (accounts || strategys || stocks) {
        deliver(eLinkageChosen); // the data follow with a later turn
    } else if (mDatasDirty) {
        mDatasDirty = false;
        deliver(eLinkageDatasChanged);
    }
}

bool CRealtimeLinkageSettingDialog::updateAccounts() {
    mAccounts = mLinkage.getAccounts();
    return updateAccountTable();
}

bool CRealtimeLinkageSettingDialog::updateAccountTable() {
    std::vector<ChoiceTable::Row> rows;
    for (const auto &account : mAccounts) {
        if (account) {
            rows.push_back(
                {account->getKey(), {GZ::sToQs(account->mAccountId), GZ::sToQs(account->mAccountName)}});
        }
    }
    return mAccountTable.add(rows) && mIsShown;
}

bool CRealtimeLinkageSettingDialog::updateStrategys() {
    mStrategys = mLinkage.getStrategys();
    return updateStrategyTable();
}

bool CRealtimeLinkageSettingDialog::updateStrategyTable() {
    std::vector<ChoiceTable::Row> rows;
    for (const std::string &name : mStrategys) {
        rows.push_back({name, {GZ::sToQs(name)}});
    }
    return mStrategyChoice.table().add(rows) && mStrategyChoice.table().startsChosen() && mIsShown;
}

bool CRealtimeLinkageSettingDialog::updateStocks() {
    CStockManager &catalogue = ServiceContext::of(this).get<CStockManager>();
    for (const std::string &key : mLinkage.getStocks()) {
        if (!mStocks.count(key)) {
            if (const CInstrumentDetailPtr detail = catalogue.getInstrumentDetail(GZ::sToQs(key))) {
                mStocks[key] = detail;
            }
        }
    }
    return updateStockTable();
}

bool CRealtimeLinkageSettingDialog::updateStockTable() {
    std::vector<ChoiceTable::Row> rows;
    for (const auto &[key, detail] : mStocks) {
        if (!mStockChoice.table().has(key)) {
            rows.push_back(
                {key, {getDetailQsMarket(detail), getDetailQsCode(detail), getDetailQsName(detail)}});
        }
    }
    return mStockChoice.table().add(rows) && mStockChoice.table().startsChosen() && mIsShown;
}

// Events of the controls

bool CRealtimeLinkageSettingDialog::handleEvent(int event, int sub, int param, QString text, void *data) {
    switch (event) {
    case eButtonClicked:
        if (sub == kCloseButton) {
            mLinkage.stopProfitCalculator();
            deliver(eLinkageClosed);
            mIsShown = false;
            return CCommonDialog::handleEvent(event, sub, param, text, data);
        }
        handleButton(sub);
        return true;
    case eCheckBoxToggled:
        handleCheckBox(sub, param == 1, text);
        return true;
    case eRadioButtonPicked:
        if (sub == eSeeAll || sub == eSeeStrategies) {
            seeByStrategy(sub == eSeeStrategies);
        }
        return true;
    default:
        return CCommonDialog::handleEvent(event, sub, param, text, data);
    }
}

void CRealtimeLinkageSettingDialog::handleButton(int id) {
    switch (id) {
    case eImportOrders:
        return importOrder();
    case eImportDeals:
        return importDeal();
    case eAllStocks:
        return selectAllStock();
    case eRevertStocks:
        return selectRevertStock();
    case eAllStrategies:
        return selectAllStrategy();
    case eRevertStrategies:
        return selectRevertStrategy();
    case eMinimise:
        return minimise();
    case eClearImports:
        return mLinkage.clearImportData();
    default:
        return;
    }
}

void CRealtimeLinkageSettingDialog::handleCheckBox(int id, bool checked, const QString &table) {
    if (table == mAccountTable.boxName()) {
        selectAccount(id, checked);
    } else if (table == mStrategyChoice.table().boxName()) {
        selectStrategy(id, checked);
    } else if (table == mStockChoice.table().boxName()) {
        selectStock(id, checked);
    } else if (id >= eFirstKind && id <= eLastKind) {
        mKinds.show(static_cast<std::size_t>(id - eFirstKind), checked);
        notifyChosen();
    } else if (id == eStockSelectAll && mStockChoice.setSelectAll(checked)) {
        notifyChosen();
    } else if (id == eStrategySelectAll && mStrategyChoice.setSelectAll(checked)) {
        notifyChosen();
    }
}

void CRealtimeLinkageSettingDialog::seeByStrategy(bool byStrategy) {
    mKinds.filterStrategies(byStrategy);
    mStrategyChoice.widget()->setVisible(byStrategy);
    deliver(eLinkageChosen);
}

void CRealtimeLinkageSettingDialog::notifyChosen() {
    if (mIsShown) {
        deliver(eLinkageChosen);
    }
}

void CRealtimeLinkageSettingDialog::deliver(int event) {
    deliverEvent(event, 0, 0, QString(), nullptr);
}

// Choosing

void CRealtimeLinkageSettingDialog::selectAccount(int row, bool select) {
    mAccountTable.select(row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectStock(int row, bool select) {
    mStockChoice.table().select(row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectStrategy(int row, bool select) {
    mStrategyChoice.table().select(row, select);
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectAllStock() {
    if (mStockChoice.table().selectAll()) {
        notifyChosen();
    }
}

void CRealtimeLinkageSettingDialog::selectAllStrategy() {
    if (mStrategyChoice.table().selectAll()) {
        notifyChosen();
    }
}

void CRealtimeLinkageSettingDialog::selectRevertStock() {
    mStockChoice.table().revert();
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::selectRevertStrategy() {
    mStrategyChoice.table().revert();
    notifyChosen();
}

// Import

void CRealtimeLinkageSettingDialog::importOrder() {
    mImport.start(this, TradeImport::eOrders, &TradeImport::takeOrder);
}

void CRealtimeLinkageSettingDialog::importDeal() {
    mImport.start(this, TradeImport::eDeals, &TradeImport::takeDeal);
}

int CRealtimeLinkageSettingDialog::handleImportOrder(const QString &line, const QString &separator) {
    return TradeImport::takeOrder(line, separator);
}

int CRealtimeLinkageSettingDialog::handleImportDeal(const QString &line, const QString &separator) {
    return TradeImport::takeDeal(line, separator);
}

void CRealtimeLinkageSettingDialog::slotImportFinished(int seq, bool bSuccess, QString /*qsMsg*/) {
    mImport.finish(seq, bSuccess);
}

void CRealtimeLinkageSettingDialog::clearImportData() {
    mLinkage.clearImportData();
}

// Show and minimise

void CRealtimeLinkageSettingDialog::showEvent(QShowEvent *event) {
    CCommonDialog::showEvent(event);
    mIsShown = true;
    if (mKinds.flags()[eShowProfit]) {
        mLinkage.startProfitCalculator();
    }
    if (mMessageTip) {
        mMessageTip->hide();
    }
}

void CRealtimeLinkageSettingDialog::resizeEvent(QResizeEvent *event) {
    CCommonDialog::resizeEvent(event);
    mMinButton->move(event->size().width() - titleButtonMargin() - titleButton()->width() - mMinButton->width(),
                     titleButtonMargin());
}

void CRealtimeLinkageSettingDialog::minimise() {
    mIsShown = false;
    const QPoint place = pos();
    hide();
    if (!mMessageTip) {
        mMessageTip = new CMessageTipWidget(0, nullptr);
        mMessageTip->setToolTip(tr("交易详情"));
        mMessageTip->setFixedSize(100, 50);
        connect(mMessageTip, &CMessageTipWidget::sigMouseDoubleClick, this,
                &CRealtimeLinkageSettingDialog::slotMouseDoubleClick);
        mMessageTip->move(place); // and stays where the user drags it
    }
    mMessageTip->show();
}

void CRealtimeLinkageSettingDialog::slotMouseDoubleClick() {
    show();
    mMessageTip->hide();
}

// What is kept of it

QMap<QString, bool> CRealtimeLinkageSettingDialog::param() const {
    QMap<QString, bool> kept;
    mKinds.store(kept);
    mStockChoice.store(kept, kStockSelectAll);
    mStrategyChoice.store(kept, kStrategySelectAll);
    return kept;
}

void CRealtimeLinkageSettingDialog::setParam(const QMap<QString, bool> &param) {
    mKinds.load(param);
    mStockChoice.load(param, kStockSelectAll);
    mStrategyChoice.load(param, kStrategySelectAll);
}

} // namespace TC
