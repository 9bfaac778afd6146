#include "chartview/CRealtimeTimeWidget.h"

#include "chartdata/PanePixmap.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "chartview/IDayRows.h"
#include "chartview/TimeScalePlan.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/GlyphText.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/VectorPainter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QDateTime>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace TC {

namespace {

constexpr int kBaseline = 8; ///< rows beneath the base line of the labels
constexpr int kTickLength = 4; ///< rows of a tick
const QString kTimeFont = QStringLiteral("fnt_timeline_text_default");

QFont timeFont() {
    return GZ::CUiResource::instance().getFont(kTimeFont);
}

} // namespace

CRealtimeTimeWidget::CRealtimeTimeWidget(boost::shared_ptr<CRealtimeUiParam> uiParam, QWidget *parent)
    : CBaseWidget(parent), mDayRows(dynamic_cast<const IDayRows *>(parent)), mUiParam(std::move(uiParam)) {
    setObjectName(QStringLiteral("realtime_time_widget"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void CRealtimeTimeWidget::setCursor(int index, int x) {
    mCursorIndex = index;
    mCursorX = x;
}

void CRealtimeTimeWidget::refreshFlag() {
    Flag flag = makeFlag();
    if (flag.box != mFlag.box || flag.text != mFlag.text) {
        update(mFlag.box);
        update(flag.box);
        std::swap(mFlag, flag);
    }
}

void CRealtimeTimeWidget::updateScale() {
    drawScale(devicePixelRatioF());
    update();
}

void CRealtimeTimeWidget::onUiResourceChanged() {
    updateScale();
    CBaseWidget::onUiResourceChanged();
}

void CRealtimeTimeWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    drawScale(devicePixelRatioF());
}

void CRealtimeTimeWidget::enterEvent(GZ::EnterEvent * /*event*/) {
    deliverEvent(eCrossLineMoved, -1, -1, QString(), nullptr);
}

void CRealtimeTimeWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    paintScale(painter, event->region());
    refreshFlag(); // what has changed beside the region of this paint is painted next
    if (event->region().intersects(mFlag.box)) {
        const Look &look = mLook.look();
        painter.setClipRect(mFlag.box);
        painter.fillRect(mFlag.box, look.box);
        painter.setPen(look.text);
        GZ::GlyphText::ofTheme(kTimeFont).drawOn(painter, look.box, mFlag.box, Qt::AlignHCenter, mFlag.text);
    }
}

/// Leaves the painter without a clip.
void CRealtimeTimeWidget::paintScale(QPainter &painter, const QRegion &region) {
    if (GZ::drawsVectors(painter)) {
        painter.fillRect(rect(), ground());
        drawDays(painter);
        painter.setClipping(false);
        return;
    }
    const double ratio = evenRatio(painter);
    if (ratio > 0 && mPixmap.devicePixelRatio() != ratio) { // moved to another screen
        drawScale(ratio);
    }
    if (mPixmap.isNull()) {
        painter.fillRect(rect(), GZ::themeColor("ic_clr_realtime_graph_bg"));
    } else {
        paintByParts(painter, region, [&](const QRect &) { painter.drawPixmap(0, 0, mPixmap); });
    }
}

CRealtimeTimeWidget::Look CRealtimeTimeWidget::Look::ofTheme() {
    return {GZ::themeColor("ic_clr_realtime_cross_line_bg"), GZ::themeColor("ic_clr_realtime_cross_line_text")};
}

const QString &CRealtimeTimeWidget::timeUnderCursor() {
    if (mTimes.sessions != mUiParam->mSessions || mTimes.pointCount != mUiParam->mPointCount) {
        mTimes = {mUiParam->mSessions, mUiParam->mPointCount, {}};
    }
    auto found = mTimes.texts.find(mCursorIndex);
    if (found == mTimes.texts.end()) {
        found = mTimes.texts.insert(mCursorIndex, mUiParam->getTimeTextByIndex(mCursorIndex));
    }
    return *found;
}

bool CRealtimeTimeWidget::hasFlag() const {
    return mCursorIndex >= 0 && mUiParam->mCrossShown;
}

QString CRealtimeTimeWidget::flagText() const {
    return hasFlag() ? mUiParam->getTimeTextByIndex(mCursorIndex) : QString();
}

CRealtimeTimeWidget::Flag CRealtimeTimeWidget::makeFlag() {
    if (!hasFlag()) {
        return {};
    }
    Flag flag;
    flag.text = timeUnderCursor();
    const Pointed pointed = pointedGraph();
    follow(pointed.graph); // without one the flag stands in the oldest day
    TimeFlagInput input;
    input.cursorX = mCursorX;
    input.leftWidth = mUiParam->mLeftAxisWidth;
    input.daysBefore = pointed.daysBefore;
    input.dayWidth = mUiParam->mDayWidth;
    input.textWidth = GZ::GlyphText::ofTheme(kTimeFont).width(flag.text);
    input.height = height();
    flag.box = planTimeFlag(input);
    return flag;
}

CRealtimeTimeWidget::Pointed CRealtimeTimeWidget::pointedGraph() const {
    const QVector<QList<CRealtimeGraphWidget *>> rows =
        mDayRows ? mDayRows->dayRows() : QVector<QList<CRealtimeGraphWidget *>>();
    Pointed found = pointedIn(rows.value(0));
    for (int i = 1; !found.graph && i < rows.size(); ++i) {
        found = pointedIn(rows[rows.size() - i]); // of formula panes the last one counts
    }
    return found;
}

CRealtimeTimeWidget::Pointed CRealtimeTimeWidget::pointedIn(const QList<CRealtimeGraphWidget *> &row) {
    for (int i = 0; i < row.size(); ++i) {
        if (row[i]->isCrossActive()) {
            return {row[i], static_cast<int>(row.size()) - i - 1}; // the newest day comes first
        }
    }
    return {};
}

void CRealtimeTimeWidget::follow(CRealtimeGraphWidget *graph) {
    if (graph && graph != mFollowed) {
        connect(graph, &CRealtimeGraphWidget::mouseLeft, this, &CRealtimeTimeWidget::refreshFlag,
                Qt::UniqueConnection);
        mFollowed = graph;
    }
}

int CRealtimeTimeWidget::referenceDate() const {
    return mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc()
                                       : mUiParam->service<CStockManager>().getLastTradingDay(
                                             getDetailQsMarket(mUiParam->getStockDetail()));
}

/// Draws the scale into its pixmap, at that many device pixels per pixel.
void CRealtimeTimeWidget::drawScale(double ratio) {
    mPixmap = panePixmap(size(), ratio);
    if (mPixmap.isNull()) {
        return;
    }
    mPixmap.fill(ground());
    QPainter painter(&mPixmap);
    drawDays(painter);
}

QColor CRealtimeTimeWidget::ground() const {
    return GZ::themeColor(mUiParam->getStock().isEmpty() ? "ic_clr_realtime_graph_bg"
                                                         : "ic_clr_account_report_timeline_bg");
}

void CRealtimeTimeWidget::drawDays(QPainter &painter) const {
    if (mUiParam->getStock().isEmpty()) {
        return;
    }
    const QString market = getDetailQsMarket(mUiParam->getStockDetail());
    const int date = referenceDate();
    const QFont font = timeFont();
    TimeScaleInput input;
    input.sessions = mUiParam->mSessions;
    input.dayWidth = mUiParam->mDayWidth;
    input.leftWidth = mUiParam->mLeftAxisWidth;
    input.dayCount = mUiParam->mDayCount;
    input.columnOfIndex = [this](int index) { return mUiParam->getXAxisByIndex(index); };
    input.timeOfIndex = [this](int index) { return mUiParam->getTimeTextByIndex(index); };
    input.dateOfDay = [this, &market, date](int daysAgo) {
        const int day = mUiParam->service<CStockManager>().getShiftTradeDate(market, date, -daysAgo);
        return GZ::exchangeDate(day).toString(QStringLiteral("yy-MM-dd"));
    };
    input.textWidth = [metrics = QFontMetrics(font)](const QString &text) {
        return metrics.horizontalAdvance(text);
    };
    const QColor tickColor = GZ::themeColor("ic_clr_timeline_time_scale");
    painter.setPen(GZ::themeColor("ic_clr_timeline_text"));
    painter.setFont(font);
    for (const TimeScaleDay &day : planTimeScale(input)) {
        painter.setClipRect(day.clipLeft, 0, day.clipWidth, height());
        for (const TimeScaleLabel &label : day.labels) {
            painter.drawText(wholePixel(label.x), height() - kBaseline, label.text);
        }
        for (const double tick : day.ticks) {
            painter.fillRect(wholePixel(tick), height() - kTickLength, 1, kTickLength, tickColor);
        }
    }
}

} // namespace TC
