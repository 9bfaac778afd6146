#include "chartview/CRealtimeGraphWidget.h"

#include "chartdata/CRealtimeData.h"
#include "host/services/CFormulaOperateManager.h"
#include "host/services/CIndexMainWindowHelper.h"
#include "host/toolkit/Events.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QHideEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QShowEvent>

#include <utility>

namespace TC {

namespace {

constexpr int kDrawingMargin = 10; ///< pixels that drawings keep off the edges
constexpr int kHostsChoice = -1; ///< second argument of eAutoPeriodAsked

} // namespace

CRealtimeGraphWidget::CRealtimeGraphWidget(int id, boost::shared_ptr<CRealtimeData> source,
                                           boost::shared_ptr<CRealtimeUiParam> uiParam,
                                           EIndexDisplayType displayType, EIndexViewType viewType,
                                           QWidget *parent, bool /*newest*/)
    : CBaseWidget(parent), mSubject{std::move(source), std::move(uiParam), id,
                                    displayType,       viewType,           QString()},
      mSpace(*this, mSubject), mLayers({mSubject, mPointer, mRegionLines, mTip, mSpace, *this}),
      mInput(*this, {mSubject, mPointer, mRegionLines, mTip}), mFormulas(*this, mSubject),
      mOverlays(*this, mSubject), mAccounts(*this, mSubject), mView(*this, mSubject),
      mMenu(*this, mSubject, mPointer, mAccounts), mVariables(*this, mSubject) {
    setObjectName(QStringLiteral("realtime_graph_widget"));
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    initConvFunc([this](const QPointF &pixel) { return mSpace.toLogical(pixel); },
                 [this](const QPointF &logical) { return mSpace.toPixel(logical); });
}

CRealtimeGraphWidget::~CRealtimeGraphWidget() {
    mSubject.data->unrequest();
    mSubject.data->clearData();
}

boost::shared_ptr<CRealtimeData> CRealtimeGraphWidget::getData() const {
    return mSubject.data;
}

// Formulas and requests

void CRealtimeGraphWidget::addIndex(const QString &name) {
    mSubject.data->addFormula(name);
}

void CRealtimeGraphWidget::delIndex(const QString &name) {
    mSubject.data->removeFormula(name, true);
}

void CRealtimeGraphWidget::delAllIndex() {
    mSubject.data->removeAllFormulas();
}

void CRealtimeGraphWidget::updateIndex(const QString &name) {
    mSubject.data->replaceSubFormula(name);
}

bool CRealtimeGraphWidget::findIndex(const QString &name) const {
    return mSubject.data->hasFormula(name);
}

QList<QString> CRealtimeGraphWidget::getIndexes() const {
    return mSubject.data->getFormulas();
}

bool CRealtimeGraphWidget::hasGroupModelIndex() const {
    return mSubject.data->hasGroupModelIndex();
}

bool CRealtimeGraphWidget::hasPythonIndex() const {
    return mSubject.data->hasPythonIndex();
}

void CRealtimeGraphWidget::request(corvane::ERunMode mode) {
    mLayers.forgetFormulas();
    if (mTip.drop()) { // its trades are of another instrument, or another day
        update();
    }
    CRealtimeData &data = *mSubject.data;
    if (mSubject.displayType == EIndexDisplayType::Sub && data.hasGroupModelIndex() &&
        !mSubject.uiParam->isShowGroupIndexGraph()) {
        const QString first = data.getFormulas().value(0);
        const CFormulaDetailPtr detail =
            first.isEmpty() ? nullptr : mSubject.uiParam->service<CFormulaOperateManager>().getFormula(first);
        if (!detail || detail->mLanguage == EFormulaLanguage::Native) {
            return;
        }
    }
    if (mSubject.replay) {
        data.requestReplay(mode);
    } else {
        data.request(mode);
    }
}

void CRealtimeGraphWidget::syncRequest(corvane::ERunMode mode) {
    mSubject.data->syncRequest(mode);
}

void CRealtimeGraphWidget::unrequest() {
    mSubject.data->unrequest();
}

void CRealtimeGraphWidget::minitermFormulaDataCallback(const FormulaMetaPtr &meta,
                                                       const FormulaResultPtr &result, const QString &stock,
                                                       const QString &formula, int dataType) {
    mSubject.data->minitermFormulaDataCallback(meta, result, stock, formula, dataType);
}

// Instrument

void CRealtimeGraphWidget::setStock(const QString &key, bool isPair) {
    if (key == mSubject.stock) {
        return;
    }
    mSubject.stock = key;
    setRegionLineHide(); // the region is one of the former instrument
    mSubject.uiParam->service<CIndexMainWindowHelper>().instrumentChanged(key);
    const bool wasPaired = std::exchange(mSubject.paired, isPair);
    mOverlays.followPair(wasPaired);
}

// View

void CRealtimeGraphWidget::updateAxis(const IndexBaseData::MaxMinMap &ranges, bool overwrite) {
    mSubject.data->adoptMaxMin(ranges, overwrite);
    recalcAxisByValue();
}

void CRealtimeGraphWidget::updateView() {
    mSubject.data->redraw();
}

void CRealtimeGraphWidget::updateChanged() {
    for (const QRect &rect : mSubject.data->takeDirtyRegion()) {
        update(rect); // of which there are few, and regions take longer
    }
}

void CRealtimeGraphWidget::updateOverlay() {
    mSubject.data->removeOverlayData();
    update();
}

void CRealtimeGraphWidget::beReplay(bool replay) {
    mSubject.replay = replay;
    mSubject.data->setReplayMode(replay);
}

void CRealtimeGraphWidget::setPairParamFunc(boost::function<void(QString)> func) {
    mPairParamFunc = std::move(func);
}

int CRealtimeGraphWidget::getMouseY() const {
    return mPointer.isCrossActive() ? mPointer.position().y() : -1;
}

void CRealtimeGraphWidget::setRegionLine(int startIndex, int endIndex) {
    mRegionLines.moveTo(MinuteSpan::ofIndices(startIndex, endIndex, DayAxis::of(*mSubject.uiParam)));
    update();
}

void CRealtimeGraphWidget::setRegionLineHide() {
    mRegionLines.hide();
    update();
}

// Events

void CRealtimeGraphWidget::onGraphFinished(void *notification) {
    deliverEvent(eDrawingFinished, 0, 0, QString(), notification);
}

bool CRealtimeGraphWidget::handleEvent(int event, int first, int second, QString text, void *payload) {
    switch (event) {
    case eQuietNotice:
    case eOtherQuietNotice:
        return true;
    case eRequestAnew:
        mSubject.data->unrequest();
        mSubject.data->clearData();
        request(corvane::ERunMode::Ordinary);
        return true;
    default:
        return CBaseWidget::handleEvent(event, first, second, text, payload);
    }
}

void CRealtimeGraphWidget::onUiResourceChanged() {
    mMenu.refreshLook();
    mSubject.data->redraw();
    CBaseWidget::onUiResourceChanged();
}

void CRealtimeGraphWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    mLayers.paint(*this, *event, painter);
}

