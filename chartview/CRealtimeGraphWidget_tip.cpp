// The box with the trades under the mouse.

#include "chartview/CRealtimeGraphWidget.h"
#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/services/CLinkageManager.h"
#include "host/toolkit/Text.h"

#include <QPainter>

namespace TC {

namespace {

constexpr int kLineHeight = 20;
constexpr int kTextLeft = 16;

QColor themeColor(const QString &key) {
    return GZ::CUiResource::instance().getColor(key);
}

} // namespace

void CRealtimeGraphWidget::paintTip(QPainter &painter) {
    if (!mShowTip || (mDealTips.isEmpty() && mOrderTips.isEmpty())) {
        return;
    }
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text")));
    // The frame is made for deals; orders stand on the chart.
    painter.setPen(QPen(themeColor(QStringLiteral("clr_graph_frame_cross_line")), 1.0, Qt::SolidLine));
    painter.setBrush(themeColor(QStringLiteral("clr_graph_frame_cross_line_bg")));
    painter.drawRect(2, 2, 130, kLineHeight * mDealTips.size() + 3);

    int y = 0;
    const auto drawLine = [&](bool buy, const QString &side, int volume, double price) {
        const QString key = buy ? QStringLiteral("clr_global_rise") : QStringLiteral("clr_global_fall");
        painter.setPen(themeColor(key));
        y += kLineHeight;
        painter.drawText(kTextLeft, y,
                         side + tr("%1　价格: ").arg(volume) +
                             GZ::formatDoubleNumber(price, 2, utils::eFormatPlain, false, tr("非法值")));
    };
    for (const auto &deal : mDealTips) {
        const bool buy = kvservice::isBuyByDirection(deal->mDirection, deal->mOffsetFlag);
        drawLine(buy, buy ? tr("买入: ") : tr("卖出: "), deal->mVolume, deal->mPrice);
    }
    for (const auto &order : mOrderTips) {
        const bool buy = kvservice::isBuyByDirection(order->mDirection, order->mOffsetFlag);
        drawLine(buy, buy ? tr("委买: ") : tr("委卖: "), order->mVolume, order->mPrice);
    }
}

} // namespace TC
