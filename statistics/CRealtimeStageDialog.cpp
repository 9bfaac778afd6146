#include "statistics/CRealtimeStageDialog.h"

#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CPushButton.h"
#include "host/toolkit/CRadioButton.h"
#include "host/toolkit/CSimpleTextWidget.h"
#include "host/toolkit/CWidgetList.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/Wording.h"
#include "statistics/StageRequest.h"
#include "statistics/StretchClock.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QTimeEdit>
#include <QVBoxLayout>

namespace TC {
namespace {

enum EButton : int { eConfirm = 702, eClose = 703 };

constexpr QSize kSize{380, 302};
constexpr QSize kStageButton{65, 21};
constexpr int kGroupGap = 10;
constexpr int kPreset = 4; ///< the criterion at first
constexpr int kRadiosInRow = 3;

using GZ::CWidgetList;

GZ::CPushButton *newButton(const QString &text, int id) {
    auto *button = new GZ::CPushButton(QStringLiteral("img_btn_medium_normal"), id, 10, 35, 3, 20);
    button->setText(text);
    button->setFixedSize(kStageButton);
    return button;
}

} // namespace

CRealtimeStageDialog::CRealtimeStageDialog(QWidget *parent) : CCommonDialog(parent) {
    setWindowTitle(tr("阶段排序"));
    createUi();
    setMinimumSize(kSize);
    resize(kSize);
}

void CRealtimeStageDialog::createUi() {
    auto *list = new CWidgetList(Qt::Vertical, this);
    list->setMargin(0);
    list->addFixedWidget(newTimes(), CWidgetList::eAnchorBoth, false);
    list->addSpace(kGroupGap);
    list->addFixedWidget(newCriteria(), CWidgetList::eAnchorBoth, false);
    list->addStretch(1);
    list->addFixedWidget(newButtons(), CWidgetList::eAnchorBoth, false);
    setInnerWidget(list);
}

QWidget *CRealtimeStageDialog::newTimes() {
    auto *list = new CWidgetList(Qt::Horizontal);
    mStartEdit = new QTimeEdit;
    mEndEdit = new QTimeEdit;
    for (QTimeEdit *edit : {mStartEdit, mEndEdit}) {
        edit->setDisplayFormat(GZ::kMinuteFormat);
    }
    list->addStretchWidget(mStartEdit, 1, CWidgetList::eAnchorBoth, false);
    list->addFixedWidget(new GZ::CSimpleTextWidget(QStringLiteral("-")), CWidgetList::eAnchorBoth, false);
    list->addStretchWidget(mEndEdit, 1, CWidgetList::eAnchorBoth, false);
    return list;
}

QWidget *CRealtimeStageDialog::newCriteria() {
    auto *box = new GZ::CGroupBox(tr("阶段排序"));
    box->setFocusPolicy(Qt::NoFocus);
    auto *inner = new QWidget;
    auto *rows = new QVBoxLayout(inner);
    QHBoxLayout *row = nullptr;
    for (const QString &text : {tr("阶段最高"), tr("阶段最低"), tr("阶段成交量"), tr("阶段涨跌"),
                                tr("阶段涨幅"), tr("阶段成交额"), tr("阶段振幅"), tr("阶段平均价")}) {
        if (mRadios.size() % kRadiosInRow == 0) {
            row = new QHBoxLayout;
            rows->addLayout(row);
        }
        auto *radio = new GZ::CRadioButton(text, mRadios.size(), inner);
        row->addWidget(radio);
        mRadios.append(radio);
        if (mRadios.size() % kRadiosInRow == 0) {
            row->addStretch();
        }
    }
    row->addStretch(); // of the last row, which is not full
    mRadios[kPreset]->setChecked(true);
    box->setInnerWidget(inner);
    return box;
}

QWidget *CRealtimeStageDialog::newButtons() {
    auto *list = new CWidgetList(Qt::Horizontal);
    list->setMargin(0);
    list->addStretch(1);
    list->addFixedWidget(newButton(tr("确定"), eConfirm), CWidgetList::eAnchorNone, false);
    list->addSpace(kGroupGap);
    list->addFixedWidget(newButton(tr("关闭"), eClose), CWidgetList::eAnchorNone, false);
    list->addSpace(kGroupGap);
    return list;
}

void CRealtimeStageDialog::setRange(quint64 startTime, quint64 endTime, int stageType, quint64 stageParam) {
    mStageType = stageType;
    mStageParam = stageParam;
    mDate = dateOf(static_cast<qint64>(startTime));
    mStartEdit->setTime(clockOf(static_cast<qint64>(startTime)));
    mEndEdit->setTime(clockOf(static_cast<qint64>(endTime)));
}

bool CRealtimeStageDialog::handleEvent(int event, int first, int second, QString text, void *data) {
    if (event == eButtonClicked && first == eConfirm) {
        confirm();
        return true;
    }
    if (event == eButtonClicked && first == eClose) {
        done(kCloseButton);
        return true;
    }
    return CCommonDialog::handleEvent(event, first, second, text, data);
}

void CRealtimeStageDialog::confirm() {
    StageRequest request;
    request.start = secondOf(mDate, mStartEdit->time());
    request.end = secondOf(mDate, mEndEdit->time());
    request.type = mStageType;
    request.param = mStageParam;
    for (int i = 0; i < mRadios.size(); ++i) {
        if (mRadios[i]->isChecked()) {
            request.criterion = i;
            request.criterionText = mRadios[i]->text();
        }
    }
    const QPointer<CRealtimeStageDialog> self = this; // a host may close the view with what it hears
    deliverEvent(eStageRankingAsked, 0, 0, request.text(), nullptr);
    if (self) {
        done(kConfirmed);
    }
}

} // namespace TC
