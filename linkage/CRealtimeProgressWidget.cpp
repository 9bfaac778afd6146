#include "linkage/CRealtimeProgressWidget.h"

#include <QFont>
#include <QPainter>

#include <algorithm>

namespace TC {
namespace {

constexpr int kBarHeight = 7;
constexpr int kBaseline = 9; ///< pixels of the text's base line above the lowest row
constexpr int kWeight = 75;

} // namespace

CRealtimeProgressWidget::CRealtimeProgressWidget(QWidget *parent) : CBaseWidget(parent) {
    setObjectName(QStringLiteral("realtime_progress_widget"));
    CRealtimeProgressWidget::onUiResourceChanged();
}

void CRealtimeProgressWidget::setProgress(int total, int finished) {
    mTotal = total;
    mFinished = finished;
    update();
}

QString CRealtimeProgressWidget::text() const {
    return mTotal == 0 ? QString() : QStringLiteral("%1/%2").arg(mFinished).arg(mTotal);
}

void CRealtimeProgressWidget::onUiResourceChanged() {
    const GZ::CUiResource &theme = GZ::CUiResource::instance();
    mBarColor = theme.getColor(QStringLiteral("clr_task_progress_background"));
    mTextColor = theme.getColor(QStringLiteral("clr_text_default"));
    update();
}

/// Pixels of the bar. What lies outside of the widget is cut off: a task may have more done than it was to do.
int CRealtimeProgressWidget::barWidth() const {
    if (mTotal == 0) {
        return width();
    }
    const double part = static_cast<double>(mFinished) * rect().right() / mTotal + 0.5;
    return static_cast<int>(std::clamp(part, 0.0, static_cast<double>(width())));
}

void CRealtimeProgressWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const int bottom = rect().bottom();
    if (mTotal != 0) {
        painter.setFont(QFont(QStringLiteral("宋体"), -1, kWeight)); // as large as that of the widget
        painter.setPen(mTextColor);
        const int textWidth = painter.fontMetrics().horizontalAdvance(text());
        painter.drawText((rect().right() - textWidth) / 2, bottom - kBaseline, text());
    }
    painter.fillRect(0, bottom - kBarHeight, barWidth(), kBarHeight, mBarColor);
}

} // namespace TC
