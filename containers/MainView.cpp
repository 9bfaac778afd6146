#include "containers/MainView.h"

#include "chartview/CRealtimeTimeWidget.h"
#include "containers/CRealtimeWidget.h"
#include "containers/ConciseStyle.h"
#include "containers/CrossLines.h"
#include "containers/DebugOverlay.h"
#include "containers/PaneRow.h"
#include "containers/Repaint.h"
#include "containers/SelectedPane.h"
#include "containers/TemplateBar.h"
#include "containers/VectorDrawing.h"
#include "containers/ViewKeys.h"
#include "containers/ViewServices.h"
#include "containers/ViewSize.h"
#include "containers/accessibility/ChartAccessibility.h"
#include "host/services/CConfigService.h"
#include "host/services/DataLog.h"
#include "host/services/IdGenerator.h"
#include "host/services/ServiceContext.h"
#include "host/services/StockTypeCenter.h"
#include "host/toolkit/CDragWidgetList.h"
#include "host/windows/CIndexModelWidget.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <utility>

namespace TC {

constexpr int kTimeScaleHeight = 20; ///< pixels

struct MainView::Told {
    QString instrument;
    CrossLines::Place crossLine;
    bool isComplete = true;
};

MainView::MainView(QWidget *parent, EIndexViewType viewType, const ServiceContext &services)
    : CBaseWidget(parent), mUiParam(makeViewParam(*this, viewType, services)),
      mPanes(std::make_unique<PaneRow>(this, mUiParam, viewType)),
      mSelected(std::make_unique<SelectedPane>(this, *mPanes, mUiParam, viewType)),
      mBar(std::make_unique<TemplateBar>()), mCrossLines(std::make_unique<CrossLines>(*mPanes, mUiParam)),
      mKeys(std::make_unique<ViewKeys>(*this, *mPanes, *mSelected, *mCrossLines, mUiParam)),
      mTold(std::make_unique<Told>()) {
    mCrossLines->setMoved([this] { tellCrossLine(); });
    mCrossLines->setMovedByKey([this] { announceCrossLine(*this); });
    installChartAccessibility();
    connect(mPanes.get(), &PaneRow::paneAdded, this, &MainView::paneAdded);
    connect(mPanes.get(), &PaneRow::paneRemoved, this, &MainView::paneRemoved);
    connect(mPanes.get(), &PaneRow::dataChanged, this, [this] {
        tellCrossLine();
        tellComplete(isComplete());
    });
    connect(mPanes.get(), &PaneRow::crossLineMoved, this, [this] { mCrossLines->followNewest(); });
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(mPanes->list(), 1);
    if (viewType != EIndexViewType::NoTimeScale) {
        mTimeScale = new CRealtimeTimeWidget(mUiParam, this);
        mTimeScale->setFixedHeight(kTimeScaleHeight);
        mCrossLines->setTimeScale(mTimeScale);
        layout->addWidget(mTimeScale);
    }
    if (viewType == EIndexViewType::Template && isConcise(mUiParam->services())) {
        mBar->create(this);
        layout->addWidget(mBar->widget());
    }
    mPanes->list()->setSplitter(QStringLiteral("ic_clr_realtime_spliter_background"), 0);
    if (isConcise(mUiParam->services())) {
        mPanes->list()->setSplitter(QStringLiteral("ic_clr_concise_mainwindow_split_background"), 1);
    }
    if (DebugOverlay::isWanted()) {
        new DebugOverlay(*this); // which this owns
    }
}

MainView::~MainView() {
    deletePanes();
}

void MainView::deletePanes() {
    mPanes->deleteAll();
    delete std::exchange(mTimeScale, nullptr);
}

QSize MainView::sizeHint() const {
    return stackedSize(*mPanes, mTimeScale, mBar->widget(), &QWidget::sizeHint);
}

QSize MainView::minimumSizeHint() const {
    return stackedSize(*mPanes, mTimeScale, mBar->widget(), &QWidget::minimumSizeHint);
}

bool MainView::isWhole() const {
    return mPanes && mPanes->main();
}

/// While it comes and goes, what its parts tell concerns nobody.
bool MainView::handleEvent(int event, int first, int second, QString text, void *data) {
    return !isWhole() || CBaseWidget::handleEvent(event, first, second, text, data);
}

// What is told by signals

bool MainView::isComplete() const {
    return mPanes->isComplete();
}

/// `asked` is the key that was to be shown.
void MainView::tellInstrument(const QString &asked) {
    const QString key = mUiParam->isValid() ? mUiParam->getStock() : QString();
    if (!mUiParam->isValid() && !asked.isEmpty()) {
        warnOfData(QStringLiteral(
                       "unknown instrument \"%1\": CStockManager::isExist and CIndexManager::getIndex do not "
                       "know it, and it is no portfolio")
                       .arg(asked));
    }
    if (mTold->instrument != key) {
        mTold->instrument = key;
        Q_EMIT instrumentChanged(key);
    }
}

void MainView::tellCrossLine() {
    static const QMetaMethod kSignal = QMetaMethod::fromSignal(&MainView::crossLineChanged);
    if (!isWhole() || !isSignalConnected(kSignal)) {
        return; // nobody asks what its value is
    }
    const CrossLines::Place place = mCrossLines->place();
    if (!(mTold->crossLine == place)) {
        mTold->crossLine = place;
        Q_EMIT crossLineChanged(place.time, place.value);
    }
}

void MainView::tellComplete(bool complete) {
    if (isWhole() && mTold->isComplete != complete) {
        mTold->isComplete = complete;
        Q_EMIT completenessChanged(complete);
    }
}

void MainView::showEvent(QShowEvent *event) {
    CBaseWidget::showEvent(event);
    tellComplete(isComplete());
}

void MainView::renderTo(QPainter *painter, const QRect &rect) {
    renderVectors(*this, painter, rect);
}

void MainView::refreshTimeScale() {
    if (mTimeScale) {
        mTimeScale->updateScale();
    }
}

// Panes

CRealtimeWidget *MainView::getRealTimeWidget() const {
    return mPanes->main();
}

QVector<CRealtimeWidget *> MainView::getSubIndexWidgets() const {
    return mPanes->subs();
}

QVector<QList<CRealtimeGraphWidget *>> MainView::dayRows() const {
    QVector<QList<CRealtimeGraphWidget *>> rows;
    for (const CRealtimeWidget *pane : mPanes->all()) {
        rows.append(pane->getGraphWidgets());
    }
    return rows;
}

CRealtimeWidget *MainView::selectedFormulaPane() const {
    return mSelected->sub();
}

int MainView::getNewIndexStretchFactor() const {
    return mPanes->newStretch();
}

std::vector<int> MainView::getStretchFactorList() const {
    return mPanes->stretches();
}

void MainView::highlightWidget(int id) {
    mSelected->select(id);
}

void MainView::setCreateNewWorkShow(bool show) {
    mPanes->setCreateNewWorkShow(show);
}

void MainView::setAutoIndex(bool automatic) {
    for (CRealtimeWidget *pane : mPanes->subs()) {
        pane->setAutoIndex(automatic);
    }
}

void MainView::setIsLoginInit(bool init) {
    for (CRealtimeWidget *pane : mPanes->subs()) {
        pane->setIsLoginInit(init);
    }
}

void MainView::setTitleData(int day) {
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->setTitleData(day);
    }
}

