#include "containers/SelectedPane.h"

#include "containers/CRealtimeWidget.h"
#include "containers/PaneRow.h"
#include "host/toolkit/CHighlightWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

constexpr int kMainPaneId = 0;
constexpr int kSelectionLine = 1; ///< pixels of the frame
constexpr int kFocusLine = 3;

} // namespace

SelectedPane::SelectedPane(QWidget *view, const PaneRow &panes,
                           boost::shared_ptr<const CRealtimeUiParam> uiParam, EIndexViewType viewType)
    : mView(view), mPanes(panes), mUiParam(std::move(uiParam)), mSelects(viewType != EIndexViewType::Plain),
      mFrame(new GZ::CHighlightWidget(view)) {
    mFrame->hide();
}

SelectedPane::~SelectedPane() {
    delete mFrame;
}

bool SelectedPane::isMain() const {
    return mId == kMainPaneId;
}

CRealtimeWidget *SelectedPane::sub() const {
    return mPanes.sub(mId);
}

CRealtimeWidget *SelectedPane::subOrLast() const {
    CRealtimeWidget *selected = sub();
    return selected || mPanes.subs().isEmpty() ? selected : mPanes.subs().last();
}

void SelectedPane::select(int id) {
    if (!mSelects) {
        return;
    }
    mId = id;
    if (mPanes.subs().isEmpty()) {
        placeOverNone();
        return;
    }
    if (!isMain()) {
        for (CRealtimeWidget *pane : mPanes.subs()) {
            pane->setSelected(pane->getId() == id);
        }
    }
    place();
}

void SelectedPane::selectAt(int position) {
    const QVector<CRealtimeWidget *> &subs = mPanes.subs();
    select(subs.isEmpty() ? kMainPaneId : subs[qMin(position, subs.size() - 1)]->getId());
}

void SelectedPane::place() {
    if (const CRealtimeWidget *pane = isMain() ? mPanes.main() : sub()) {
        placeOver(pane);
    } else if (mFocusShown) {
        placeOverNone();
    }
}

void SelectedPane::placeOverNone() {
    if (mFocusShown && mPanes.main()) {
        placeOver(mPanes.main());
    } else {
        mFrame->hide();
    }
}

void SelectedPane::showFocus(bool shown) {
    if (mFocusShown == shown || !mPanes.main()) {
        return;
    }
    mFocusShown = shown;
    mFrame->hide(); // what lay beneath the frame of before is drawn again
    mFrame->setLineWidth(shown ? kFocusLine : kSelectionLine);
    if (mPanes.subs().isEmpty() || mId < 0) {
        placeOverNone();
    } else {
        place();
    }
}

void SelectedPane::takeFocus(Qt::FocusReason reason) {
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
        showFocus(true);
    }
}

void SelectedPane::placeOver(const CRealtimeWidget *pane) {
    mFrame->setGeometry(QRect(pane->mapTo(mView, QPoint(0, 0)), pane->size()));
    mFrame->setLRMargin(mUiParam->mLeftAxisWidth, mUiParam->mRightAxisWidth);
    mFrame->setTopMargin(pane->titleHeight());
    mFrame->show();
    mFrame->raise();
}

} // namespace TC
