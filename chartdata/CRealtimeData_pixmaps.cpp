// The chart and the trade marks as pixmaps, and the newest points over them.

#include "chartdata/CRealtimeData.h"
#include "chartdata/ChartLayout.h"
#include "chartdata/ContentDigest.h"
#include "chartdata/GapFilling.h"
#include "chartdata/LinkageScope.h"
#include "chartdata/PanePixmap.h"
#include "host/services/CConfigService.h"
#include "host/services/CStockManager.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/CUiResource.h"
#include "host/toolkit/PriceDecimals.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace TC {

struct CRealtimeData::DrawnLine {
    const CFormulaKey &key;
    const se::RPCFormulaResultCache &series;
    QRect target;
    CDrawStyle::Range range;
    int line;
    int start;
    int end;

    int style() const { return styleOf(series.meta, line); }
    static int styleOf(const se::RPCFormulaMetaResult &meta, int line) {
        return std::size_t(line) < meta.mLineStyles.size() ? meta.mLineStyles[std::size_t(line)] : 0;
    }
};

namespace {

constexpr int kReplayTimeEvent = 3239;
constexpr int kTextExStyle = 31; ///< drawn as a whole, whatever points are asked for

int pointCount(const se::RPCFormulaResultCache &entry) {
    return static_cast<int>(entry.result.mTimes.size());
}

int lineCount(const se::RPCFormulaResultCache &entry) {
    return std::min(entry.meta.mLineCount, static_cast<int>(entry.result.mValues.size()));
}

/// One column with a dot in every other row.
QImage dottedColumn(int height, double ratio, const QColor &color) {
    const int dot = static_cast<int>(std::ceil(ratio));
    QImage column(dot, static_cast<int>(std::ceil(height * ratio)), QImage::Format_ARGB32_Premultiplied);
    column.setDevicePixelRatio(ratio);
    const QRgb on = qPremultiply(color.rgba());
    for (int y = 0; y < column.height(); ++y) {
        auto *pixels = reinterpret_cast<QRgb *>(column.scanLine(y));
        std::fill(pixels, pixels + dot, static_cast<int>(y / ratio) % 2 == 0 ? on : QRgb(0));
    }
    return column;
}

void blit(QPainter *painter, const QRect &rect, const QPixmap &pixmap, const QSize &drawnFor) {
    if (rect.size() == drawnFor) {
        painter->drawPixmap(rect.topLeft(), pixmap); // pixel by pixel, also at fractional ratios
    } else {
        painter->drawPixmap(rect, pixmap);
    }
}

} // namespace

void CRealtimeData::makePixmaps() {
    mLook.refresh();
    mChartPixmap = panePixmap(mChartRect.size(), mPixelRatio);
    mPriceBandDigest = 0;
    if (!mDrawEnabled && !mChartPixmap.isNull()) {
        mChartPixmap.fill(mLook.background);
    }
    mLinkagePixmap = QPixmap();
    if (mDisplayType == EIndexDisplayType::Main && CSingletonT<CLinkageManager>::instance().isEnabled()) {
        mLinkagePixmap = panePixmap(mChartRect.size(), mPixelRatio);
        if (!mLinkagePixmap.isNull()) {
            mLinkagePixmap.fill(Qt::transparent);
        }
    }
}

void CRealtimeData::setChartRect(const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    mChartRect = rect;
    noteDamage(eSeriesChanged);
    if (rect.width() > 0 && rect.height() > 0) {
        makePixmaps();
    }
    redraw();
}

void CRealtimeData::setPixelRatio(double ratio) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (!std::isfinite(ratio) || ratio <= 0.0 || ratio == mPixelRatio) {
        return;
    }
    mPixelRatio = ratio;
    makePixmaps();
    redraw();
}

void CRealtimeData::redraw() {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (mDrawEnabled) {
        drawChart(mChartRect);
        drawLinkage(mChartRect);
    }
}

int CRealtimeData::drawnPointCount() const {
    if (mDisplayType == EIndexDisplayType::Main && mIsLastTradingDay) {
        return mUiParam->dataCount();
    }
    int most = 0;
    for (const se::RPCFormulaResultCache &entry : mData) {
        most = std::max(most, pointCount(entry));
    }
    return most;
}

