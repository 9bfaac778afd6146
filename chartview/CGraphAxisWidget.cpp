#include "chartview/CGraphAxisWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/PanePixmap.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/GlyphText.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace TC {

namespace {

constexpr int kHolographicPressed = 263;
const QString kLabelFont = QStringLiteral("fnt_graph_axis_text");

QFont labelFont() {
    return GZ::CUiResource::instance().getFont(kLabelFont);
}

int labelHeight() {
    return GZ::GlyphText::ofTheme(kLabelFont).height();
}

QColor themeColor(const char *key) {
    return GZ::CUiResource::instance().getColor(QLatin1String(key));
}

} // namespace

CGraphAxisWidget::CGraphAxisWidget(boost::shared_ptr<CRealtimeUiParam> uiParam,
                                   boost::shared_ptr<CRealtimeData> source, int side, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)), mData(std::move(source)), mSide(side),
      mHolographicPixmap(GZ::CUiResource::instance().getPixmap(QStringLiteral("tc_img_btn_holographic_view"))) {
    setObjectName(QStringLiteral("graphAxisWidget"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CGraphAxisWidget::~CGraphAxisWidget() {
    for (const boost::weak_ptr<CRealtimeData> &reader : mReaders) {
        if (const boost::shared_ptr<CRealtimeData> data = reader.lock()) {
            data->forgetAxisWidget(this); // a late result may be drawing on another thread
        }
    }
}

void CGraphAxisWidget::addReader(const boost::weak_ptr<CRealtimeData> &reader) {
    mReaders.push_back(reader);
}

void CGraphAxisWidget::setDisplayType(EIndexDisplayType displayType) {
    mDisplayType = displayType;
}

void CGraphAxisWidget::setMaxMinMap(const IndexBaseData::MaxMinMap &ranges) {
    {
        std::lock_guard<std::mutex> hold(mListLock);
        mMaxMinMap = ranges;
    }
    recompute();
}

void CGraphAxisWidget::showHolographicButon(bool show) {
    mHolographicShown = show;
    update();
}

void CGraphAxisWidget::recompute() {
    // Worked out before the lock is taken: the data has a lock of its own, and reads the lists while holding it.
    QVector<AxisTick> ticks = computeTicks();
    QVector<int> timeLines = timeLineIndexes(mUiParam->mSessions);
    for (int &line : timeLines) {
        line = mUiParam->getXAxisByIndex(line);
    }
    {
        std::lock_guard<std::mutex> hold(mListLock);
        mTicks.swap(ticks);
        mTimeLines.swap(timeLines);
    }
    update();
}

IndexBaseData::MaxMinMap CGraphAxisWidget::getMaxMinMap() const {
    std::lock_guard<std::mutex> hold(mListLock);
    return mMaxMinMap;
}

QVector<AxisTick> CGraphAxisWidget::getTicks() const {
    std::lock_guard<std::mutex> hold(mListLock);
    return mTicks;
}

QVector<int> CGraphAxisWidget::getTimeLines() const {
    std::lock_guard<std::mutex> hold(mListLock);
    return mTimeLines;
}

CFormulaKey CGraphAxisWidget::keyOf(const QString &formula) const {
    return {mUiParam->getStock(), mData->getShowName(formula)};
}

QString CGraphAxisWidget::firstFormulaWithSeries() const {
    for (const QString &formula : mData->getFormulas()) {
        if (mData->hasSeries(keyOf(formula))) {
            return formula;
        }
    }
    return {};
}

CFormulaKey CGraphAxisWidget::axisKey() const {
    if (mDisplayType == EIndexDisplayType::Main) {
        return {mUiParam->getStock(), mData->getMainGraph()};
    }
    CFormulaKey key;
    for (const QString &formula : mData->getFormulas()) {
        key = keyOf(formula);
        if (mData->hasSeries(key)) {
            break;
        }
    }
    return key;
}

QVector<AxisTick> CGraphAxisWidget::computeTicks() const {
    const int count = axisTickCount(height(), labelHeight());
    const CFormulaKey key = axisKey();
    if (mDisplayType != EIndexDisplayType::Main) {
        return subPaneTicks(height(), count, mMaxMinMap.value(key));
    }
    AxisRange price;
    const auto found = mMaxMinMap.constFind(key);
    if (found != mMaxMinMap.constEnd()) {
        price = *found;
    } else {
        price.first = price.second = mUiParam->getLastClose();
    }
    AxisRange volume;
    if (mUiParam->mShowVolume) {
        volume = mMaxMinMap.value({mUiParam->getStock(), mUiParam->getVolFormula()});
    }
    QVector<AxisTick> ticks = mainPaneTicks(height(), count, mUiParam->mShowVolume, price, volume);
    if (ticks.isEmpty()) {
        const int date = mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc() : 0;
        const double close =
            CSingletonT<CStockManager>::instance().getCurrentDateLastClose(mUiParam->getStock(), date);
        ticks.append({close, height() / 2});
    }
    return ticks;
}

QVector<AxisLabel> CGraphAxisWidget::labels() const {
    const QString formula = firstFormulaWithSeries();
    if (formula.isEmpty()) {
        return {};
    }
    AxisLabelInput input;
    input.ticks = mTicks;
    input.displayType = mDisplayType;
    input.right = mSide == eRight;
    input.volume = mUiParam->mShowVolume;
    input.width = width();
    input.fontHeight = labelHeight();
    input.lastClose = mUiParam->getLastClose();
    input.tickDecimals = decimals(getDetailPriceTick(mUiParam->getStockDetail()));
    const CFormulaDetailPtr detail = CSingletonT<CFormulaOperateManager>::instance().getFormula(formula);
    if (detail && detail->mPrecisions.contains(0)) {
        input.formulaPrecision = detail->mPrecisions.value(0);
    }
    return planAxisLabels(input);
}

void CGraphAxisWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    recompute();
}

void CGraphAxisWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    refreshPicture(evenRatio(painter));
    if (mPicture.isNull()) { // too large to keep, or scaled unevenly
        painter.fillRect(event->rect(), themeColor("ic_clr_realtime_axis_bg"));
        drawLabels(painter, labels());
    } else {
        paintByParts(painter, event->region(), [&] { painter.drawPixmap(0, 0, mPicture); });
    }
    if (mHolographicShown) {
        drawHolographicButton(painter);
    }
}

void CGraphAxisWidget::refreshPicture(double ratio) {
    const QVector<AxisLabel> wanted = labels();
    const int generation = GZ::CUiResource::instance().generation();
    const bool fits = mPicture.size() == panePixmapSize(size(), ratio) && mPicture.devicePixelRatio() == ratio;
    if (fits && mPictureGeneration == generation && mPictureLabels == wanted) {
        return;
    }
    if (!fits) {
        mPicture = panePixmap(size(), ratio);
    }
    mPictureGeneration = generation;
    mPictureLabels = wanted;
    if (!mPicture.isNull()) {
        mPicture.fill(themeColor("ic_clr_realtime_axis_bg"));
        QPainter painter(&mPicture);
        drawLabels(painter, wanted);
    }
}

void CGraphAxisWidget::drawLabels(QPainter &painter, const QVector<AxisLabel> &labels) const {
    painter.setFont(labelFont());
    for (const AxisLabel &label : labels) {
        painter.setPen(QPen(themeColor(label.color), 1.0, Qt::SolidLine));
        painter.drawText(
            label.rect, label.alignment,
            GZ::formatDoubleNumber(label.number, label.decimals, label.flags, false, tr("非法值")));
    }
}

QRect CGraphAxisWidget::holographicRect() const {
    return lastTickBand(rect(), labelHeight(), mTicks.size());
}

void CGraphAxisWidget::drawHolographicButton(QPainter &painter) const {
    const QRect band = holographicRect();
    const QImage image = mHolographicPixmap.toImage();
    if (band.isNull() || image.isNull()) {
        return;
    }
    const QSize size = image.size() / image.devicePixelRatio();
    painter.drawImage(
        QPoint(band.left() + (band.width() - size.width()) / 2, band.bottom() + 1 - size.height()), image);
}

void CGraphAxisWidget::mousePressEvent(QMouseEvent *event) {
    CBaseWidget::mousePressEvent(event);
    if (mHolographicShown && holographicRect().contains(event->pos())) {
        deliverEvent(kHolographicPressed, 0, 0, QString(), nullptr);
    }
}

void CGraphAxisWidget::onUiResourceChanged() {
    mHolographicPixmap = GZ::CUiResource::instance().getPixmap(QStringLiteral("tc_img_btn_holographic_view"));
    recompute();
    CBaseWidget::onUiResourceChanged();
}

} // namespace TC
