#include "terminal/app/TimeRow.h"

#include "chartview/TimeScalePlan.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

namespace terminal {
namespace {

constexpr int kTickHeight = 4; ///< pixels

} // namespace

TimeRow::TimeRow(boost::shared_ptr<TC::CRealtimeUiParam> uiParam, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)) {
    setObjectName(QStringLiteral("time_row"));
    setFixedHeight(kHeight);
}

void TimeRow::setDay(const QDate &day) {
    mDay = day;
    update();
}

void TimeRow::paintEvent(QPaintEvent *) {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.getColor(QStringLiteral("ic_clr_realtime_axis_bg")));
    if (!mUiParam->isValid()) {
        return;
    }
    painter.setFont(theme.getFont(QStringLiteral("fnt_graph_axis_text")));
    painter.setPen(theme.getColor(QStringLiteral("ic_clr_realtime_axis_text")));
    TC::TimeScaleInput input;
    input.sessions = mUiParam->mSessions;
    input.dayWidth = mUiParam->mDayWidth;
    input.leftWidth = mUiParam->mLeftAxisWidth;
    input.columnOfIndex = [this](int index) { return mUiParam->getXAxisByIndex(index); };
    input.timeOfIndex = [this](int index) {
        return mUiParam->getDateTimeByIndex(index).toString(QStringLiteral("hh:mm"));
    };
    input.dateOfDay = [this](int) { return mDay.toString(QStringLiteral("yy-MM-dd")); };
    input.textWidth = [&painter](const QString &text) { return painter.fontMetrics().horizontalAdvance(text); };
    for (const TC::TimeScaleDay &day : TC::planTimeScale(input)) {
        for (const double x : day.ticks) {
            painter.drawLine(QPointF(x, 0), QPointF(x, kTickHeight));
        }
        for (const TC::TimeScaleLabel &label : day.labels) {
            painter.drawText(QRectF(label.x, 0, width(), height()), Qt::AlignLeft | Qt::AlignVCenter,
                             label.text);
        }
    }
}

} // namespace terminal