void CRealtimeData::drawChart(const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (rect.width() <= 0 || rect.height() <= 0 || mChartPixmap.isNull()) {
        return;
    }
    noteDamage(eSeriesChanged);
    mChartStale = false;
    mDrawnPointChanged = false;
    mDrawnEnd = -1;
    mLook.refresh();
    const int count = mData.isEmpty() ? 0 : drawnPointCount();
    const int end = mIsLastTradingDay ? count - 2 : count - 1; // the newest segment is drawn at paint time
    const quint64 digest = rect.size() == mChartRect.size() ? priceBandDigest(end) : 0;
    const EBand band = digest != 0 && digest == mPriceBandDigest ? EBand::Volume : EBand::Both;
    mPriceBandDigest = digest;
    if (band == EBand::Both) {
        mChartPixmap.fill(mLook.background);
    }
    QPainter painter;
    if (!painter.begin(&mChartPixmap)) {
        return;
    }
    painter.setClipRect(rect);
    if (band == EBand::Volume) {
        painter.setClipRect(rect.adjusted(0, volumeBandTop(rect.height()), 0, 0));
        painter.fillRect(rect, mLook.background);
    }
    drawGrid(painter, rect.size());
    if (count <= 0 || end < 0) {
        return;
    }
    drawSeries(&painter, rect, 0, end, mUiParam->mPointCount - 1, band);
    mDrawnEnd = end;
}

/// Tells what the price band of the chart pixmap is drawn from: a minute's volume, or a volume that outgrows its
/// range, leaves that band as it is. 0 when there is no volume band to draw by itself.
quint64 CRealtimeData::priceBandDigest(int end) const {
    const bool wholePixels = mPixelRatio == std::floor(mPixelRatio);
    if (mDisplayType != EIndexDisplayType::Main || !mUiParam->mShowVolume || mFillGaps || !wholePixels) {
        return 0;
    }
    ContentDigest digest;
    digest.add(end);
    digest.add(mUiParam->mPointCount);
    digest.add(mChartPixmap.width());
    digest.add(mChartPixmap.height());
    digest.add(mPixelRatio);
    digest.add(mLook.generation);
    digest.add(SingletonManager::getIndexUserConfig().read().mShowGradient);
    if (const std::shared_ptr<const AxisScale> axis = mAxis.lock()) {
        const AxisShown shown = axis->shown();
        for (const int column : shown.timeLines) {
            digest.add(column);
        }
        for (const AxisTick &tick : shown.ticks) {
            digest.add(tick.y);
        }
    }
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const auto drawn = mDrawnMaxMin.constFind(entry.key());
        if (mUiParam->isVolFormula(entry.key().mFormula)) {
            continue;
        }
        digest.add(entry.key().mStock.constData(), std::size_t(entry.key().mStock.size()) * sizeof(QChar));
        digest.add(entry.key().mFormula.constData(), std::size_t(entry.key().mFormula.size()) * sizeof(QChar));
        digest.add(drawn != mDrawnMaxMin.constEnd());
        digest.add(drawn != mDrawnMaxMin.constEnd() ? drawn->first : 0.0);
        digest.add(drawn != mDrawnMaxMin.constEnd() ? drawn->second : 0.0);
        digest.add(*entry, false);
    }
    return digest.value();
}

/// Frame and grid lines, one pixel of the pane wide at every ratio.
void CRealtimeData::drawGrid(QPainter &painter, const QSize &size) const {
    const int width = size.width();
    const int height = size.height();
    painter.fillRect(0, 0, width, 1, mLook.border);
    painter.fillRect(0, height - 1, width, 1, mLook.border);
    painter.fillRect(0, 0, 1, height, mLook.border);
    painter.fillRect(width - 1, 0, 1, height, mLook.border);
    const std::shared_ptr<const AxisScale> axis = mAxis.lock();
    if (!axis) {
        return;
    }
    const AxisShown shown = axis->shown();
    // Dashes of one pixel and gaps of one: copied, since dashed pens are slow.
    const QImage column = dottedColumn(height, mPixelRatio, mLook.grid);
    for (const int x : shown.timeLines) {
        painter.drawImage(x, 0, column);
    }
    for (const AxisTick &row : shown.ticks) {
        painter.fillRect(0, row.y, width, 1, mLook.grid);
    }
}

