// What a graph paints, bottom to top.

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "host/services/CConfigService.h"
#include "host/services/CEnhanceDrawManager.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>

namespace TC {

namespace {

const QColor kNoticeColor(255, 0, 0, 255);
const QColor kRegionLineColor(234, 153, 49, 255);

QPen dashedPen(const QColor &color) {
    QPen pen(color, 1, Qt::CustomDashLine);
    pen.setDashPattern({9.0, 4.0});
    return pen;
}

} // namespace

void CRealtimeGraphWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const PaintCache &cache = paintCache();
    const bool valid = mUiParam->isValid();
    const bool covered = valid && cache.background.alpha() == 255 && mData->covers(size());
    if (!covered) {
        painter.fillRect(event->rect(), cache.background);
    }
    if (!valid) {
        return;
    }
    mData->paintTo(&painter, rect(), event->region());
    if (cache.groupModelOnly && !mUiParam->isShowGroupIndexGraph()) {
        paintGroupModelNotice(painter);
    }
    painter.setBrush(QBrush(QColor(0, 0, 0, 0), Qt::SolidPattern));
    paintSelections(painter);
    paintRegionLines(painter);
    drawGraph(painter);
    paintTip(painter);
    paintEnhancement(painter);
}

const CRealtimeGraphWidget::PaintCache &CRealtimeGraphWidget::paintCache() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    const int generation = theme.generation();
    if (mPaintCache.generation != generation) {
        mPaintCache.generation = generation;
        mPaintCache.background = theme.getColor(QStringLiteral("ic_clr_realtime_graph_bg"));
        mPaintCache.leftBorder = theme.getColor(QStringLiteral("ic_clr_kline_graph_scale_border"));
        mPaintCache.rightBorder = theme.getColor(QStringLiteral("ic_clr_realtime_graph_scale_border"));
    }
    const QList<QString> formulas = mData->getFormulas();
    if (!mPaintCache.formulasKnown || mPaintCache.formulas != formulas) {
        mPaintCache.formulasKnown = true;
        mPaintCache.formulas = formulas;
        mPaintCache.groupModelOnly = mData->hasGroupModelIndex() && !mData->hasPythonIndex();
    }
    return mPaintCache;
}

void CRealtimeGraphWidget::paintGroupModelNotice(QPainter &painter) {
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text")));
    painter.setPen(kNoticeColor);
    painter.drawText(QPoint(width() / 2 - 60, height() / 2 - 5), tr("组合模型只能在指数类视图下显示！"));
}

void CRealtimeGraphWidget::paintSelections(QPainter &painter) {
    if (mLeftSelecting) {
        painter.setPen(QPen(mPaintCache.leftBorder, 0, Qt::SolidLine));
        painter.drawRect(mLeftRect);
    }
    if (mRightSelecting) {
        painter.setPen(dashedPen(mPaintCache.rightBorder));
        painter.drawRect(mRightRect);
    }
}

void CRealtimeGraphWidget::paintRegionLines(QPainter &painter) {
    if (!mRegionLinesVisible) {
        return;
    }
    painter.setPen(dashedPen(kRegionLineColor));
    painter.drawLine(mRegionLeftX, 0, mRegionLeftX, height());
    painter.drawLine(mRegionRightX, 0, mRegionRightX, height());
}

void CRealtimeGraphWidget::paintEnhancement(QPainter &painter) {
    if (mDisplayType != EIndexDisplayType::Main || !CAppConfig::isClientType(EClientType::Trading)) {
        return;
    }
    const std::string key = mUiParam->getStock().toStdString();
    CSingletonT<CEnhanceDrawManager>::instance().drawGraph(
        0, key, &painter, rect(), [this](const QPointF &logical) { return toPixel(logical); });
}

} // namespace TC
