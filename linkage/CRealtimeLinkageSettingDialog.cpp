// Its life, its events, and what is kept of it.

#include "linkage/CRealtimeLinkageSettingDialog.h"

#include "host/services/CFileClient.h"
#include "host/services/CLinkageManager.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CRadioButton.h"
#include "host/windows/CMessageTipWidget.h"
#include "linkage/LinkageControls.h"

#include <QResizeEvent>
#include <QTimer>

namespace TC {
namespace {

enum EEvent : int {
    eButtonClicked = GZ::CPushButton::kClicked,
    eCheckBoxToggled = GZ::CCheckBox::kToggled,
    eRadioButtonPicked = GZ::CRadioButton::kPicked,
    eChoiceChanged = 3161,
    eDialogClosed = 3162,
    eDatasChanged = 3163,
};

constexpr int kPoll = 1000; ///< milliseconds
constexpr int kTipWidth = 100;
constexpr int kTipHeight = 50;

/// The names under which the kinds are kept, by ELinkageShow; the last one is that of the radio buttons.
const std::array<QString, 8> kKindNames = {
    QStringLiteral("order"),         QStringLiteral("deal"),          QStringLiteral("task"),
    QStringLiteral("buysellamount"), QStringLiteral("buynetamount"),  QStringLiteral("profit"),
    QStringLiteral("balance"),       QStringLiteral("seebystrategy"),
};
const QString kStockSelectAll = QStringLiteral("stockselectall");
const QString kStrategySelectAll = QStringLiteral("strategyselectall");

} // namespace

CRealtimeLinkageSettingDialog::CRealtimeLinkageSettingDialog(QWidget *parent)
    : CCommonDialog(parent), mTimer(new QTimer(this)),
      mBond(SlotBond<CRealtimeLinkageSettingDialog>::make(this)) {
    setObjectName(QStringLiteral("realtime_linkage_setting_dialog"));
    setWindowTitle(tr("交易详情 [分时]"));
    createUi();
    setFixedSize(560, 520);
    connectService();
    connect(mTimer, &QTimer::timeout, this, &CRealtimeLinkageSettingDialog::slotTimeout);
    mTimer->start(kPoll);
    connect(&CManualSingletonT<CFileClient>::instance(), &CFileClient::sigReadFinished, this,
            &CRealtimeLinkageSettingDialog::slotImportFinished);
}

CRealtimeLinkageSettingDialog::~CRealtimeLinkageSettingDialog() {
    mBond->end();
    delete mMessageTip;
}

CLinkageManager &CRealtimeLinkageSettingDialog::service() {
    return CSingletonT<CLinkageManager>::instance();
}

void CRealtimeLinkageSettingDialog::connectService() {
    const auto tell = [bond = mBond](void (CRealtimeLinkageSettingDialog::*handler)()) {
        return [bond, handler] {
            bond->with([handler](CRealtimeLinkageSettingDialog &dialog) { (dialog.*handler)(); });
        };
    };
    CLinkageManager &linkage = service();
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

// What the service tells

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
        deliver(eChoiceChanged); // the data follow with a later turn
    } else if (mDatasDirty) {
        mDatasDirty = false;
        deliver(eDatasChanged);
    }
}

// Events of the controls

bool CRealtimeLinkageSettingDialog::handleEvent(int event, int sub, int param, QString text, void *data) {
    switch (event) {
    case eButtonClicked:
        if (sub == kCloseButton) {
            service().stopProfitCalculator();
            deliver(eDialogClosed);
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
        return service().clearImportData();
    default:
        return;
    }
}

void CRealtimeLinkageSettingDialog::handleCheckBox(int id, bool checked, const QString &table) {
    if (table == kAccountTable) {
        selectAccount(id, checked);
    } else if (table == kStrategyTable) {
        selectStrategy(id, checked);
    } else if (table == kStockTable) {
        selectStock(id, checked);
    } else if (id >= eFirstKind && id <= eLastKind) {
        handleKind(static_cast<std::size_t>(id - eFirstKind), checked);
    } else if (id == eStockSelectAll) {
        mStockSelectAll = checked;
        if (checked) {
            selectAllStock();
        }
    } else if (id == eStrategySelectAll) {
        mStrategySelectAll = checked;
        if (checked) {
            selectAllStrategy();
        }
    }
}

void CRealtimeLinkageSettingDialog::handleKind(std::size_t kind, bool checked) {
    mShowFlags[kind] = checked;
    if (kind == eShowProfit) {
        checked ? service().startProfitCalculator() : service().stopProfitCalculator();
    } else if (kind == eShowBalance) {
        checked ? service().startBalanceCalculator() : service().stopBalanceCalculator();
    }
    notifyChosen();
}

void CRealtimeLinkageSettingDialog::seeByStrategy(bool byStrategy) {
    mShowFlags[eFilterStrategies] = byStrategy;
    mStrategyGroup->setVisible(byStrategy);
    deliver(eChoiceChanged);
}

void CRealtimeLinkageSettingDialog::notifyChosen() {
    if (mIsShown) {
        deliver(eChoiceChanged);
    }
}

void CRealtimeLinkageSettingDialog::deliver(int event) {
    deliverEvent(event, 0, 0, QString(), nullptr);
}

// Show and minimise

void CRealtimeLinkageSettingDialog::showEvent(QShowEvent *event) {
    CCommonDialog::showEvent(event);
    mIsShown = true;
    if (mShowFlags[eShowProfit]) {
        service().startProfitCalculator();
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
        mMessageTip->setFixedSize(kTipWidth, kTipHeight);
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
    for (size_t kind = 0; kind < mKindBoxes.size(); ++kind) {
        kept[kKindNames[kind]] = mKindBoxes[kind]->isChecked();
    }
    kept[kKindNames[eFilterStrategies]] = mSeeByStrategyButton->isChecked();
    kept[kStockSelectAll] = mStockSelectAllBox->isChecked();
    kept[kStrategySelectAll] = mStrategySelectAllBox->isChecked();
    return kept;
}

void CRealtimeLinkageSettingDialog::setParam(const QMap<QString, bool> &param) {
    for (size_t kind = 0; kind < mKindBoxes.size(); ++kind) {
        if (param.contains(kKindNames[kind])) {
            mShowFlags[kind] = param[kKindNames[kind]];
            mKindBoxes[kind]->setChecked(mShowFlags[kind]);
        }
    }
    if (param.contains(kKindNames[eFilterStrategies])) {
        const bool seeAll = param[kKindNames[eFilterStrategies]]; // the other way round than param()
        (seeAll ? mSeeAllButton : mSeeByStrategyButton)->setChecked(true);
    }
    if (param.contains(kStockSelectAll)) {
        mStockSelectAll = param[kStockSelectAll];
        mStockSelectAllBox->setChecked(mStockSelectAll);
    }
    if (param.contains(kStrategySelectAll)) {
        mStrategySelectAll = param[kStrategySelectAll];
        mStrategySelectAllBox->setChecked(mStrategySelectAll);
    }
}

} // namespace TC
