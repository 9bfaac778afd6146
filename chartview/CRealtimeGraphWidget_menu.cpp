// The menus of a graph: when they open, and what becomes of a region that was selected.

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/GraphMenu.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>

namespace TC {

namespace {

constexpr int kNarrowestRegion = 20; ///< pixels that are no region yet
constexpr int kNarrowestRegionOfReplay = 10;

} // namespace

GraphMenuSubject CRealtimeGraphWidget::menuSubject() {
    return {*this, *mData, *mUiParam, mStock, mDisplayType, mReplay, mHistory, mCreateNewWorkShow};
}

void CRealtimeGraphWidget::contextMenuEvent(QContextMenuEvent *event) {
    if (mViewType == EIndexViewType::Plain) {
        event->ignore();
        return;
    }
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse && (QGuiApplication::mouseButtons() & Qt::RightButton)) {
        mMenuPostponed = true; // a region may be selected until then
        return;
    }
    const bool isPaired = mViewType == EIndexViewType::Paired;
    if (!isPaired && !mUiParam->showContextMenu()) {
        return;
    }
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(mMenuStyle);
    const GraphMenu entries(menuSubject());
    if (isPaired) {
        entries.addPaired(*menu, mAHOverlay);
    } else {
        addEntries(*menu, entries);
    }
    menu->exec(QCursor::pos()); // this graph may be gone afterwards
}

void CRealtimeGraphWidget::addEntries(QMenu &menu, const GraphMenu &entries) {
    bool isRegion = false;
    if (mDisplayType == EIndexDisplayType::Main && !mNormalContextMenu) {
        isRegion = addRegion(menu, entries);
    } else if (mDisplayType == EIndexDisplayType::Main) {
        entries.addMain(menu);
    } else if (mDisplayType == EIndexDisplayType::Sub) {
        entries.addSub(menu);
    }
    if (!isRegion) {
        entries.addExport(menu);
    }
    const GraphMenuAccounts accounts = entries.addClosing(menu);
    mAccountActions = accounts.actions;
    mAllAccountsSelected = accounts.allShown;
}

bool CRealtimeGraphWidget::addRegion(QMenu &menu, const GraphMenu &entries) {
    const QRect region = mRightRect;
    mRightSelecting = false;
    mNormalContextMenu = true;
    mRightRect = QRect(0, 0, 0, 0);
    update();
    if (region.width() <= (mReplay ? kNarrowestRegionOfReplay : kNarrowestRegion)) {
        return false;
    }
    entries.addRegion(menu, region.x(), region.x() + region.width());
    return true;
}

/// Opens the menu that has waited for the release of the right button, once the release has been handled.
void CRealtimeGraphWidget::openMenuAfterRelease(const QMouseEvent &release) {
    if (mMenuPostponed && release.button() == Qt::RightButton) {
        mMenuPostponed = false;
        QCoreApplication::postEvent(this, new QContextMenuEvent(QContextMenuEvent::Mouse, release.pos(),
                                                                release.globalPos(), release.modifiers()));
    }
}

void CRealtimeGraphWidget::showTitleMenu(const QPoint &at) {
    if (QMenu *menu = GraphMenu(menuSubject()).makeReplaceMenu(this)) {
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->setStyleSheet(mMenuStyle);
        menu->exec(at);
    }
}

} // namespace TC