/// Hands every line that is to be drawn to `visit`, in order. Indices grow with a series whose gaps are filled,
/// and stay grown for the series after it.
template <class Visit>
void CRealtimeData::visitLines(const QRect &rect, int start, int end, EBand band, Visit visit) const {
    const bool mainPane = mDisplayType == EIndexDisplayType::Main;
    const bool withVolume = mainPane && mUiParam->mShowVolume;
    const ChartLayout layout = chartLayout(rect.size(), withVolume);
    se::RPCFormulaResultCache filled;
    for (auto entry = mData.constBegin(); entry != mData.constEnd(); ++entry) {
        const se::RPCFormulaResultCache *series = &*entry;
        if (mFillGaps) {
            filled = fillGaps(*entry, mUiParam->mPointCount, [this](int index) {
                return mUiParam->getDateTimeByIndex(index).toSecsSinceEpoch();
            });
            series = &filled;
            const int grown = pointCount(filled) - end;
            end = pointCount(filled);
            start = start > 0 ? std::max(start + grown, 0) : start;
        }
        const bool volume = mUiParam->isVolFormula(entry.key().mFormula);
        if (band == EBand::Volume && !volume) {
            continue;
        }
        const auto drawn = mDrawnMaxMin.constFind(entry.key());
        if ((volume && !mUiParam->mShowVolume) || drawn == mDrawnMaxMin.constEnd()) {
            continue;
        }
        const QRect target = volume && mainPane ? layout.volume : layout.price;
        for (int line = 0; line < lineCount(*series); ++line) {
            CDrawStyle::Range range = *drawn;
            if (!isNeedYAxis(*series, line) &&
                !CDrawStyle::calcMaxMin(range.first, range.second, 0, end, *series, line, rect)) {
                continue; // on an axis of its own, without a value to measure
            }
            if (!isHiddenNetValue(entry.key(), series->meta, line)) {
                visit(DrawnLine{entry.key(), *series, target, range, line, start, end});
            }
        }
    }
}

/// The net value of a fund is shown only where one is published.
bool CRealtimeData::isHiddenNetValue(const CFormulaKey &key, const se::RPCFormulaMetaResult &meta,
                                     int line) const {
    static const std::string kNetValue = QStringLiteral("基金份额参考净值").toStdString();
    if (std::size_t(line) >= meta.mLineNames.size() ||
        meta.mLineNames[std::size_t(line)].find(kNetValue) == std::string::npos ||
        key.mFormula.compare(QLatin1String("REALTIME"), Qt::CaseInsensitive) != 0) {
        return false;
    }
    const CInstrumentDetailPtr detail = CSingletonT<CStockManager>::instance().getInstrumentDetail(key.mStock);
    const auto isTyped = [&](const char *market, int type) {
        return detail->mMarket == market &&
               kvservice::StockTypeCenter::isTypedStock(type, detail->mMarket, detail->mCode);
    };
    return detail && !isTyped("SH", 105) && !isTyped("SZ", 10008);
}

void CRealtimeData::drawSeries(QPainter *painter, const QRect &rect, int start, int end, int total,
                               EBand band) {
    if (mReplayMode && !mData.isEmpty() && !mData.last().result.mTimes.empty()) {
        const qint64 newest = mData.last().result.mTimes.back().first;
        mReplayTime = QDateTime::fromSecsSinceEpoch(newest / 1000).time();
        deliverEvent(kReplayTimeEvent, 2, 0, QString(), &mReplayTime);
    }
    visitLines(rect, start, end, band, [&](const DrawnLine &line) { drawLine(painter, line, total); });
}

