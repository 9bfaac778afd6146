#include "linkage/KindChoice.h"

#include "chartdata/LinkageScope.h"
#include "host/services/CLinkageManager.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CRadioButton.h"
#include "host/toolkit/CWidgetList.h"
#include "linkage/LinkageControls.h"

namespace TC {
namespace {

using GZ::CWidgetList;

constexpr int kRowHeight = 30;
constexpr int kIndent = 10;

/// The names under which the kinds are kept, by ELinkageShow; the last one is that of the radio buttons.
const std::array<QString, 8> kNames = {
    QStringLiteral("order"),         QStringLiteral("deal"),          QStringLiteral("task"),
    QStringLiteral("buysellamount"), QStringLiteral("buynetamount"),  QStringLiteral("profit"),
    QStringLiteral("balance"),       QStringLiteral("seebystrategy"),
};

/// A row of a fixed height that begins with a space; its rest is free.
CWidgetList *controlRow(const QList<QWidget *> &controls) {
    auto *row = new CWidgetList(Qt::Horizontal);
    row->setFixedHeight(kRowHeight);
    row->setSpacing(2);
    row->addSpace(kIndent);
    for (QWidget *control : controls) {
        row->addFixedWidget(control, CWidgetList::eAnchorBoth, false);
    }
    row->addStretch();
    return row;
}

} // namespace

KindChoice::KindChoice(CLinkageManager &linkage)
    : mLinkage(linkage), mAllButton(new GZ::CRadioButton(SettingWords::tr("全部查看"), eSeeAll)),
      mStrategiesButton(new GZ::CRadioButton(SettingWords::tr("按策略查看"), eSeeStrategies)) {
    const QString texts[] = {SettingWords::tr("委托"),   SettingWords::tr("成交"),   SettingWords::tr("任务"),
                             SettingWords::tr("买卖额"), SettingWords::tr("净买额"), SettingWords::tr("盈亏"),
                             SettingWords::tr("配平")};
    for (std::size_t kind = 0; kind < mBoxes.size(); ++kind) {
        mBoxes[kind] = new GZ::CCheckBox(texts[kind], eFirstKind + static_cast<int>(kind));
    }
    mAllButton->setChecked(true);
    auto *list = new CWidgetList(Qt::Vertical);
    for (CWidgetList *row :
         {controlRow({mBoxes[eShowOrders], mBoxes[eShowDeals], mBoxes[eShowTasks]}),
          controlRow({mBoxes[eShowTotals], mBoxes[eShowNet], mBoxes[eShowProfit], mBoxes[eShowBalance]}),
          controlRow({mAllButton, mStrategiesButton})}) {
        list->addFixedWidget(row, CWidgetList::eAnchorBoth, false);
    }
    list->addStretch();
    mWidget = list;
}

void KindChoice::show(std::size_t kind, bool shown) {
    mFlags[kind] = shown;
    if (kind == eShowProfit) {
        shown ? mLinkage.startProfitCalculator() : mLinkage.stopProfitCalculator();
    } else if (kind == eShowBalance) {
        shown ? mLinkage.startBalanceCalculator() : mLinkage.stopBalanceCalculator();
    }
}

void KindChoice::filterStrategies(bool filter) {
    mFlags[eFilterStrategies] = filter;
}

void KindChoice::store(QMap<QString, bool> &kept) const {
    for (std::size_t kind = 0; kind < mBoxes.size(); ++kind) {
        kept[kNames[kind]] = mBoxes[kind]->isChecked();
    }
    kept[kNames[eFilterStrategies]] = mStrategiesButton->isChecked();
}

void KindChoice::load(const QMap<QString, bool> &kept) {
    for (std::size_t kind = 0; kind < mBoxes.size(); ++kind) {
        if (kept.contains(kNames[kind])) {
            mFlags[kind] = kept[kNames[kind]];
            mBoxes[kind]->setChecked(mFlags[kind]);
        }
    }
    if (kept.contains(kNames[eFilterStrategies])) {
        const bool seeAll = kept[kNames[eFilterStrategies]];
        (seeAll ? mAllButton : mStrategiesButton)->setChecked(true);
    }
}

} // namespace TC
