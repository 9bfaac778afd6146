#include "chartview/GraphLayers.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/DrawingSpace.h"
#include "chartview/GraphPointer.h"
#include "chartview/GraphSubject.h"
#include "chartview/RegionLines.h"
#include "chartview/TradeTip.h"
#include "host/drawing/IGraphWidget.h"
#include "host/services/CConfigService.h"
#include "host/services/CEnhanceDrawManager.h"
#include "host/toolkit/ThemeColor.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

namespace TC {

namespace {

const QColor kNoticeColor(255, 0, 0, 255);
const QBrush kNoBrush(QColor(0, 0, 0, 0), Qt::SolidPattern);
const QColor kRegionLineColor(234, 153, 49, 255);

QPen dashedPen(const QColor &color) {
    QPen pen(color, 1, Qt::CustomDashLine);
    pen.setDashPattern({9.0, 4.0});
    return pen;
}

} // namespace

void GraphLayers::paint(const QWidget &graph, const QPaintEvent &event, QPainter &painter) {
    const Look &look = mLook.look();
    CRealtimeData &data = *mSources.subject.data;
    const bool valid = mSources.subject.uiParam->isValid();
    const bool covered = valid && look.background.alpha() == 255 && data.covers(graph.size());
    if (!covered) {
        painter.fillRect(event.rect(), look.background);
    }
    if (!valid) {
        return;
    }
    data.paintTo(&painter, graph.rect(), event.region());
    if (isGroupModelHidden()) {
        paintGroupModelNotice(painter, graph);
    }
    painter.setBrush(kNoBrush);
    paintSelections(painter, look);
    paintRegionLines(painter, graph.height());
    mSources.drawings.drawGraph(painter);
    mSources.tip.paint(painter);
    paintEnhancement(painter, graph);
}

GraphLayers::Look GraphLayers::Look::ofTheme() {
    return {GZ::themeColor("ic_clr_realtime_graph_bg"), GZ::themeColor("ic_clr_kline_graph_scale_border"),
            GZ::themeColor("ic_clr_realtime_graph_scale_border")};
}

bool GraphLayers::isGroupModelHidden() {
    const CRealtimeData &data = *mSources.subject.data;
    const QList<QString> formulas = data.getFormulas();
    if (!mFormulasKnown || mFormulas != formulas) {
        mFormulasKnown = true;
        mFormulas = formulas;
        mGroupModelOnly = data.hasGroupModelIndex() && !data.hasPythonIndex();
    }
    return mGroupModelOnly && !mSources.subject.uiParam->isShowGroupIndexGraph();
}

void GraphLayers::paintGroupModelNotice(QPainter &painter, const QWidget &graph) const {
    painter.setFont(GZ::CUiResource::instance().getFont(QStringLiteral("fnt_graph_axis_text")));
    painter.setPen(kNoticeColor);
    painter.drawText(QPoint(graph.width() / 2 - 60, graph.height() / 2 - 5),
                     tr("组合模型只能在指数类视图下显示！"));
}

void GraphLayers::paintSelections(QPainter &painter, const Look &look) const {
    if (mSources.pointer.isLeftSelecting()) {
        painter.setPen(QPen(look.leftBorder, 0, Qt::SolidLine));
        painter.drawRect(mSources.pointer.leftRect());
    }
    if (mSources.pointer.isRightSelecting()) {
        painter.setPen(dashedPen(look.rightBorder));
        painter.drawRect(mSources.pointer.rightRect());
    }
}

void GraphLayers::paintRegionLines(QPainter &painter, int height) const {
    if (!mSources.regionLines.isVisible()) {
        return;
    }
    const MinuteSpan &span = mSources.regionLines.span();
    const DayAxis axis = DayAxis::of(*mSources.subject.uiParam);
    painter.setPen(dashedPen(kRegionLineColor));
    for (const int column : {span.left(axis), span.right(axis)}) {
        painter.drawLine(column, 0, column, height);
    }
}

void GraphLayers::paintEnhancement(QPainter &painter, const QWidget &graph) const {
    if (!mSources.subject.isMain() ||
        !mSources.subject.uiParam->service<CConfigService>().isClientType(EClientType::Trading)) {
        return;
    }
    const std::string key = mSources.subject.uiParam->getStock().toStdString();
    mSources.subject.uiParam->service<CEnhanceDrawManager>().drawGraph(
        0, key, &painter, graph.rect(),
        [&space = mSources.space](const QPointF &logical) { return space.toPixel(logical); });
}

} // namespace TC
