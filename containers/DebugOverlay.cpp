#include "containers/DebugOverlay.h"

#include "chartdata/CRealtimeData.h"
#include "chartview/CRealtimeGraphWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/MainView.h"
#include "host/records/ExchangeZone.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace TC {
namespace {

constexpr int kFrameLife = 1000; ///< milliseconds that a repaint stays framed
constexpr int kRefreshDelay = 100; ///< milliseconds
constexpr int kMaxFrames = 200;

QString timeText(qint64 milliseconds) {
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::OffsetFromUTC, GZ::kExchangeOffset)
        .toString(QStringLiteral("MM-dd hh:mm"));
}

QString lineOf(const CFormulaKey &key, const QString &request, const std::vector<se::TimePosition> &times,
               const QPair<double, double> &range) {
    QString line = QStringLiteral("%1 %2  request %3  %4 points")
                       .arg(key.mStock, key.mFormula, request.isEmpty() ? QStringLiteral("-") : request)
                       .arg(times.size());
    if (!times.empty()) {
        line += QStringLiteral("  %1 - %2").arg(timeText(times.front().first), timeText(times.back().first));
    }
    return line + QStringLiteral("  range %1 - %2").arg(range.second).arg(range.first);
}

} // namespace

bool DebugOverlay::isWanted() {
    return qEnvironmentVariableIsSet("TIMESHARE_OVERLAY");
}

DebugOverlay::DebugOverlay(MainView &view) : QWidget(&view), mView(view) {
    setObjectName(QStringLiteral("debug_overlay"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    mClock.start();
    mRefresh.setSingleShot(true);
    mRefresh.setInterval(kRefreshDelay);
    connect(&mRefresh, &QTimer::timeout, this, [this] { refresh(); });
    QCoreApplication::instance()->installEventFilter(this);
}

QStringList DebugOverlay::linesOf(const CRealtimeWidget &pane) {
    QStringList lines;
    for (const CRealtimeGraphWidget *graph : pane.getGraphWidgets()) {
        const auto data = graph->getData();
        const IndexBaseData::MaxMinMap ranges = data->getMaxMinMap();
        data->readData([&](const QMap<CFormulaKey, se::RPCFormulaResultCache> &series) {
            for (auto entry = series.cbegin(); entry != series.cend(); ++entry) {
                lines.append(lineOf(entry.key(), data->getReqID(entry.key()), entry->result.mTimes,
                                    ranges.value(entry.key(), {kUnsetValue, kUnsetValue})));
            }
        });
    }
    return lines;
}

QList<QRect> DebugOverlay::repaints() const {
    QList<QRect> rects;
    for (const Repaint &repaint : mRepaints) {
        rects.append(repaint.rect);
    }
    return rects;
}

bool DebugOverlay::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Paint && !mIsPainting && watched != this && watched->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(watched);
        if (widget == &mView || mView.isAncestorOf(widget)) {
            const QRect rect = static_cast<QPaintEvent *>(event)->rect();
            mRepaints.append({QRect(widget->mapTo(&mView, rect.topLeft()), rect.size()), mClock.elapsed()});
            if (mRepaints.size() > kMaxFrames) {
                mRepaints.removeFirst();
            }
            if (!mRefresh.isActive()) {
                mRefresh.start();
            }
        }
    }
    return false;
}

void DebugOverlay::forgetOld() {
    const qint64 oldest = mClock.elapsed() - kFrameLife;
    const auto young = std::find_if(mRepaints.begin(), mRepaints.end(),
                                    [&](const Repaint &one) { return one.time >= oldest; });
    mRepaints.erase(mRepaints.begin(), young);
}

void DebugOverlay::refresh() {
    forgetOld();
    mIsPainting = true;
    setGeometry(mView.rect());
    show();
    raise();
    repaint(); // at once, so that what is painted beneath it is told from what the view paints
    mIsPainting = false;
    if (!mRepaints.isEmpty()) {
        mRefresh.start();
    }
}

void DebugOverlay::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setPen(QColor(255, 0, 255));
    for (const Repaint &repaint : mRepaints) {
        painter.drawRect(repaint.rect.adjusted(0, 0, -1, -1));
    }
    QVector<CRealtimeWidget *> panes = mView.getSubIndexWidgets();
    panes.prepend(mView.getRealTimeWidget());
    for (const CRealtimeWidget *pane : panes) {
        const QString text = linesOf(*pane).join(QLatin1Char('\n'));
        const QPoint corner = pane->mapTo(&mView, QPoint(60, 30));
        QRect room = painter.fontMetrics().boundingRect(QRect(corner, QSize(4000, 4000)), Qt::AlignLeft, text);
        painter.fillRect(room.adjusted(-2, -2, 2, 2), QColor(0, 0, 0, 160));
        painter.setPen(Qt::yellow);
        painter.drawText(room, Qt::AlignLeft, text);
    }
}

} // namespace TC
