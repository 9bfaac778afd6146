#include "statistics/CRealtimeStatisticDialog.h"

#include "host/services/CConfigService.h"
#include "host/services/CLinkageManager.h"
#include "host/services/ServiceContext.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CComboBox.h"
#include "host/toolkit/CMediumNormalButton.h"
#include "host/toolkit/CPushButtonGroup.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/Wording.h"
#include "host/windows/CWatchPlateWidget.h"
#include "statistics/CRealtimeStageDialog.h"
#include "statistics/OrderMoment.h"
#include "statistics/RegionFigure.h"
#include "statistics/StatisticLayout.h"
#include "statistics/StretchClock.h"

#include <QFontMetrics>
#include <QHideEvent>
#include <QPainter>
#include <QPointer>
#include <QTimeEdit>

namespace TC {
namespace {

enum EControl : int {
    eQuotes = 602,
    eStage = 603,
    eStretchTab = 604,
    eOrderTab = 605,
    eLive = 606,
    eOrders = 607,
};

const QString kTextColor = QStringLiteral("clr_text_light_default");
constexpr int kTextPlace = Qt::AlignLeft | Qt::AlignVCenter;

int textWidth(const QString &text) {
    return QFontMetrics(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")))
        .horizontalAdvance(text);
}

QTimeEdit *newTimeEdit(QWidget *parent) {
    auto *edit = new QTimeEdit(parent);
    edit->setDisplayFormat(GZ::kMinuteFormat);
    edit->setFixedSize(StatisticLayout::kTimeEdit);
    edit->setKeyboardTracking(false); // a time that is half typed is no bound
    return edit;
}

} // namespace

CRealtimeStatisticDialog::CRealtimeStatisticDialog(QWidget *parent, bool isReplay)
    : CCommonDialog(parent), mIsReplay(isReplay), mRequests(nullptr, ServiceContext::of(this)) {
    setFixedSize(StatisticLayout::kDialog);
    createUi();
    connect(&mRequests, &TransactionRequests::sigAnswered, this, &CRealtimeStatisticDialog::takeTransactions);
    placeControls();
}

CRealtimeStatisticDialog::~CRealtimeStatisticDialog() = default;

void CRealtimeStatisticDialog::createUi() {
    if (mIsReplay) {
        createReplayUi();
    }
    mStartEdit = newTimeEdit(this);
    mEndEdit = newTimeEdit(this);
    connect(mStartEdit, &QDateTimeEdit::timeChanged, this, &CRealtimeStatisticDialog::slotStartTimeChanged);
    connect(mEndEdit, &QDateTimeEdit::timeChanged, this, &CRealtimeStatisticDialog::slotEndTimeChanged);
    mStageButton = new GZ::CPushButton(QStringLiteral("img_btn_medium_normal"), eStage, 10, 35, 3, 20, this);
    mStageButton->setText(tr("阶段排序"));
    mQuoteButton = new GZ::CMediumNormalButton(tr("时段行情"), eQuotes, this);
    for (GZ::CPushButton *button : {mStageButton, static_cast<GZ::CPushButton *>(mQuoteButton)}) {
        button->setFixedSize(StatisticLayout::kButton);
        button->setAutoDefault(false); // Enter is for the edits
        button->setVisible(!mIsReplay);
    }
    mWatchPlate = new CWatchPlateWidget(this);
    mWatchPlate->setFixedSize(StatisticLayout::kPlate);
    mStartEdit->setFocus();
}

void CRealtimeStatisticDialog::createReplayUi() {
    mTabGroup = new GZ::CPushButtonGroup(QStringLiteral("clr_pushbutton_group_border_new"), this);
    mTabGroup->setFixedSize(StatisticLayout::kTabs);
    mTabGroup->setTextColorKeys(QStringLiteral("tc_clr_depth_bottom_group_btn_txt_nomal"),
                                QStringLiteral("tc_clr_depth_bottom_group_btn_txt_hover"),
                                QStringLiteral("tc_clr_depth_bottom_group_btn_txt_press"),
                                QStringLiteral("tc_clr_depth_bottom_group_btn_txt_disable"));
    mTabGroup->setBackgroundKeys(QStringLiteral("tc_clr_conciseStyle_depth_bottom_group_btn_"));
    mTabGroup->addButton(eStretchTab, tr("时段统计"), StatisticLayout::kTabWidth);
    mTabGroup->addButton(eOrderTab, tr("追踪统计"), StatisticLayout::kTabWidth);
    mTabGroup->setCheckedId(eStretchTab);
    mLiveCheck = new GZ::CCheckBox(tr("实时"), eLive, this);
    mLiveCheck->setFixedSize(StatisticLayout::kLiveCheck);
    mOrderCombo = new GZ::CComboBox(eOrders, this);
    mOrderCombo->setFixedSize(StatisticLayout::kOrderCombo);
}

void CRealtimeStatisticDialog::setStock(const QString &stock, bool first) {
    if (stock == mStock) {
        return;
    }
    mStock = stock;
    mWatchPlate->setStock(stock);
    if (!first) {
        requestTransactions();
    }
}

void CRealtimeStatisticDialog::setValues(int cycleCount, const QStringList &values) {
    mCycleCount = cycleCount;
    mValues = values;
    placeControls();
    update();
}

void CRealtimeStatisticDialog::setRange(quint64 startTime, quint64 endTime) {
    const auto start = static_cast<qint64>(startTime);
    const auto end = static_cast<qint64>(endTime);
    if (start == mStartTime && end == mEndTime) {
        return;
    }
    const bool isOtherDay = dateOf(start) != mDate;
    mStartTime = start;
    mEndTime = end;
    mDate = dateOf(start);
    if (isOtherDay) {
        loadOrders();
    }
    mStartEdit->setTime(clockOf(mStartTime));
    mEndEdit->setTime(clockOf(mEndTime));
    requestTransactions();
}

void CRealtimeStatisticDialog::followTime(const QTime &time) {
    if (mLiveCheck && mLiveCheck->isChecked()) {
        slotEndTimeChanged(time);
    }
}

void CRealtimeStatisticDialog::slotStartTimeChanged(QTime time) {
    const qint64 start = secondOf(mDate, time);
    if (start >= mEndTime) {
        mStartEdit->setTime(clockOf(mStartTime));
    } else if (start != mStartTime) {
        deliverEvent(eRegionBoundMoved, eRegionStart, 0, QString(), &time);
    }
}

void CRealtimeStatisticDialog::slotEndTimeChanged(QTime time) {
    const qint64 end = secondOf(mDate, time);
    if (end <= mStartTime) {
        mEndEdit->setTime(clockOf(mEndTime));
    } else if (end != mEndTime && time != clockOf(mEndTime)) { // an end on another day is no edit either
        deliverEvent(eRegionBoundMoved, eRegionEnd, 0, QString(), &time);
    }
}

// Events

bool CRealtimeStatisticDialog::handleEvent(int event, int first, int second, QString text, void *data) {
    const QPointer<CRealtimeStatisticDialog> self = this; // a host may close the view with what it hears
    if (event == eComboBoxChanged) {
        startAtOrder();
        return true;
    }
    if (event == eButtonClicked && handleClick(first)) {
        return true;
    }
    return self ? CCommonDialog::handleEvent(event, first, second, text, data) : true;
}

/// What the dialog itself does at a click; true when that is all.
bool CRealtimeStatisticDialog::handleClick(int id) {
    switch (id) {
    case kCloseButton:
        done(kCloseButton);
        return false;
    case eQuotes:
        askForQuotes();
        return false;
    case eStage:
        rankStage();
        return false;
    case eStretchTab:
    case eOrderTab:
        setTracking(id == eOrderTab);
        return true;
    default:
        return false;
    }
}

void CRealtimeStatisticDialog::setTracking(bool tracking) {
    if (tracking == mIsTracking) {
        return;
    }
    mIsTracking = tracking;
    placeControls();
    update();
}

void CRealtimeStatisticDialog::askForQuotes() {
    const QPointer<CRealtimeStatisticDialog> self = this;
    deliverEvent(eRegionQuotesAsked, static_cast<int>(mStartTime), static_cast<int>(mEndTime), QString(),
                 nullptr);
    if (self) {
        done(kCloseButton);
    }
}

void CRealtimeStatisticDialog::rankStage() {
    if (!mStageDialog) {
        mStageDialog = new CRealtimeStageDialog(this);
    }
    mStageDialog->setRange(static_cast<quint64>(mStartTime), static_cast<quint64>(mEndTime), 0, 0);
    const QPointer<CRealtimeStatisticDialog> self = this;
    const int result = mStageDialog->exec();
    if (self && result == CRealtimeStageDialog::kConfirmed) {
        done(kCloseButton);
    }
}

void CRealtimeStatisticDialog::startAtOrder() {
    const auto order = mOrderCombo ? mOrders.value(mOrderCombo->currentText()) : nullptr;
    if (!order) {
        return;
    }
    if (const std::optional<qint64> moment = orderMoment(*order)) {
        setRange(static_cast<quint64>(*moment), static_cast<quint64>(mEndTime));
    }
}

// Orders and transactions

/// Adds the orders of the day of the stretch. Those of other days stay.
void CRealtimeStatisticDialog::loadOrders() {
    CLinkageManager::Keys accounts;
    const ServiceContext &services = ServiceContext::of(this);
    if (const CUserConfig *config = services.get<CConfigService>().userConfig()) {
        for (const auto &account : config->accounts()) {
            if (account) {
                accounts.insert(account->key());
            }
        }
    }
    const auto midnight = static_cast<int>(secondOf(mDate, QTime(0, 0)));
    const auto orders =
        services.get<CLinkageManager>().getOrderDetails(midnight, mStock.toStdString(), accounts);
    int number = 0;
    for (const auto &[account, records] : orders) {
        for (const auto &[key, order] : records) {
            if (!order) {
                continue;
            }
            const QString contract = GZ::sToQs(order->mContractNo);
            if (mOrderCombo) {
                mOrderCombo->addItem(contract, number++);
            }
            mOrders[contract] = order;
        }
    }
}

void CRealtimeStatisticDialog::requestTransactions() {
    mWatchPlate->keepRegion(mStartTime * 1000, mEndTime * 1000);
    mRequests.request(mStock, mStartTime, mEndTime);
}

void CRealtimeStatisticDialog::takeTransactions(const QString &stock,
                                                const TransactionRequests::Records &records) {
    if (!records.empty() && stock == mStock) {
        mWatchPlate->setRegionTransaction(records);
    }
}

// Layout and painting

QString CRealtimeStatisticDialog::countText() const {
    return tr("共 %n 个周期", nullptr, mCycleCount);
}

void CRealtimeStatisticDialog::placeControls() {
    const StatisticLayout layout(mIsReplay, textWidth(countText()));
    mStartEdit->move(layout.startEdit());
    mEndEdit->move(layout.endEdit());
    mStartEdit->setVisible(!mIsTracking);
    mEndEdit->setVisible(!mIsTracking);
    if (mIsReplay) {
        mTabGroup->move(layout.tabs());
        mLiveCheck->move(layout.liveCheck());
        mLiveCheck->setVisible(!mIsTracking);
        mOrderCombo->move(layout.startEdit());
        mOrderCombo->setVisible(mIsTracking);
    }
    mStageButton->move(layout.button(0));
    mQuoteButton->move(layout.button(1));
    mWatchPlate->move(layout.plate());
}

void CRealtimeStatisticDialog::paintEvent(QPaintEvent *event) {
    if (!isVisible()) {
        return;
    }
    CCommonDialog::paintEvent(event);
    const StatisticLayout layout(mIsReplay, textWidth(countText()));
    QPainter painter(this);
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_default_normal")));
    painter.setPen(GZ::themeColor(kTextColor));
    if (mIsTracking) {
        painter.drawText(layout.startLabel(), kTextPlace, tr("合同编号:"));
    } else {
        painter.drawText(layout.startLabel(), kTextPlace, tr("起始时间:"));
        painter.drawText(layout.endLabel(), kTextPlace, tr("终止时间:"));
    }
    painter.drawText(layout.count(), kTextPlace, countText());
    for (int position = 0; position < kRegionFigures; ++position) {
        paintFigure(painter, position, layout.figure(position));
    }
}

void CRealtimeStatisticDialog::paintFigure(QPainter &painter, int position, const QRect &place) const {
    const QString label = figureLabel(position);
    const QString figure = mValues.value(position);
    painter.setPen(GZ::themeColor(kTextColor));
    painter.drawText(place, kTextPlace, label);
    painter.setPen(GZ::themeColor(figureColorKey(position, figure)));
    painter.drawText(place.adjusted(textWidth(label), 0, 0, 0), kTextPlace, figure);
}

void CRealtimeStatisticDialog::onUiResourceChanged() {
    CCommonDialog::onUiResourceChanged();
    if (mWatchPlate) { // not while the base is made
        placeControls();
    }
}

void CRealtimeStatisticDialog::showEvent(QShowEvent *event) {
    placeControls();
    CCommonDialog::showEvent(event);
}

void CRealtimeStatisticDialog::hideEvent(QHideEvent *event) {
    CCommonDialog::hideEvent(event);
    if (event->spontaneous()) {
        return; // minimised with its window
    }
    if (mStageDialog && mStageDialog->isVisible()) {
        mStageDialog->done(kCloseButton);
    }
    deliverEvent(eRegionEnded, 0, 0, QString(), nullptr);
}

} // namespace TC
