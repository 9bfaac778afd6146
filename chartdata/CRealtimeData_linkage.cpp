// The user's orders, deals and tasks on the chart, and what of them lies under the mouse.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageGeometry.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/MarkPlacer.h"
#include "chartdata/ValueRange.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

namespace TC {
namespace {

/// Calls `visit` with every row of marks in a box until it answers true; true when it did.
template <class Columns, class Visit> bool anyRowIn(const Columns &columns, const HitBox &box, Visit visit) {
    for (auto column = columns.lower_bound(box.left); column != columns.end() && column->first <= box.right;
         ++column) {
        const auto &rows = column->second;
        for (auto row = rows.lower_bound(box.top); row != rows.end() && row->first <= box.bottom; ++row) {
            if (visit(row->second)) {
                return true;
            }
        }
    }
    return false;
}

template <class Columns> bool hasMarkIn(const Columns &columns, const HitBox &box) {
    return anyRowIn(columns, box, [](const auto &records) { return !records.empty(); });
}

template <class Columns, class Record>
bool listMarksIn(const Columns &columns, const HitBox &box, QList<Record> &list) {
    anyRowIn(columns, box, [&list](const auto &records) {
        for (const auto &record : records) {
            list.append(record.second);
        }
        return false;
    });
    return !list.isEmpty();
}

/// Whether the selected-data view shows a kind of record.
bool isSelectedShown(const CRealtimeUiParam &uiParam, ELinkageShow kind) {
    return (uiParam.mLinkageFlags & eSelectedDataView) && uiParam.mLinkageShow[kind];
}

bool isShown(const CRealtimeUiParam &uiParam, ELinkageShow kind) {
    return isSelectedShown(uiParam, kind) || (uiParam.mLinkageFlags & eAccountView);
}

} // namespace

bool CRealtimeData::hitOrder(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isSelectedShown(*mUiParam, eShowOrders) && hasMarkIn(mOrderMarks, circleHitBox(x, y));
}

bool CRealtimeData::hitDeal(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isShown(*mUiParam, eShowDeals) && hasMarkIn(mDealMarks, circleHitBox(x, y));
}

bool CRealtimeData::hitTask(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isShown(*mUiParam, eShowTasks) && hasMarkIn(mTaskMarks, flagHitBox(x, y));
}

bool CRealtimeData::getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    orders.clear();
    return isShown(*mUiParam, eShowOrders) && listMarksIn(mOrderMarks, circleHitBox(x, y), orders);
}

bool CRealtimeData::getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    deals.clear();
    return isShown(*mUiParam, eShowDeals) && listMarksIn(mDealMarks, circleHitBox(x, y), deals);
}

bool CRealtimeData::getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    tasks.clear();
    return isShown(*mUiParam, eShowTasks) && listMarksIn(mTaskMarks, flagHitBox(x, y), tasks);
}

/// Reference price and key of the instrument shown; false when marks have nothing to be placed against.
bool CRealtimeData::findLinkageReference(LinkageScope &scope) const {
    scope.close = kUnsetValue;
    if (mUiParam->mStockKind == 0) {
        const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
        if (!detail) {
            return false;
        }
        CStockManager &stocks = CSingletonT<CStockManager>::instance();
        const int date = mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc()
                                                     : stocks.getLastTradingDay(getDetailQsMarket(detail));
        scope.close = stocks.getCurrentDateLastClose(detail, date);
        scope.key = vmStockKey(detail->mMarket, detail->mCode);
    } else if (mUiParam->mStockKind == 1) {
        scope.close = mUiParam->getLastClose();
    }
    return !isUnset(scope.close);
}

void CRealtimeData::forgetMarks() {
    mDealMarks.clear();
    mOrderMarks.clear();
    mTaskMarks.clear();
}

void CRealtimeData::drawLinkageMarks(QPainter *painter, const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    LinkageScope scope;
    if (!painter || rect.isEmpty() || mUiParam->mDayCount != 1 || !findLinkageReference(scope)) {
        return;
    }
    forgetMarks();
    painter->save();
    painter->setClipRect(painter->window(), Qt::IntersectClip); // lines are drawn much faster under a clip
    MarkPlacer placer(*mUiParam, priceRange(), rect.height(), scope.close);
    scope.strategies = mUiParam->mLinkageStrategys;
    scope.filter = mUiParam->mLinkageShow[eFilterStrategies];
    if (mUiParam->mLinkageFlags & eSelectedDataView) {
        scope.accounts = mUiParam->mLinkageAccounts;
        scope.instruments = mUiParam->mLinkageStocks;
        drawSelectedData(*painter, rect, placer, scope);
    }
    if ((mUiParam->mLinkageFlags & eAccountView) && !scope.key.empty()) {
        drawAccountView(*painter, placer, scope);
    }
    painter->restore();
}

void CRealtimeData::drawSelectedData(QPainter &painter, const QRect &rect, MarkPlacer &placer,
                                     const LinkageScope &scope) {
    const auto &shown = mUiParam->mLinkageShow;
    if (shown[eShowOrders]) {
        drawOrderMarks(painter, placer, scope);
    }
    if (shown[eShowDeals]) {
        drawDealMarks(painter, placer, scope);
    }
    if (shown[eShowTasks]) {
        drawTaskMarks(painter, placer, scope);
    }
    if (shown[eShowTotals] || shown[eShowNet]) {
        drawAmountCurves(painter, rect, scope);
    }
    if (shown[eShowProfit]) {
        drawProfitCurve(painter, rect, scope);
    }
    if (shown[eShowBalance]) {
        drawBalanceCurve(painter, rect, scope);
    }
}

void CRealtimeData::drawAccountView(QPainter &painter, MarkPlacer &placer, LinkageScope scope) {
    const QString market = getDetailQsMarket(mUiParam->getStockDetail());
    const QList<QString> &names =
        isFuturesMarket(market) ? mUiParam->mFutureAccounts : mUiParam->mStockAccounts;
    scope.accounts.clear();
    if (!CSingletonT<CLinkageManager>::instance().getAccounts(names, scope.accounts)) {
        return;
    }
    scope.instruments = {scope.key};
    drawOrderMarks(painter, placer, scope);
    drawAccountDeals(painter, placer, scope);
    drawAccountTasks(painter, placer, scope);
}

} // namespace TC
