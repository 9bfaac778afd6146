#include "chartdata/TradeCurves.h"

#include "chartdata/ValueRange.h"
#include "host/services/CHostClock.h"
#include "host/services/CLinkageManager.h"
#include "host/services/CTradeOpenCloseTimeManager.h"
#include "host/toolkit/ThemeColor.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>
#include <QPolygon>

namespace TC {
namespace {

const QColor kProfitColor(255, 255, 128, 192);
const QColor kBalanceColor(255, 128, 0, 192);

void drawCurve(QPainter &painter, const QPolygon &curve, const QColor &color) {
    painter.setPen(color);
    if (curve.size() > 1) {
        painter.drawPolyline(curve);
    }
}

/// The same, drawn flat on to `end` where that lies beyond the last point.
void drawCurveTo(QPainter &painter, QPolygon curve, int end, const QColor &color) {
    if (!curve.isEmpty() && end > curve.last().x()) {
        curve.append(QPoint(end, curve.last().y()));
    }
    drawCurve(painter, curve, color);
}

/// Whether an amount makes a point of a curve.
bool isDrawn(double amount) {
    return isUsable(amount) && !isZero(amount);
}

/// The points of a curve by index, of which `column` gives the pixel. What is no number makes no point.
template <class Values, class Column>
QPolygon curveOf(const Values &values, const CurveScale &scale, int height, Column column) {
    QPolygon curve;
    for (const auto &value : values) {
        if (isUsable(value.second)) {
            curve.append(QPoint(column(value.first), curveRow(value.second, scale, height)));
        }
    }
    return curve;
}

} // namespace

template <class Value>
TradingOrder<Value> TradeCurves::inTradingOrder(const std::map<int, Value> &byMinute) const {
    const CInstrumentDetailPtr detail = mView.getStockDetail();
    const bool night = mView.service<CTradeOpenCloseTimeManager>().hasNightQuoter(getDetailQsMarket(detail),
                                                                                  getDetailQsCode(detail));
    std::multimap<int, std::pair<int, Value>> byOrder;
    for (const auto &[minute, value] : byMinute) {
        byOrder.emplace(tradingMinute(minute, night), std::make_pair(mView.getIndexByTime(minute), value));
    }
    TradingOrder<Value> values;
    for (const auto &entry : byOrder) {
        values.push_back(entry.second);
    }
    return values;
}

/// Values by minute as values by index: the last of those that share one.
TimedValues TradeCurves::byIndex(const TimedValues &byMinute) const {
    TimedValues values;
    for (const auto &value : byMinute) {
        values[mView.getIndexByTime(value.first)] = value.second;
    }
    return values;
}

int TradeCurves::nowColumn() const {
    return mView.getXAxisByIndex(mView.getIndexByTime(mView.service<CHostClock>().currentDateTime().time()));
}

void TradeCurves::drawAmounts(const LinkageScope &scope) {
    mView.mLinkageAmounts.clear();
    const TimedAmounts totals = mView.service<CLinkageManager>().getTotalBuySellAmounts(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    if (totals.empty()) {
        return;
    }
    for (const auto &total : totals) {
        mView.mLinkageAmounts[mView.getIndexByTime(total.first)] = total.second;
    }
    const int now = nowColumn();
    if (mView.mLinkageShow[eShowTotals]) {
        drawTotals(totals, now);
    }
    if (mView.mLinkageShow[eShowNet]) {
        drawNet(totals, now);
    }
}

void TradeCurves::drawTotals(const TimedAmounts &totals, int now) {
    const auto ordered = inTradingOrder(totals);
    const CurveScale scale = totalAmountScale(ordered);
    QPolygon buys;
    QPolygon sells;
    for (const auto &total : ordered) {
        const int x = mView.getXAxisByIndex(total.first);
        if (isDrawn(total.second.first)) {
            buys.append(QPoint(x, curveRow(total.second.first, scale, mHeight)));
        }
        if (isDrawn(total.second.second)) {
            sells.append(QPoint(x, curveRow(total.second.second, scale, mHeight)));
        }
    }
    drawCurveTo(mPainter, buys, now, GZ::themeColor("tc_clr_total_buyamount"));
    drawCurveTo(mPainter, sells, now, GZ::themeColor("tc_clr_total_sellamount"));
}

void TradeCurves::drawNet(const TimedAmounts &totals, int now) {
    TimedValues net; // by minute
    for (const auto &total : totals) {
        const auto &[buy, sell] = total.second;
        if (isUsable(buy) && isUsable(sell) && (!isZero(buy) || !isZero(sell))) {
            net[total.first] = buy - sell;
        }
    }
    const auto column = [this](int index) { return mView.getXAxisByIndex(index); };
    drawCurveTo(mPainter, curveOf(byIndex(net), balancedScale(net), mHeight, column), now,
                GZ::themeColor("tc_clr_buyamount"));
}

void TradeCurves::drawProfit(const LinkageScope &scope) {
    const TimedValues profits = mView.service<CLinkageManager>().getTotalProfits(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    mView.mLinkageProfits = byIndex(profits);
    drawByMinute(profits, balancedScale(profits), kProfitColor);
}

void TradeCurves::drawBalance(const LinkageScope &scope) {
    const TimedValues balances = mView.service<CLinkageManager>().getTotalBalances(
        scope.instruments, scope.accounts, scope.strategies, scope.filter);
    mView.mLinkageBalances = byIndex(balances);
    drawByMinute(balances, positiveScale(balances), kBalanceColor);
}

void TradeCurves::drawByMinute(const TimedValues &values, const CurveScale &scale, const QColor &color) {
    const auto column = [this](int index) { return mView.getXAxisByIndex(index); };
    drawCurve(mPainter, curveOf(inTradingOrder(values), scale, mHeight, column), color);
}

} // namespace TC
