#include "chartview/CGraphAxisWidget.h"

#include "chartdata/CRealtimeData.h"
#include "chartdata/PanePixmap.h"
#include "chartview/FittedFont.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CStockManager.h"
#include "host/toolkit/Events.h"
#include "host/toolkit/GlyphText.h"
#include "host/toolkit/PriceDecimals.h"
#include "host/toolkit/Text.h"
#include "host/toolkit/ThemeColor.h"
#include "host/toolkit/VectorPainter.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace TC {

namespace {

const char *const kBackground = "ic_clr_realtime_axis_bg";
const QString kAxisFont = QStringLiteral("fnt_graph_axis_text");
const QString kHolographicImage = QStringLiteral("tc_img_btn_holographic_view");

int labelHeight() {
    return GZ::GlyphText::ofTheme(kAxisFont).height();
}

/// The rows of a text that is centred in a rectangle, by as many above as beneath.
QRect textRows(const QRect &rect, int height) {
    const int spare = std::max(rect.height() - height, 0) / 2;
    return rect.adjusted(0, spare, 0, -spare);
}

/// Whether a text is made of the font's own letters: others may make its line higher.
bool isPlain(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter.unicode() < 128; });
}

} // namespace

CGraphAxisWidget::CGraphAxisWidget(boost::shared_ptr<CRealtimeUiParam> uiParam,
                                   boost::shared_ptr<CRealtimeData> source, int side, QWidget *parent)
    : CBaseWidget(parent), mUiParam(std::move(uiParam)), mData(std::move(source)),
      mScale(std::make_shared<AxisScale>()), mSide(side),
      mHolographicPixmap(GZ::CUiResource::instance().getPixmap(kHolographicImage)) {
    setObjectName(QStringLiteral("graphAxisWidget"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    mUiParam->mStripScales.enter(this, mScale);
}

CGraphAxisWidget::~CGraphAxisWidget() {
    mUiParam->mStripScales.remove(this);
    for (CGraphAxisWidget **known : {&mUiParam->mLeftAxis, &mUiParam->mRightAxis}) {
        if (*known == this) {
            *known = nullptr;
        }
    }
}

void CGraphAxisWidget::setDisplayType(EIndexDisplayType displayType) {
    mDisplayType = displayType;
}

void CGraphAxisWidget::setMaxMinMap(const IndexBaseData::MaxMinMap &ranges) {
    mScale->show(planAxis(ranges, layout()));
    update();
}

void CGraphAxisWidget::showHolographicButon(bool show) {
    mHolographicShown = show;
    update();
}

void CGraphAxisWidget::recompute() {
    setMaxMinMap(getMaxMinMap());
}

IndexBaseData::MaxMinMap CGraphAxisWidget::getMaxMinMap() const {
    return mScale->shown().ranges;
}

QVector<AxisTick> CGraphAxisWidget::getTicks() const {
    return mScale->shown().ticks;
}

QVector<int> CGraphAxisWidget::getTimeLines() const {
    return mScale->shown().timeLines;
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

AxisLayout CGraphAxisWidget::layout() const {
    AxisLayout layout;
    layout.displayType = mDisplayType;
    layout.height = height();
    layout.fontHeight = labelHeight();
    layout.key = axisKey();
    layout.volumeKey = {mUiParam->getStock(), mUiParam->getVolFormula()};
    layout.volume = mUiParam->mShowVolume;
    layout.sessions = mUiParam->mSessions;
    layout.dayWidth = mUiParam->mDayWidth;
    layout.pointCount = mUiParam->mPointCount;
    layout.lastClose = [this] { return mUiParam->getLastClose(); };
    layout.onlyValue = [this] {
        const int date = mUiParam->mGetTradeDateFunc ? mUiParam->mGetTradeDateFunc() : 0;
        return mUiParam->service<CStockManager>().getCurrentDateLastClose(mUiParam->getStock(), date);
    };
    return layout;
}

QVector<AxisLabel> CGraphAxisWidget::labels() const {
    const QString formula = firstFormulaWithSeries();
    if (formula.isEmpty()) {
        return {};
    }
    AxisLabelInput input;
    input.ticks = getTicks();
    input.displayType = mDisplayType;
    input.right = mSide == eRight;
    input.volume = mUiParam->mShowVolume;
    input.width = width();
    input.fontHeight = labelHeight();
    input.lastClose = mUiParam->getLastClose();
    input.tickDecimals = decimals(getDetailPriceTick(mUiParam->getStockDetail()));
    const CFormulaDetailPtr detail = mUiParam->service<CFormulaOperateManager>().getFormula(formula);
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
    const bool isKept = !GZ::drawsVectors(painter);
    if (isKept) {
        refreshPicture(evenRatio(painter));
    }
    if (!isKept || mPicture.isNull()) { // too large to keep, or scaled unevenly
        painter.fillRect(event->rect(), GZ::themeColor(kBackground));
        drawLabels(painter, labels());
    } else {
        paintByParts(painter, event->region(), [&](const QRect &) { painter.drawPixmap(0, 0, mPicture); });
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
        mPicture.fill(GZ::themeColor(kBackground));
        QPainter painter(&mPicture);
        drawLabels(painter, wanted);
    }
}

QString CGraphAxisWidget::textOf(const AxisLabel &label) {
    return GZ::formatDoubleNumber(label.number, label.decimals, label.flags, false, tr("非法值"));
}

QStringList CGraphAxisWidget::labelTexts() const {
    QStringList texts;
    for (const AxisLabel &label : labels()) {
        texts.append(textOf(label));
    }
    return texts;
}

void CGraphAxisWidget::drawLabels(QPainter &painter, const QVector<AxisLabel> &labels) const {
    GZ::GlyphText &glyphs = GZ::GlyphText::ofTheme(kAxisFont);
    const QColor ground = GZ::themeColor(kBackground);
    int free = 0; // first row beneath the labels so far
    for (const AxisLabel &label : labels) {
        const QString text = textOf(label);
        painter.setPen(QPen(GZ::themeColor(label.color), 1.0, Qt::SolidLine));
        QRect rows = label.rect;
        if (isPlain(text) && glyphs.width(text) <= rows.width()) {
            const Qt::Alignment side = Qt::Alignment(label.alignment) & Qt::AlignHorizontal_Mask;
            rows = textRows(rows, glyphs.height());
            rows.top() >= free ? glyphs.drawOn(painter, ground, rows, side, text)
                               : glyphs.draw(painter, rows, side, text);
        } else {
            painter.setFont(fittedFont(glyphs.font(), {text}, rows.width()));
            painter.drawText(rows, label.alignment, text);
        }
        free = std::max(free, rows.bottom() + 1);
    }
}

QRect CGraphAxisWidget::holographicRect() const {
    return lastTickBand(rect(), labelHeight(), getTicks().size());
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
    if (holographicRect().contains(event->pos())) {
        pressHolographicButton();
    }
}

void CGraphAxisWidget::pressHolographicButton() {
    if (mHolographicShown) {
        deliverEvent(eHolographicPressed, 0, 0, QString(), nullptr);
    }
}

void CGraphAxisWidget::onUiResourceChanged() {
    mHolographicPixmap = GZ::CUiResource::instance().getPixmap(kHolographicImage);
    recompute();
    CBaseWidget::onUiResourceChanged();
}

} // namespace TC