void CRealtimeData::drawLine(QPainter *painter, const DrawnLine &drawn, int total) const {
    using Draw = CDrawStyle;
    const auto &[key, series, rect, range, line, start, end] = drawn;
    const int style = drawn.style();
    switch (style) {
    case 0:
    case 27: {
        const bool gradient = style == 0 && line == 0 && mDisplayType == EIndexDisplayType::Main &&
                              key.mFormula == QLatin1String("REALTIME") &&
                              SingletonManager::getIndexUserConfig().read().mShowGradient;
        Draw::drawSimpleLine(painter, rect, series, range, line, start, end, total, Qt::SolidLine, 1, true,
                             false, 1.0f, gradient, true);
        break;
    }
    case 1:
        Draw::drawCircleDot(painter, rect, series, range, line, start, end, total, 1, true, true);
        break;
    case 2:
        Draw::drawColorStick(painter, rect, series, range, line, start, end, total, Qt::SolidLine, 1, true,
                             key.mFormula.contains(QLatin1String("REALTIMEVOL")), true);
        break;
    case 4:
    case 6:
    case 8:
    case 5:
        Draw::drawSimpleLine(painter, rect, series, range, line, start, end, total,
                             style == 5 ? Qt::DashDotLine : Qt::DotLine, 1, false, false, 1.0f, false, false);
        break;
    case 10:
        Draw::drawVolStick(painter, rect, series, range, line, start, end, total, 1, false, true, 0.0, true);
        break;
    case 12: {
        const CInstrumentDetailPtr detail =
            CSingletonT<CStockManager>::instance().getInstrumentDetail(key.mStock);
        const int digits = detail ? std::max(decimals(getDetailPriceTick(detail)), 2) : 2;
        Draw::drawKLine(painter, rect, series, range, line, start, end, total, 1, 60, false, 1.0f, digits);
        break;
    }
    case 13:
        Draw::drawText(painter, rect, series, range, line, start, end, total, 1);
        break;
    case 14:
    case 19:
        Draw::drawVertLine(painter, rect, series, range, line, start, end, total, Qt::SolidLine, 1);
        break;
    case 15:
    case 16:
        Draw::drawVertLine(painter, rect, series, range, line, start, end, total, Qt::DotLine, 1);
        break;
    case 17:
        Draw::drawVertLine(painter, rect, series, range, line, start, end, total, Qt::DashDotLine, 1);
        break;
    case 18:
        Draw::drawVertLine(painter, rect, series, range, line, start, end, total, Qt::DashDotDotLine, 1);
        break;
    case 26:
        Draw::drawIcon(painter, rect, series, range, line, start, end, total, mLook.arrow, 1);
        break;
    case 28:
        Draw::drawNumber(painter, rect, series, range, line, start, end, total, 1, false);
        break;
    case kTextExStyle:
        Draw::drawTextEx(painter, rect, series, range, line, total, 1);
        break;
    case 36:
        Draw::drawStickKline(painter, rect, series, range, line, start, end, total, 1, false);
        break;
    case 37:
        Draw::drawBoolLine(painter, rect, series, range, line, start, end, total, Qt::SolidLine, 1);
        break;
    case 40:
        Draw::drawVolStick(painter, rect, series, range, line, start, end, total, 1, false, true, 1.0, false);
        break;
    case 41:
        Draw::drawSegmentLine(painter, rect, series, range, line, start, end, total, 1, false);
        break;
    case 42:
        Draw::drawStackVolstick(painter, rect, series, range, line, start, end, total, 1, true, true);
        break;
    default:
        break; // the other numbers are no drawing
    }
}

void CRealtimeData::refreshPixmaps(const QPainter &painter) {
    if (mDrawEnabled) {
        const double ratio = evenRatio(painter);
        if (ratio > 0.0 && ratio != mPixelRatio) {
            setPixelRatio(ratio);
        } else if (mChartStale || mLook.generation != GZ::CUiResource::instance().generation()) {
            redraw();
        }
        drawUntoldLinkage();
    }
}

bool CRealtimeData::isLinkageShown() const {
    return mDisplayType == EIndexDisplayType::Main && mUiParam->mLinkageFlags != eNoLinkage &&
           !mLinkagePixmap.isNull() && CSingletonT<CLinkageManager>::instance().isEnabled();
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    refreshPixmaps(*painter);
    if (!mChartPixmap.isNull()) {
        blit(painter, rect, mChartPixmap, mChartRect.size());
        drawTail(painter, rect);
    }
    if (isLinkageShown()) {
        painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
        blit(painter, mChartRect, mLinkagePixmap, mChartRect.size());
    }
}

