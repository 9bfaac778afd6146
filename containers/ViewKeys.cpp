#include "containers/ViewKeys.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageScope.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/CrossLines.h"
#include "containers/MainView.h"
#include "containers/PaneRow.h"
#include "containers/SelectedPane.h"
#include "containers/accessibility/ChartAccessibility.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMouseEvent>
#include <QShortcut>

#include <limits>
#include <utility>

namespace TC {

namespace {

constexpr int kSplitterStep = 16; ///< pixels
constexpr int kAllTheWay = std::numeric_limits<int>::max() / 2;

} // namespace

ViewKeys::ViewKeys(MainView &view, const PaneRow &panes, SelectedPane &selected, CrossLines &crossLines,
                   boost::shared_ptr<const CRealtimeUiParam> uiParam)
    : mView(view), mPanes(panes), mSelected(selected), mCrossLines(crossLines), mUiParam(std::move(uiParam)) {
    // NOLINTBEGIN(bugprone-suspicious-enum-usage): keys are written so in both versions of Qt
    add(Qt::CTRL | Qt::Key_Up, [this] { selectPane(-1); });
    add(Qt::CTRL | Qt::Key_Down, [this] { selectPane(1); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Up, [this] { moveSplitter(-kSplitterStep); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Down, [this] { moveSplitter(kSplitterStep); });
    add(Qt::SHIFT | Qt::Key_Left, [this] { mark(-1); });
    add(Qt::SHIFT | Qt::Key_Right, [this] { mark(1); });
    add(Qt::SHIFT | Qt::Key_Home, [this] { mark(-kAllTheWay); });
    add(Qt::SHIFT | Qt::Key_End, [this] { mark(kAllTheWay); });
    add(Qt::CTRL | Qt::Key_Return, [this] { activate(); });
    add(Qt::CTRL | Qt::Key_Enter, [this] { activate(); });
    // NOLINTEND(bugprone-suspicious-enum-usage)
    mGiveUp = add(Qt::Key_Escape, [this] { unmark(); });
    mGiveUp->setEnabled(false);
}

template <class Action> QShortcut *ViewKeys::add(const QKeySequence &keys, Action action) {
    auto *shortcut = new QShortcut(keys, &mView);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, action);
    return shortcut;
}

// Panes

/// The main pane where none is selected.
CRealtimeWidget *ViewKeys::selectedPane() const {
    CRealtimeWidget *sub = mSelected.sub();
    return sub ? sub : mPanes.main();
}

void ViewKeys::selectPane(int step) {
    const QVector<CRealtimeWidget *> panes = mPanes.all();
    const int position = panes.indexOf(selectedPane()) + step;
    if (position >= 0 && position < panes.size()) {
        mSelected.select(panes[position]->getId());
    }
    mSelected.showFocus(true);
}

void ViewKeys::moveSplitter(int pixels) {
    const int position = mPanes.all().indexOf(selectedPane());
    mPanes.list()->moveSplitter(qMax(position, 1), pixels);
}

void ViewKeys::activate() {
    if (const CRealtimeWidget *pane = mSelected.sub()) {
        mView.handleEvent(eSubPaneDoubleClicked, pane->getId(), 0, QString(), nullptr);
    } else {
        openRecords();
    }
}

/// The topmost mark in the column of the cross line, orders before deals before tasks, as under the mouse.
void ViewKeys::openRecords() {
    CRealtimeGraphWidget *graph = mPanes.main()->getCurrentGraphWidget();
    const int index = mUiParam->mCrossIndex;
    if (!mCrossLines.isShown() || index < 0 || mUiParam->mLinkageFlags == eNoLinkage) {
        return;
    }
    const CRealtimeData &data = *graph->getData();
    const int x = placeOf(*graph, index).x();
    using Hit = bool (CRealtimeData::*)(int, int) const;
    const std::pair<Hit, const char *> kinds[] = {{&CRealtimeData::hitOrder, "linkage_orders"},
                                                  {&CRealtimeData::hitDeal, "linkage_deals"},
                                                  {&CRealtimeData::hitTask, "linkage_tasks"}};
    for (const auto &[hit, kind] : kinds) {
        for (int y = 0; y < graph->height(); ++y) {
            if ((data.*hit)(x, y)) {
                mView.handleEvent(eMarkDoubleClicked, x, y, QLatin1String(kind), graph);
                return;
            }
        }
    }
}

// Regions and menus

QPoint ViewKeys::placeOf(const CRealtimeGraphWidget &graph, int index) const {
    return {mUiParam->getXAxisByIndex(index), graph.height() / 2};
}

void ViewKeys::sendMouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
    const QPoint at = placeOf(*mMarked, mEnd);
    QMouseEvent event(type, at, mMarked->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(mMarked, &event);
}

void ViewKeys::mark(int minutes) {
    if (!mMarked) {
        if (!mCrossLines.isShown() || mUiParam->mCrossIndex < 0) {
            mCrossLines.show(false);
            mCrossLines.toEnd();
        }
        mMarked = mPanes.main()->getCurrentGraphWidget();
        mEnd = mUiParam->mCrossIndex;
        if (mEnd < 0) {
            mMarked = nullptr; // there is no minute
            return;
        }
        sendMouse(QEvent::MouseButtonPress, Qt::RightButton, Qt::RightButton);
    }
    const int newest = qMin(mUiParam->dataCount(), mUiParam->mPointCount) - 1;
    mEnd = qBound(0, mEnd + minutes, qMax(newest, 0));
    if (mMarked) {
        sendMouse(QEvent::MouseMove, Qt::NoButton, Qt::RightButton);
    }
    mGiveUp->setEnabled(mMarked);
    announceCrossLine(mView);
}

/// The graph forgets what was under way in it when the mouse leaves.
void ViewKeys::unmark() {
    mGiveUp->setEnabled(false);
    if (const QPointer<CRealtimeGraphWidget> graph = std::exchange(mMarked, nullptr)) {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(graph, &leave);
    }
}

void ViewKeys::openMenu(const QContextMenuEvent &event) {
    const QPointer<ViewKeys> alive(this);
    QPointer<CRealtimeGraphWidget> graph = selectedPane()->getCurrentGraphWidget();
    QPoint at = graph->rect().center();
    if (mMarked) {
        sendMouse(QEvent::MouseButtonRelease, Qt::RightButton, Qt::NoButton);
        graph = mMarked;
    }
    if (graph && mCrossLines.isShown() && mUiParam->mCrossIndex >= 0) {
        at = placeOf(*graph, mUiParam->mCrossIndex);
    }
    if (graph) {
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, at, graph->mapToGlobal(at), event.modifiers());
        QCoreApplication::sendEvent(graph, &menu);
    }
    if (alive) {
        unmark();
    }
}

} // namespace TC
