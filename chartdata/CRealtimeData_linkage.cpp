// The user's orders, deals and tasks on the chart, and what of them lies under the mouse.

#include "chartdata/CRealtimeData.h"
#include "chartdata/LinkageGeometry.h"
#include "chartdata/ValueRange.h"
#include "host/services/CStockManager.h"
#include "viewmodel/CRealtimeUiParam.h"

namespace TC {
namespace {

constexpr int kAccountView = 2; ///< of mLinkageFlags
constexpr int kSelectedDataView = 4;

/// Places of mLinkageShow.
enum EShown : std::size_t { eOrders = 0, eDeals = 1, eTasks = 2 };

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
bool isSelectedShown(const CRealtimeUiParam &uiParam, EShown kind) {
    return (uiParam.mLinkageFlags & kSelectedDataView) && uiParam.mLinkageShow[kind];
}

bool isShown(const CRealtimeUiParam &uiParam, EShown kind) {
    return isSelectedShown(uiParam, kind) || (uiParam.mLinkageFlags & kAccountView);
}

} // namespace

bool CRealtimeData::hitOrder(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isSelectedShown(*mUiParam, eOrders) && hasMarkIn(mOrderMarks, circleHitBox(x, y));
}

bool CRealtimeData::hitDeal(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isShown(*mUiParam, eDeals) && hasMarkIn(mDealMarks, circleHitBox(x, y));
}

bool CRealtimeData::hitTask(int x, int y) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    return isShown(*mUiParam, eTasks) && hasMarkIn(mTaskMarks, flagHitBox(x, y));
}

bool CRealtimeData::getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    orders.clear();
    return isShown(*mUiParam, eOrders) && listMarksIn(mOrderMarks, circleHitBox(x, y), orders);
}

bool CRealtimeData::getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    deals.clear();
    return isShown(*mUiParam, eDeals) && listMarksIn(mDealMarks, circleHitBox(x, y), deals);
}

bool CRealtimeData::getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    tasks.clear();
    return isShown(*mUiParam, eTasks) && listMarksIn(mTaskMarks, flagHitBox(x, y), tasks);
}

void CRealtimeData::drawLinkageMarks(QPainter *painter, const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (!painter || rect.isEmpty() || mUiParam->mDayCount != 1) {
        return;
    }
    double close = kUnsetValue;
    std::string key;
    if (mUiParam->mStockKind == 0) {
        const CInstrumentDetailPtr detail = mUiParam->getStockDetail();
        if (!detail) {
            return;
        }
        CStockManager &stocks = CSingletonT<CStockManager>::instance();
        const int date = mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc()
                                                     : stocks.getLastTradingDay(getDetailQsMarket(detail));
        close = stocks.getCurrentDateLastClose(detail, date);
        key = vmStockKey(detail->mMarket, detail->mCode);
    } else if (mUiParam->mStockKind == 1) {
        close = mUiParam->getLastClose();
    }
    if (isUnset(close)) {
        return;
    }
    mDealMarks.clear();
    mOrderMarks.clear();
    mTaskMarks.clear();
}

} // namespace TC
