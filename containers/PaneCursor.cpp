#include "containers/PaneCursor.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/DayGraphs.h"
#include "containers/PaneArithmetic.h"
#include "containers/PaneTitle.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <utility>

namespace TC {

namespace {

/// Pixels above the graphs of a formula pane, where the cross line is concerned.
constexpr int kSubTitleHeight = 16;

} // namespace

PaneCursor::PaneCursor(const DayGraphs &days, const PaneTitle &title,
                       boost::shared_ptr<const CRealtimeUiParam> uiParam)
    : mDays(days), mTitle(title), mUiParam(std::move(uiParam)) {}

int PaneCursor::columnIn(int position) const {
    return mUiParam->getXAxisByIndex(mUiParam->mCrossIndex) + mDays.at(position)->width() * position;
}

int PaneCursor::rowIn(CRealtimeData &data) const {
    return data.yAtIndex(mUiParam->mCrossIndex, mDays.main()->rect()) + mTitle.height();
}

int PaneCursor::column() const {
    const int position = mDays.positionUnderMouse();
    if (position != kNowhere) {
        return columnIn(position);
    }
    const int last = mDays.count() - 1;
    return mUiParam->mCursorByKey
               ? mUiParam->getXAxisByIndex(mUiParam->mCrossIndex) + mDays.at(0)->width() * last
               : kNowhere;
}

int PaneCursor::row() const {
    const int position = mDays.positionUnderMouse();
    if (mUiParam->mCursorByKey) {
        const int shown = position != kNowhere ? position : mDays.count() - 1;
        return rowIn(*mDays.at(shown)->getData());
    }
    return position != kNowhere ? mDays.at(position)->getMouseY() + mTitle.height() : kNowhere;
}

int PaneCursor::subColumn() const {
    const int position = mDays.positionUnderMouse();
    return position != kNowhere ? columnIn(position) : kNowhere;
}

int PaneCursor::subRow() const {
    const int position = mDays.positionUnderMouse();
    return position != kNowhere && !mUiParam->mCursorByKey ? mDays.at(position)->getMouseY() + kSubTitleHeight
                                                           : kNowhere;
}

boost::shared_ptr<CRealtimeData> PaneCursor::dataUnderMouse() const {
    if (!mUiParam->mCursorByKey) {
        return {};
    }
    for (int i = 0; i < mDays.count(); ++i) {
        const CRealtimeGraphWidget *graph = mDays.at(i);
        if (graph && graph->isCrossActive()) {
            return graph->getData();
        }
    }
    return {};
}

} // namespace TC
