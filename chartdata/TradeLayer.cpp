#include "chartdata/TradeLayer.h"

#include "chartdata/ChartLayout.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/MarkPlacer.h"
#include "chartdata/PanePixmap.h"
#include "chartdata/ShownDay.h"
#include "chartdata/TradeCurves.h"
#include "chartdata/TradeMarks.h"
#include "chartdata/ValueLookup.h"
#include "chartdata/ValueRange.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/VectorPainter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>
#include <QPicture>

namespace TC {
namespace {

/// Whether the selected-data view shows a kind of record.
bool isSelectedShown(const CRealtimeUiParam &view, ELinkageShow kind) {
    return (view.mLinkageFlags & eSelectedDataView) && view.mLinkageShow[kind];
}

bool isShown(const CRealtimeUiParam &view, ELinkageShow kind) {
    return isSelectedShown(view, kind) || (view.mLinkageFlags & eAccountView);
}

void drawSelected(TradeMarks &marks, TradeCurves &curves, const CRealtimeUiParam &view,
                  const LinkageScope &scope) {
    const auto &shown = view.mLinkageShow;
    if (shown[eShowOrders]) {
        marks.drawOrders(scope);
    }
    if (shown[eShowDeals]) {
        marks.drawDeals(scope);
    }
    if (shown[eShowTasks]) {
        marks.drawTasks(scope);
    }
    if (shown[eShowTotals] || shown[eShowNet]) {
        curves.drawAmounts(scope);
    }
    if (shown[eShowProfit]) {
        curves.drawProfit(scope);
    }
    if (shown[eShowBalance]) {
        curves.drawBalance(scope);
    }
}

void drawAccountView(TradeMarks &marks, const CRealtimeUiParam &view, LinkageScope scope) {
    const QString market = getDetailQsMarket(view.getStockDetail());
    const QList<QString> &names = isFuturesMarket(market) ? view.mFutureAccounts : view.mStockAccounts;
    scope.accounts.clear();
    if (!view.service<CLinkageManager>().getAccounts(names, scope.accounts)) {
        return;
    }
    scope.instruments = {scope.key};
    marks.drawAccountOrders(scope);
    marks.drawAccountDeals(scope);
    marks.drawAccountTasks(scope);
}

/// Where the trades may be drawn: everywhere, but not among the volume. `rect` is the room of the prices.
QRect roomOf(const QPainter &painter, const QRect &rect, bool hasVolume) {
    constexpr int kBelow = 2; // pixels that the price chart leaves free beneath its room
    QRect room = painter.window();
    if (hasVolume) {
        room.setBottom(rect.bottom() + kBelow);
    }
    return room;
}

} // namespace

/// Whether the pane is one that shows trades.
bool TradeLayer::isWanted() const {
    return mDisplayType == EIndexDisplayType::Main && mView.service<CLinkageManager>().isEnabled();
}

void TradeLayer::make(const QSize &pane, double ratio) {
    mPixmap = isWanted() ? panePixmap(pane, ratio) : QPixmap();
    if (!mPixmap.isNull()) {
        mPixmap.fill(Qt::transparent);
    }
}

bool TradeLayer::draw(const QRect &rect, const QSize &pane, double ratio) {
    if (!isWanted() || mView.mLinkageFlags == eNoLinkage || rect.width() <= 0 || rect.height() <= 0) {
        return false;
    }
    if (mPixmap.isNull()) {
        mPixmap = panePixmap(pane, ratio);
    }
    if (mPixmap.isNull()) {
        return false;
    }
    mPixmap.fill(Qt::transparent);
    mBook.clear();
    QPainter painter;
    if (painter.begin(&mPixmap)) {
        drawMarks(painter, chartLayout(rect.size(), mView.mShowVolume).price);
    }
    return true;
}

void TradeLayer::paint(QPainter &painter, const QRect &pane, const QRegion *part) {
    if (!isWanted() || mView.mLinkageFlags == eNoLinkage) {
        return;
    }
    if (GZ::drawsVectors(painter)) {
        QPicture marks; // whose painter has the size of the pane, as that of the pixmap has
        marks.setBoundingRect(pane);
        QPainter recorder(&marks);
        mBook.clear();
        drawMarks(recorder, chartLayout(pane.size(), mView.mShowVolume).price);
        recorder.end();
        painter.drawPicture(pane.topLeft(), marks);
        return;
    }
    if (mPixmap.isNull()) {
        return;
    }
    const auto blit = [&] { blitPane(painter, pane, mPixmap, pane.size()); };
    if (part) {
        paintByPieces(painter, *part, [&](const QRect &) { blit(); });
    } else {
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        blit();
    }
}

/// Reference price and key of the instrument shown; false when marks have nothing to be placed against.
bool TradeLayer::findReference(LinkageScope &scope) const {
    scope.close = kUnsetValue;
    if (mView.mStockKind == eInstrument) {
        const CInstrumentDetailPtr detail = mView.getStockDetail();
        if (!detail) {
            return false;
        }
        CStockManager &stocks = mView.service<CStockManager>();
        const int date = mView.mGetTradeDateFunc ? mView.mGetTradeDateFunc()
                                                 : stocks.getLastTradingDay(getDetailQsMarket(detail));
        scope.close = stocks.getCurrentDateLastClose(detail, date);
        scope.key = vmStockKey(detail->mMarket, detail->mCode);
    } else if (mView.mStockKind == eUserIndex) {
        scope.close = mView.getLastClose();
    }
    return !isUnset(scope.close);
}

void TradeLayer::drawMarks(QPainter &painter, const QRect &rect) {
    LinkageScope scope;
    if (rect.isEmpty() || mView.mDayCount != 1 || !findReference(scope)) {
        return;
    }
    mBook.clear();
    painter.save();
    painter.setClipRect(roomOf(painter, rect, mView.mShowVolume),
                        Qt::IntersectClip); // lines are drawn much faster under a clip
    MarkPlacer placer(mView, mLookup.priceRange(), rect.height(), scope.close);
    TradeMarks marks(painter, mView, mDay, placer, mBook);
    scope.strategies = mView.mLinkageStrategys;
    scope.filter = mView.mLinkageShow[eFilterStrategies];
    if (mView.mLinkageFlags & eSelectedDataView) {
        scope.accounts = mView.mLinkageAccounts;
        scope.instruments = mView.mLinkageStocks;
        TradeCurves curves(painter, mView, rect.height());
        drawSelected(marks, curves, mView, scope);
    }
    if ((mView.mLinkageFlags & eAccountView) && !scope.key.empty()) {
        drawAccountView(marks, mView, scope);
    }
    painter.restore();
}

bool TradeLayer::hitOrder(int x, int y) const {
    return isSelectedShown(mView, eShowOrders) && mBook.orders.any(circleHitBox(x, y));
}

bool TradeLayer::hitDeal(int x, int y) const {
    return isShown(mView, eShowDeals) && mBook.deals.any(circleHitBox(x, y));
}

bool TradeLayer::hitTask(int x, int y) const {
    return isShown(mView, eShowTasks) && mBook.tasks.any(flagHitBox(x, y));
}

bool TradeLayer::getOrdersAt(int x, int y, QList<boost::shared_ptr<kvservice::COrderDetail>> &orders) const {
    orders.clear();
    return isShown(mView, eShowOrders) && mBook.orders.list(circleHitBox(x, y), orders);
}

bool TradeLayer::getDealsAt(int x, int y, QList<boost::shared_ptr<kvservice::CDealDetail>> &deals) const {
    deals.clear();
    return isShown(mView, eShowDeals) && mBook.deals.list(circleHitBox(x, y), deals);
}

bool TradeLayer::getTasksAt(int x, int y, QList<boost::shared_ptr<kvservice::CTaskDetail>> &tasks) const {
    tasks.clear();
    return isShown(mView, eShowTasks) && mBook.tasks.list(flagHitBox(x, y), tasks);
}

} // namespace TC