void MainView::updateView() {
    for (CRealtimeWidget *pane : mPanes->all()) {
        pane->updateView();
    }
    updateWithChildren(this);
}

void MainView::updateWidgetsView() {
    updateView();
    refreshTimeScale();
}

void MainView::themeChanged() {
    updateView();
}

void MainView::onUiResourceChanged() {
    themeChanged();
    CBaseWidget::onUiResourceChanged();
}

void MainView::viewVariable() {
    if (CRealtimeWidget *pane = mSelected->sub()) {
        pane->viewVariable();
    }
}

void MainView::resizeEvent(QResizeEvent *event) {
    CBaseWidget::resizeEvent(event);
    mSelected->place();
    refreshTimeScale();
    if (event->oldSize().width() != width()) {
        mCrossLines->realign();
    }
    mBar->placeButtons();
}

// Template bar

void MainView::setIndexModelVisible(bool visible) {
    mBar->setVisible(visible);
}

void MainView::showIndexModelWidget() {
    mBar->toggle();
}

void MainView::changeBtnStatus(bool status) {
    mBar->enableButtons(status);
}

void MainView::updateIndexTemplate() {
    mBar->refresh();
}

QVector<QString> MainView::getSelectIndex() const {
    return mBar->selectedFormulas();
}

QVector<QString> MainView::getSelectTempalte() const {
    return mBar->selectedTemplates();
}

void MainView::updateSelectIndex(const QVector<QString> &names) {
    mBar->selectFormulas(names);
}

void MainView::updateSelectTemplate(const QVector<QString> &names) {
    mBar->selectTemplates(names);
}

void MainView::updateIndexTemplate(CRealtimeWidget *pane, const QString &name) {
    mBar->replaced(pane, name);
}

