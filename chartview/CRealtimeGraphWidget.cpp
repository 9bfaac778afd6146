#include "chartview/CRealtimeGraphWidget.h"

#include "chartdata/CRealtimeData.h"
#include "host/services/CConfigService.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/toolkit/CStyleSheetCenter.h"
#include "host/toolkit/Text.h"
#include "host/windows/CViewVariableDialog.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QHideEvent>
#include <QResizeEvent>
#include <QShowEvent>

#include <cmath>
#include <limits>

namespace TC {

namespace {

constexpr int kMenuControl = 15;
constexpr int kDrawingMargin = 10; ///< pixels that drawings keep off the edges

enum EEvent : int {
    eIgnoredByGraph1 = 3024,
    eIgnoredByGraph2 = 3196,
    eResized = 3033,
    eRequestAnew = 3101,
    eDrawingFinished = 3183,
};

/// Whole part, held to what an integer can take; 0 for what is no number.
template <class Integer> Integer wholePart(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    // The largest 64-bit integer itself is no double: the bound is the next power of two.
    constexpr double above = static_cast<double>(std::numeric_limits<Integer>::max());
    constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    return value >= above    ? std::numeric_limits<Integer>::max()
           : value <= lowest ? std::numeric_limits<Integer>::min()
                             : static_cast<Integer>(value);
}

/// Minute that a drawing of the trading client is placed at: its seconds are added as they are.
int minuteOfDrawing(double milliseconds) {
    const int time = utils::millisecondsToTime(wholePart<qint64>(milliseconds));
    return time / 10000 * 60 + time / 100 % 100 + time % 100;
}

} // namespace

CRealtimeGraphWidget::CRealtimeGraphWidget(int id, boost::shared_ptr<CRealtimeData> source,
                                           boost::shared_ptr<CRealtimeUiParam> uiParam,
                                           EIndexDisplayType displayType, EIndexViewType viewType,
                                           QWidget *parent, bool /*newest*/)
    : CBaseWidget(parent), mData(std::move(source)), mUiParam(std::move(uiParam)), mDisplayType(displayType),
      mId(id), mViewType(viewType), mMenuStyle(GZ::CStyleSheetCenter::getStyle(kMenuControl)) {
    setObjectName(QStringLiteral("realtime_graph_widget"));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    initConvFunc([this](const QPointF &pixel) { return toLogical(pixel); },
                 [this](const QPointF &logical) { return toPixel(logical); });
}

CRealtimeGraphWidget::~CRealtimeGraphWidget() {
    mData->unrequest();
    mData->clearData();
    if (mVariableDialog) {
        mVariableDialog->deleteLater();
    }
    mOrderTips.clear();
    mDealTips.clear();
}

boost::shared_ptr<CRealtimeData> CRealtimeGraphWidget::getData() const {
    return mData;
}

// Formulas and requests

void CRealtimeGraphWidget::addIndex(const QString &name) {
    mData->addFormula(name);
}

void CRealtimeGraphWidget::delIndex(const QString &name) {
    mData->removeFormula(name, true);
}

void CRealtimeGraphWidget::delAllIndex() {
    mData->removeAllFormulas();
}

void CRealtimeGraphWidget::updateIndex(const QString &name) {
    mData->replaceSubFormula(name);
}

bool CRealtimeGraphWidget::findIndex(const QString &name) const {
    return mData->hasFormula(name);
}

QList<QString> CRealtimeGraphWidget::getIndexes() const {
    return mData->getFormulas();
}

bool CRealtimeGraphWidget::hasGroupModelIndex() const {
    return mData->hasGroupModelIndex();
}

bool CRealtimeGraphWidget::hasPythonIndex() const {
    return mData->hasPythonIndex();
}

void CRealtimeGraphWidget::request(corvane::ERunMode mode) {
    mPaintCache.formulasKnown = false;
    dropTip(); // of another instrument, or another day
    if (mDisplayType == EIndexDisplayType::Sub && mData->hasGroupModelIndex() &&
        !mUiParam->isShowGroupIndexGraph()) {
        const QString first = mData->getFormulas().value(0);
        const CFormulaDetailPtr detail =
            first.isEmpty() ? nullptr : CSingletonT<CFormulaOperateManager>::instance().getFormula(first);
        if (!detail || detail->mLanguage == EFormulaLanguage::Native) {
            return;
        }
    }
    if (mReplay) {
        mData->requestReplay(mode);
    } else {
        mData->request(mode);
    }
}

void CRealtimeGraphWidget::syncRequest(corvane::ERunMode mode) {
    mData->syncRequest(mode);
}

void CRealtimeGraphWidget::unrequest() {
    mData->unrequest();
}

void CRealtimeGraphWidget::minitermFormulaDataCallback(const FormulaMetaPtr &meta,
                                                       const FormulaResultPtr &result, const QString &stock,
                                                       const QString &formula, int dataType) {
    mData->minitermFormulaDataCallback(meta, result, stock, formula, dataType);
}

// View

void CRealtimeGraphWidget::updateAxis(const IndexBaseData::MaxMinMap &ranges, bool overwrite) {
    mData->adoptMaxMin(ranges, overwrite);
    recalcAxisByValue();
}

void CRealtimeGraphWidget::updateView() {
    mData->redraw();
}

void CRealtimeGraphWidget::updateChanged() {
    const QRect changed = mData->takeDirtyRect();
    if (!changed.isNull()) {
        update(changed);
    }
}

void CRealtimeGraphWidget::updateOverlay() {
    mData->removeOverlayData();
    update();
}

void CRealtimeGraphWidget::beHistory(bool history) {
    mHistory = history;
}

void CRealtimeGraphWidget::beReplay(bool replay) {
    mReplay = replay;
    mData->setReplayMode(replay);
}

void CRealtimeGraphWidget::setCreateNewWorkShow(bool show) {
    mCreateNewWorkShow = show;
}

void CRealtimeGraphWidget::setMouseIn(bool in) {
    mMouseIn = in;
}

void CRealtimeGraphWidget::setPairParamFunc(boost::function<void(QString)> func) {
    mPairParamFunc = std::move(func);
}

bool CRealtimeGraphWidget::isCrossActive() const {
    return mCrossActive;
}

int CRealtimeGraphWidget::getMouseY() const {
    return mCrossActive ? mMouseY : -1;
}

void CRealtimeGraphWidget::setRegionLine(int startIndex, int endIndex) {
    mRegionLeftX = mUiParam->getXAxisByIndex(startIndex);
    mRegionRightX = mUiParam->getXAxisByIndex(endIndex);
    update();
}

void CRealtimeGraphWidget::setRegionLineHide() {
    mRegionLinesVisible = false;
    update();
}

void CRealtimeGraphWidget::onGraphFinished(void *notification) {
    deliverEvent(eDrawingFinished, 0, 0, QString(), notification);
}

bool CRealtimeGraphWidget::handleEvent(int event, int first, int second, QString text, void *payload) {
    switch (event) {
    case eIgnoredByGraph1:
    case eIgnoredByGraph2:
        return true;
    case eRequestAnew:
        mData->unrequest();
        mData->clearData();
        request(corvane::ERunMode::Ordinary);
        return true;
    default:
        return CBaseWidget::handleEvent(event, first, second, text, payload);
    }
}

void CRealtimeGraphWidget::onUiResourceChanged() {
    mMenuStyle = GZ::CStyleSheetCenter::getStyle(kMenuControl);
    mData->redraw();
    CBaseWidget::onUiResourceChanged();
}

void CRealtimeGraphWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    mData->setPixelRatio(devicePixelRatioF());
    mData->setChartRect(rect());
    setGraphRect(
        QRect(kDrawingMargin, kDrawingMargin, width() - 2 * kDrawingMargin, height() - 2 * kDrawingMargin));
    recalcAxisByValue();
    deliverEvent(eResized, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::showEvent(QShowEvent *event) {
    CBaseWidget::showEvent(event);
    mPaintCache.formulasKnown = false;
    mData->setDrawEnabled(true);
}

void CRealtimeGraphWidget::hideEvent(QHideEvent *event) {
    CBaseWidget::hideEvent(event);
    mData->setDrawEnabled(false);
}

// Conversions of the drawing layer

QPointF CRealtimeGraphWidget::toLogical(const QPointF &pixel) const {
    bool percent = true;
    const int index = mUiParam->getIndexByXAxis(wholePart<int>(pixel.x()));
    return {static_cast<double>(index), mData->valueAtY(wholePart<int>(pixel.y()), rect(), &percent)};
}

QPointF CRealtimeGraphWidget::toPixel(const QPointF &logical) const {
    const int index = CAppConfig::isClientType(EClientType::Trading)
                          ? mUiParam->getIndexByTime(minuteOfDrawing(logical.x()))
                          : wholePart<int>(logical.x());
    const QRect priceRows(0, 0, width(), mData->mainChartHeight(rect()));
    return {static_cast<double>(mUiParam->getXAxisByIndex(index)),
            static_cast<double>(mData->yOfValue(logical.y(), priceRows))};
}

} // namespace TC
