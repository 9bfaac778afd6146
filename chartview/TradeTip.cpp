#include "chartview/TradeTip.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/FittedFont.h"
#include "host/records/CDealDetail.h"
#include "host/records/COrderDetail.h"
#include "host/services/CLinkageManager.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"

#include <QPainter>
#include <QVector>

#include <utility>

namespace TC {

namespace {

constexpr int kLineHeight = 20;
constexpr int kTextLeft = 16;
constexpr int kTextWidth = 114; ///< pixels from there to the frame, less one

struct TipLine {
    bool buy = false;
    QString text;
};

/// "buyer or seller: volume, price" of a deal or an order.
template <class Record> TipLine tipLine(const Record &record, const QString &buyer, const QString &seller) {
    const bool buy = kvservice::isBuyByDirection(record.mDirection, record.mOffsetFlag);
    return {buy,
            (buy ? buyer : seller) + TradeTip::tr("%1　价格: ").arg(record.mVolume) +
                GZ::formatDoubleNumber(record.mPrice, 2, utils::eFormatPlain, false, TradeTip::tr("非法值"))};
}

} // namespace

void TradeTip::search(const CRealtimeData &data, const QPoint &at) {
    mDealTips.clear();
    mOrderTips.clear();
    mShowTip = data.getDealsAt(at.x(), at.y(), mDealTips) || data.getOrdersAt(at.x(), at.y(), mOrderTips);
}

bool TradeTip::hide() {
    return std::exchange(mShowTip, false);
}

bool TradeTip::drop() {
    mDealTips.clear();
    mOrderTips.clear();
    return hide();
}

void TradeTip::paint(QPainter &painter) const {
    if (!mShowTip || (mDealTips.isEmpty() && mOrderTips.isEmpty())) {
        return;
    }
    QVector<TipLine> lines;
    for (const auto &deal : mDealTips) {
        lines.append(tipLine(*deal, tr("买入: "), tr("卖出: ")));
    }
    for (const auto &order : mOrderTips) {
        lines.append(tipLine(*order, tr("委买: "), tr("委卖: ")));
    }
    // The frame is made for deals; orders stand on the chart.
    painter.setPen(QPen(GZ::themeColor("clr_graph_frame_cross_line"), 1.0, Qt::SolidLine));
    painter.setBrush(GZ::themeColor("clr_graph_frame_cross_line_bg"));
    painter.drawRect(2, 2, 130, kLineHeight * mDealTips.size() + 3);

    QStringList texts;
    for (const TipLine &line : lines) {
        texts.append(line.text);
    }
    const QFont font = GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text"));
    painter.setFont(fittedFont(font, texts, kTextWidth));
    int y = 0;
    for (const TipLine &line : lines) {
        y += kLineHeight;
        painter.setPen(GZ::themeColor(line.buy ? "clr_global_rise" : "clr_global_fall"));
        painter.drawText(kTextLeft, y, line.text);
    }
}

} // namespace TC