// Instrument

QString MainView::getStock() const {
    return getDetailQsKey(mUiParam->getStockDetail());
}

QString MainView::getMarket() const {
    return getDetailQsMarket(mUiParam->getStockDetail());
}

void MainView::setSector(const QString &sector, const QString &name) {
    mUiParam->setSector(sector, name);
}

void MainView::setFormulaAccount(const QString &account) {
    mUiParam->setFormulaAccount(account);
}

void MainView::setCanOverlaySector(bool can) {
    mUiParam->mCanOverlaySector = can;
}

void MainView::setGetTradeDateFunc(boost::function<int()> func) {
    mUiParam->mGetTradeDateFunc = func;
    getRealTimeWidget()->setGetTradeDateFunc(std::move(func));
}

QList<QString> MainView::getAddStockList() const {
    QList<QString> keys;
    for (const CInstrumentDetailPtr &detail : mUiParam->getAllAddStockList()) {
        keys.append(getDetailQsKey(detail));
    }
    return keys;
}

void MainView::addSuperposedStock(const CInstrumentDetailPtr &detail) {
    mUiParam->addStock(getDetailQsKey(detail), QString(), true);
    getRealTimeWidget()->setTitleAddStock();
}

// Requests

void MainView::request(bool sync) {
    if (sync) {
        for (CRealtimeWidget *pane : mPanes->all()) {
            pane->syncRequest(corvane::ERunMode::Ordinary);
        }
        updateWithChildren(this);
        repaint();
        return;
    }
    mUiParam->mRequestId = mUiParam->service<se::IdGenerator>().requestRoundId();
    tellComplete(false);
    getRealTimeWidget()->request(corvane::ERunMode::Ordinary);
    for (CRealtimeWidget *pane : mPanes->subs()) {
        if (pane->hasGroupModelIndex() && !mUiParam->isShowGroupIndexGraph()) {
            pane->clear();
        }
        pane->request(corvane::ERunMode::Ordinary);
    }
    tellComplete(isComplete());
}

void MainView::unrequest() {
    getRealTimeWidget()->unrequest();
    for (CRealtimeWidget *pane : mPanes->subs()) {
        const CInstrumentDetailPtr detail = pane->getUiParam()->getStockDetail();
        if (!pane->hasGroupModelIndex() || (detail && mUiParam->service<kvservice::StockTypeCenter>().isIndex(
                                                          getDetailMarket(detail), getDetailCode(detail)))) {
            pane->unrequest();
        }
    }
}

void MainView::beReplay(bool replay) {
    mPanes->setReplay(replay);
}

// Cross line

void MainView::resetUiParam() {
    mUiParam->mCrossShown = false;
    mUiParam->mMouseIn = false;
    mUiParam->mCrossIndex = -1;
    mCrossLines->refresh();
    tellCrossLine();
}

bool MainView::isShowCrossline() const {
    return mCrossLines->isShown();
}

void MainView::switchCrossline() {
    mCrossLines->toggle();
}

void MainView::showCrossline(bool shown) {
    mCrossLines->show(shown);
}

void MainView::moveCursor(bool left) {
    mCrossLines->step(left);
}

void MainView::moveToHome() {
    mCrossLines->toHome();
}

void MainView::moveToEnd() {
    mCrossLines->toEnd();
}

void MainView::keyPressEvent(QKeyEvent *event) {
    if (!mUiParam->service<CConfigService>().isClientType(EClientType::Trading) ||
        !mCrossLines->takeKey(event->key())) {
        QWidget::keyPressEvent(event);
    }
}

void MainView::contextMenuEvent(QContextMenuEvent *event) {
    if (event->reason() != QContextMenuEvent::Keyboard || !isWhole()) {
        CBaseWidget::contextMenuEvent(event);
        return;
    }
    event->accept();
    mKeys->openMenu(*event); // the view may have gone then
}

void MainView::focusInEvent(QFocusEvent *event) {
    CBaseWidget::focusInEvent(event);
    if (isWhole()) {
        mSelected->takeFocus(event->reason());
    }
}

void MainView::focusOutEvent(QFocusEvent *event) {
    CBaseWidget::focusOutEvent(event);
    if (isWhole() && event->reason() != Qt::PopupFocusReason) {
        mSelected->showFocus(false);
    }
}

void MainView::enterEvent(GZ::EnterEvent * /*event*/) {
    mUiParam->mMouseIn = true;
}

void MainView::leaveEvent(QEvent * /*event*/) {
    mUiParam->mMouseIn = false;
    mCrossLines->drop();
}

} // namespace TC