void CRealtimeGraphWidget::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    mSubject.data->setPixelRatio(devicePixelRatioF());
    mSubject.data->setChartRect(rect());
    setGraphRect(
        QRect(kDrawingMargin, kDrawingMargin, width() - 2 * kDrawingMargin, height() - 2 * kDrawingMargin));
    recalcAxisByValue();
    deliverEvent(eGraphResized, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::showEvent(QShowEvent *event) {
    CBaseWidget::showEvent(event);
    mLayers.forgetFormulas();
    mSubject.data->setDrawEnabled(true);
}

void CRealtimeGraphWidget::hideEvent(QHideEvent *event) {
    CBaseWidget::hideEvent(event);
    mSubject.data->setDrawEnabled(false);
}

void CRealtimeGraphWidget::mousePressEvent(QMouseEvent *event) {
    CBaseWidget::mousePressEvent(event);
    event->accept();
    mInput.press(*event);
}

void CRealtimeGraphWidget::mouseMoveEvent(QMouseEvent *event) {
    CBaseWidget::mouseMoveEvent(event);
    event->accept();
    mInput.move(*event);
}

void CRealtimeGraphWidget::mouseReleaseEvent(QMouseEvent *event) {
    CBaseWidget::mouseReleaseEvent(event);
    event->accept();
    if (mInput.release(*event)) {
        mMenu.openAfterRelease(*event);
    }
}

void CRealtimeGraphWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    CBaseWidget::mouseDoubleClickEvent(event);
    event->accept();
    mInput.doubleClick(*event);
}

bool CRealtimeGraphWidget::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    mInput.searchTrades();
    return true;
}

void CRealtimeGraphWidget::enterEvent(GZ::EnterEvent * /*event*/) {
    mInput.enter();
}

void CRealtimeGraphWidget::leaveEvent(QEvent * /*event*/) {
    if (mInput.leave()) {
        Q_EMIT mouseLeft();
    }
}

void CRealtimeGraphWidget::contextMenuEvent(QContextMenuEvent *event) {
    mMenu.open(*event);
}

// Slots

const QAction *CRealtimeGraphWidget::sentBy() const {
    return qobject_cast<const QAction *>(sender());
}

void CRealtimeGraphWidget::slotAddIndexWidget() {
    deliverEvent(ePaneAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotAddIndex() {
    if (const QAction *entry = sentBy()) {
        mFormulas.putOn(entry->text());
    }
}

void CRealtimeGraphWidget::slotDelIndex() {
    if (const QAction *entry = sentBy()) {
        mFormulas.takeOff(entry->text());
    }
}

void CRealtimeGraphWidget::slotUpdateIndex() {
    if (const QAction *entry = sentBy()) {
        updateIndex(entry->text());
        request(corvane::ERunMode::Ordinary);
    }
    deliverEvent(eFormulaReplaced, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotRestoreGraph() {
    deliverEvent(eOrdinaryChartAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotAddBkzsCode() {
    if (const QAction *entry = sentBy()) {
        mOverlays.toggleSectorLevel(entry->data().toInt());
    }
}

void CRealtimeGraphWidget::slotAutoChangePeriod() {
    deliverEvent(eAutoPeriodAsked, mSubject.id, kHostsChoice, QString(), nullptr);
}

void CRealtimeGraphWidget::slotShowAfterTradeFixedPriceDeal(bool /*checked*/) {
    deliverEvent(eFixedPriceAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotCreateNewWork() {
    deliverEvent(eNewWorkAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotShowControlDialog() {
    deliverEvent(eReplayControlAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotDownloadDatas() {
    mSubject.data->showInstrumentChart();
}

void CRealtimeGraphWidget::slotStatistic(bool /*checked*/, int startIndex, const QString &text) {
    mRegionLines.show();
    update();
    deliverEvent(eStatisticAsked, startIndex, mSubject.id, text, nullptr);
}

void CRealtimeGraphWidget::slotShowLinkageData() {
    deliverEvent(eLinkageAsked, 0, 0, QString(), nullptr);
}

void CRealtimeGraphWidget::slotSelectAllAccount(bool /*checked*/) {
    if (auto *entry = qobject_cast<QAction *>(sender())) {
        mAccounts.toggleAll(*entry);
    }
}

void CRealtimeGraphWidget::slotSelectShowAccount(bool /*checked*/) {
    if (const QAction *entry = sentBy()) {
        mAccounts.toggle(entry->text());
    }
}

} // namespace TC
