#include "chartview/GraphContextMenu.h"

#include "chartview/AccountCommands.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/GraphMenu.h"
#include "chartview/GraphPointer.h"
#include "chartview/GraphSubject.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "host/toolkit/QtCompat.h"
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

GraphContextMenu::GraphContextMenu(CRealtimeGraphWidget &graph, const GraphSubject &subject,
                                   GraphPointer &pointer, AccountCommands &accounts)
    : mGraph(graph), mSubject(subject), mPointer(pointer), mAccounts(accounts) {
    refreshLook();
}

void GraphContextMenu::refreshLook() {
    mMenuStyle = GZ::CStyleSheetCenter::getStyle(GZ::CStyleSheetCenter::eMenu);
}

void GraphContextMenu::open(QContextMenuEvent &event) {
    if (mSubject.viewType == EIndexViewType::Plain) {
        event.ignore();
        return;
    }
    event.accept();
    if (event.reason() == QContextMenuEvent::Mouse && (QGuiApplication::mouseButtons() & Qt::RightButton)) {
        mPostponed = true; // a region may be selected until then
        return;
    }
    const bool isPaired = mSubject.viewType == EIndexViewType::Paired;
    if (!isPaired && !mSubject.uiParam->showContextMenu()) {
        return;
    }
    auto *menu = new QMenu(&mGraph);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setStyleSheet(mMenuStyle);
    const GraphMenu entries(mGraph, mSubject);
    if (isPaired) {
        entries.addPaired(*menu);
    } else {
        addEntries(*menu, entries);
    }
    const bool isByKey = event.reason() == QContextMenuEvent::Keyboard;
    menu->exec(isByKey ? event.globalPos() : QCursor::pos()); // the graph may be gone afterwards
}

void GraphContextMenu::addEntries(QMenu &menu, const GraphMenu &entries) {
    bool isRegion = false;
    if (mSubject.isMain() && mPointer.isRegionArmed()) {
        isRegion = addRegion(menu, entries);
    } else if (mSubject.isMain()) {
        entries.addMain(menu);
    } else if (mSubject.displayType == EIndexDisplayType::Sub) {
        entries.addSub(menu);
    }
    if (!isRegion) {
        entries.addExport(menu);
    }
    mAccounts.setMenu(entries.addClosing(menu));
}

bool GraphContextMenu::addRegion(QMenu &menu, const GraphMenu &entries) {
    const QRect region = mPointer.takeRegion();
    mGraph.update();
    if (region.width() <= (mSubject.replay ? kNarrowestRegionOfReplay : kNarrowestRegion)) {
        return false;
    }
    entries.addRegion(menu, mPointer.rightSpan());
    return true;
}

void GraphContextMenu::openAfterRelease(const QMouseEvent &release) {
    if (mPostponed && release.button() == Qt::RightButton) {
        mPostponed = false;
        QCoreApplication::postEvent(&mGraph,
                                    new QContextMenuEvent(QContextMenuEvent::Mouse, release.pos(),
                                                          GZ::globalPosition(release), release.modifiers()));
    }
}

void GraphContextMenu::openTitleMenu(const QPoint &at) {
    if (QMenu *menu = GraphMenu(mGraph, mSubject).makeReplaceMenu(&mGraph)) {
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->setStyleSheet(mMenuStyle);
        menu->exec(at);
    }
}

} // namespace TC