void CRealtimeData::paintTo(QPainter *painter, const QRect &rect, const QRegion &part) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    refreshPixmaps(*painter);
    if (!mChartPixmap.isNull()) {
        paintByParts(*painter, part, [&] { blit(painter, rect, mChartPixmap, mChartRect.size()); });
        const QRegion tail = rect == mChartRect ? part.intersected(tailRect()) : part;
        if (!tail.isEmpty()) {
            painter->setClipRect(tail.boundingRect()); // lines are drawn much faster under one rectangle
            drawTail(painter, rect);
            painter->setClipping(false);
        }
    }
    if (isLinkageShown()) {
        paintByParts(*painter, part, [&] { blit(painter, mChartRect, mLinkagePixmap, mChartRect.size()); });
    }
}

void CRealtimeData::drawTail(QPainter *painter, const QRect &rect) {
    const int count = mUiParam->dataCount();
    if (!mIsLastTradingDay || count == 0) {
        return;
    }
    painter->save();
    painter->setClipRect(rect, Qt::IntersectClip); // lines are drawn much faster under a clip
    drawSeries(painter, rect, std::max(count - 2, 0), count - 1, mUiParam->mPointCount - 1, EBand::Both);
    painter->restore();
}

QRect CRealtimeData::tailRect() const {
    const int count = mUiParam->dataCount();
    QRect touched;
    if (mIsLastTradingDay && count != 0) {
        visitLines(mChartRect, std::max(count - 2, 0), count - 1, EBand::Both, [&](const DrawnLine &line) {
            touched |= CDrawStyle::touchedRect(line.target, line.series, line.line, line.start, line.end,
                                               mUiParam->mPointCount - 1);
        });
    }
    return touched;
}

/// Only the newest points may change without a redrawing. The chart pixmap holds more than that: points of series
/// that are shorter than the main one, and drawings that always show the whole line.
void CRealtimeData::notePoint(const se::RPCFormulaResultCache &entry, std::size_t index) {
    bool whole = mFillGaps;
    for (int line = 0; line < lineCount(entry); ++line) {
        whole |= DrawnLine::styleOf(entry.meta, line) == kTextExStyle;
    }
    mDrawnPointChanged |= whole || static_cast<int>(index) <= mDrawnEnd;
}

void CRealtimeData::noteDamage(int flags) {
    mDamage |= flags;
    if (flags == ePointChanged && mDrawnEnd >= 0 && mDrawnPointChanged && !mChartStale) {
        mChartStale = true;
        mDamage |= eSeriesChanged;
    }
}

QRect CRealtimeData::takeDirtyRect() {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    const QRect before = mTailOnScreen;
    const int damage = mDamage;
    const int count = mUiParam->dataCount();
    const bool recounted = std::exchange(mTailCount, count) != count;
    mTailOnScreen = tailRect();
    mDamage = 0;
    if (damage & ~ePointChanged) {
        return mChartRect;
    }
    const bool moved = damage != 0 || recounted || before != mTailOnScreen;
    return moved ? (before | mTailOnScreen) & mChartRect : QRect();
}

void CRealtimeData::drawLinkage(const QRect &rect) {
    boost::unique_lock<boost::recursive_mutex> hold(mLock);
    if (mDisplayType != EIndexDisplayType::Main || !CSingletonT<CLinkageManager>::instance().isEnabled() ||
        mUiParam->mLinkageFlags == eNoLinkage || rect.width() <= 0 || rect.height() <= 0) {
        return;
    }
    if (mLinkagePixmap.isNull()) {
        mLinkagePixmap = panePixmap(mChartRect.size(), mPixelRatio);
    }
    if (mLinkagePixmap.isNull()) {
        return;
    }
    noteDamage(eSeriesChanged);
    mLinkagePixmap.fill(Qt::transparent);
    forgetMarks(); // what is not in the picture is not found under the mouse
    QPainter painter;
    if (painter.begin(&mLinkagePixmap)) {
        drawLinkageMarks(&painter, chartLayout(rect.size(), mUiParam->mShowVolume).price);
    }
}

} // namespace TC
