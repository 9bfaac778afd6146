#include "linkage/ChoiceGroup.h"

#include "host/toolkit/CAutoExpandToolBar.h"
#include "host/toolkit/CCheckBox.h"
#include "host/toolkit/CGroupBox.h"
#include "host/toolkit/CSmallNoNormalButton.h"
#include "host/toolkit/CStandardTable.h"
#include "host/toolkit/CWidgetList.h"
#include "linkage/LinkageControls.h"

namespace TC {
namespace {

using GZ::CWidgetList;

constexpr int kChoiceButtonWidth = 40;

} // namespace

ChoiceGroup::ChoiceGroup(const QString &title, const Bar &bar, int tableId, const QList<int> &widths,
                         const QString &boxName)
    : mTable(tableId, widths, boxName),
      mSelectAll(new GZ::CCheckBox(SettingWords::tr("自动全选"), bar.selectAll)),
      mGroup(new GZ::CGroupBox(title)) {
    auto *controls = new GZ::CAutoExpandToolBar;
    controls->setBackground(QStringLiteral("tc_img_op_hedge_type_bg"), 2, 8, 2, 8, -1);
    controls->setMargin(2);
    controls->setSpacing(4);
    controls->addFixedWidget(mSelectAll, CWidgetList::eAnchorNone, false);
    controls->addFixedWidget(makeBarButton(SettingWords::tr("全选"), bar.all, kChoiceButtonWidth),
                             CWidgetList::eAnchorNone, false);
    controls->addFixedWidget(makeBarButton(SettingWords::tr("反选"), bar.revert, kChoiceButtonWidth),
                             CWidgetList::eAnchorNone, false);
    auto *list = new CWidgetList(Qt::Vertical);
    list->addFixedWidget(controls, CWidgetList::eAnchorBoth, false);
    list->addStretchWidget(mTable.widget(), 1, CWidgetList::eAnchorBoth, false);
    mGroup->setInnerWidget(list);
}

bool ChoiceGroup::setSelectAll(bool selectAll) {
    mTable.setStartsChosen(selectAll);
    return selectAll && mTable.selectAll();
}

void ChoiceGroup::store(QMap<QString, bool> &kept, const QString &name) const {
    kept[name] = mSelectAll->isChecked();
}

void ChoiceGroup::load(const QMap<QString, bool> &kept, const QString &name) {
    if (kept.contains(name)) {
        mTable.setStartsChosen(kept[name]);
        mSelectAll->setChecked(kept[name]);
    }
}

} // namespace TC
