#include "terminal/app/TerminalWindow.h"

#include "containers/CRealtimeMainWidget.h"
#include "host/toolkit/Wording.h"
#include "terminal/app/ChartView.h"
#include "terminal/app/ControlRow.h"
#include "terminal/app/DownloadTeller.h"
#include "terminal/app/FormulaDesk.h"
#include "terminal/app/FormulaExport.h"
#include "terminal/app/FormulaPanel.h"
#include "terminal/app/ImportDialog.h"
#include "terminal/app/InputFields.h"
#include "terminal/app/MessagePanel.h"
#include "terminal/app/PastDaysWatch.h"
#include "terminal/app/QuoteLists.h"
#include "terminal/app/ReplayControl.h"
#include "terminal/app/ShownTime.h"
#include "terminal/app/SmartKeyboard.h"
#include "terminal/app/StatusLine.h"
#include "terminal/app/StretchWindows.h"
#include "terminal/app/ViewMemory.h"
#include "terminal/app/WindowColors.h"
#include "terminal/app/WindowSize.h"
#include "viewmodel/CRealtimeUiParam.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace terminal {
namespace {

const QString kInstrumentField = QStringLiteral("instrument");
const QString kThemeField = QStringLiteral("theme");
const QString kTradesField = QStringLiteral("trades");
const QString kPanesField = QStringLiteral("panes");
const QString kYes = QStringLiteral("yes");
const QString kNo = QStringLiteral("no");
const QString kDefaultPanes = QStringLiteral("1");

} // namespace

TerminalWindow::TerminalWindow(TerminalServices &services, QWidget *parent)
    : QWidget(parent), mServices(services), mView(new ChartView(services.chartSources(), this)),
      mFormulas(new FormulaPanel(this)), mMessages(new MessagePanel(services.messages(), this)),
      mControls(new ControlRow(this, services.running().hasOwnMarket())), mStatus(new StatusLine(this)),
      mLists(new QuoteLists(services, *mView, this)), mDownloads(new DownloadTeller(services, *mView, this)),
      mReplay(new ReplayControl(services.replay(), *mView, this)), mKeyboard(new SmartKeyboard(this)),
      mMemory(std::make_unique<ViewMemory>(services.config(), *mView, services.clock(), *this)),
      mTime(new ShownTime(services, *mView, *mStatus, this)) {
    setObjectName(QStringLiteral("terminal_window"));
    setWindowTitle(tr("分时行情"));
    layOut();
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(kSmallestWindow);
    connectControls();
    connectChart();
    onUiResourceChanged();
    refreshSearch();
    mMemory->restoreView();
    setPace(mServices.clock().pace());
    setFormulasShown(false);
    setTradesShown(mServices.config().value(kTradesField, kYes) == kYes);
    if (mMemory->kept()) {
        keepPanes(mView->formulaPanes());
    } else {
        setFormulaPanes(mServices.config().value(kPanesField, kDefaultPanes).toInt());
    }
    connect(&mHeartbeat, &Heartbeat::beat, this, &TerminalWindow::onBeat);
    tellMessages();
}

TerminalWindow::~TerminalWindow() {
    mMemory.reset();
}

void TerminalWindow::layOut() {
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(mControls);
    auto *middle = new QHBoxLayout;
    middle->setSpacing(0);
    middle->addWidget(mView, 1);
    middle->addWidget(mFormulas);
    column->addLayout(middle, 1);
    column->addWidget(mMessages);
    column->addWidget(mStatus);
}

void TerminalWindow::connectControls() {
    connect(mControls, &ControlRow::keyboardAsked, this, [this] { openSmartKeyboard(); });
    connect(mControls, &ControlRow::dayChosen, this,
            [this](const QDate &day) { showInstrument(mView->instrument(), day); });
    connect(mControls, &ControlRow::panesChosen, this, [this](int count) {
        setFormulaPanes(count);
        mView->setFocus();
    });
    connect(mControls, &ControlRow::tradesToggled, this, &TerminalWindow::setTradesShown);
    connect(mControls, &ControlRow::tradeDetailsAsked, this, &TerminalWindow::openTradeDetails);
    connect(mControls, &ControlRow::formulasToggled, this, &TerminalWindow::setFormulasShown);
    connect(mControls, &ControlRow::selfStocksAsked, this, &TerminalWindow::showSelfStocks);
    connect(mControls, &ControlRow::pauseToggled, this, &TerminalWindow::setPaused);
    connect(mControls, &ControlRow::paceChosen, this, [this](double pace) {
        setPace(pace);
        mView->setFocus();
    });
    connect(mControls, &ControlRow::themeToggled, this, &TerminalWindow::toggleTheme);
    connect(mControls, &ControlRow::importAsked, this, [this] { openImport(); });
    connect(mControls, &ControlRow::downloadAsked, mDownloads, &DownloadTeller::startOrStop);
    connect(mDownloads, &DownloadTeller::told, this, &TerminalWindow::say);
    connect(mDownloads, &DownloadTeller::underWayChanged, this, [this](bool underWay) {
        mControls->setDownloading(underWay);
        if (!underWay) {
            refreshDays();
        }
    });
    connect(&mServices.files(), &TC::CFileClient::sigReadFinished, this,
            [this](int /*seq*/, bool success, const QString &message) {
                say(success ? mServices.tellTradeImport() : message, !success);
            });
}

/// What the chart and its menus ask for.
void TerminalWindow::connectChart() {
    const WindowRequests &requests = mServices.windowRequests();
    connect(&requests, &WindowRequests::contrastAsked, mLists, &QuoteLists::showSectors);
    connect(&requests, &WindowRequests::exportAsked, this, [this](const QString &formula) {
        const ExportOutcome outcome = askFormulaExport(formula, this);
        if (!outcome.text.isEmpty()) {
            say(outcome.text, outcome.isError);
        }
    });
    connect(mView, &ChartView::tradeSettingsAsked, this, &TerminalWindow::openTradeDetails);
    connect(mView, &ChartView::noSettings, this, [this] { say(tr("这个副图的公式没有参数")); });
    connect(mView, &ChartView::downloadAsked, mDownloads, &DownloadTeller::startOrStop);
    connect(mView, &ChartView::replayAsked, mReplay, &ReplayControl::start);
    connect(mView, &ChartView::replayControlAsked, mReplay, &ReplayControl::showPanel);
    const auto *stretches = new StretchWindows(mServices, *mView, this);
    connect(stretches, &StretchWindows::chosen, this,
            [this](const QString &key, const QDate &day) { showInstrument(key, day); });
    connect(mView, &ChartView::filterChanged, this, [this](bool on) {
        say(on ? tr("已过滤重复股票，在同时显示多个品种的视图中生效") : tr("不再过滤重复股票"));
    });
    const auto *desk = new FormulaDesk(mServices, *mView, *mFormulas, *mMessages, this);
    connect(desk, &FormulaDesk::catalogueChanged, this, &TerminalWindow::refreshSearch);
    connect(mReplay, &ReplayControl::told, this, [this](const QString &text) { say(text); });
    connect(mKeyboard, &SmartKeyboard::instrumentPicked, this,
            [this](const QString &key) { showInstrument(key); });
    connect(mKeyboard, &SmartKeyboard::formulaPicked, this,
            [this](const QString &formula) { mView->main()->handleDoubleClickedFormula(formula); });
    connect(mKeyboard, &SmartKeyboard::closed, this, [this] {
        activateWindow();
        mView->setFocus();
    });
    connect(mLists, &QuoteLists::chosen, this, [this](const QString &key) { showInstrument(key); });
    const auto *pastDays = new PastDaysWatch(
        mServices, {mView}, [this](const ChartView &) { return !mIsDayChosen; }, this);
    connect(pastDays, &PastDaysWatch::instrumentsCame, this, &TerminalWindow::refreshSearch);
    connect(pastDays, &PastDaysWatch::daysChanged, this, &TerminalWindow::refreshDays);
    connect(mLists, &QuoteLists::refused, this, [this](const QString &reason) { say(reason, true); });
}

/// Tells what went wrong with the configuration and the store since the last time.
void TerminalWindow::tellMessages() {
    const QStringList messages = mServices.config().messages();
    if (messages.size() > mMessagesTold) {
        for (const QString &message : messages.mid(mMessagesTold)) {
            mServices.messages().sink()({tr("配置"), 0, message});
        }
        mMessagesTold = messages.size();
        mStatus->sayLasting(messages.last());
    }
    mStatus->sayLasting(mServices.tellStoreFaults());
}

bool TerminalWindow::showInstrument(const QString &key, const QDate &day) {
    const QDate running = mServices.runningDayOf(key);
    const QDate latest = mServices.latestDayOf(key);
    if (mServices.nameOf(key).isEmpty()) {
        const QStringList nearest = mSearch.nearest(key, InstrumentSearch::kNearest);
        say(tr("没有找到“%1”，相近的有：%2").arg(key, GZ::listText(nearest)), true);
        return false;
    }
    if (day.isValid() && !mServices.daysOf(key).contains(day)) {
        say(tr("%1 在 %2 没有行情").arg(key, day.toString(GZ::kDateFormat)), true);
        return false;
    }
    mIsDayChosen = day.isValid() && day != (latest.isValid() ? latest : running);
    mReplay->end();
    mServices.historyCache().clear();
    mView->show(key, mIsDayChosen ? day : latest);
    mRunningDay = running;
    if (!mMemory->isStarted()) {
        mMemory->restoreChart();
        mMemory->start();
    }
    mServices.config().setValue(kInstrumentField, key);
    refreshDays();
    mStatus->clearError();
    tellMessages();
    mView->setFocus();
    return true;
}

void TerminalWindow::restorePace() {
    if (mMemory->kept()) {
        setPace(mMemory->kept()->pace);
    }
}

bool TerminalWindow::isPlaceRestored() const {
    return mMemory->kept() && !mMemory->kept()->geometry.isEmpty();
}

QComboBox *TerminalWindow::days() const {
    return mControls->days();
}

void TerminalWindow::refreshDays() {
    mControls->setInstrument(mServices.titleOf(mView->instrument(), mView->day()));
    mControls->setDays(mServices.daysOf(mView->instrument()), mRunningDay, mView->day());
}

void TerminalWindow::shiftDay(int days) {
    const QDate day = mControls->dayAfterShown(days);
    if (day.isValid()) {
        showInstrument(mView->instrument(), day);
    }
}

void TerminalWindow::refreshSearch() {
    mSearch = mServices.search();
    mServices.refreshSmartKeys();
}

void TerminalWindow::setPaused(bool paused) {
    mControls->setPaused(mServices.running().setPaused(paused));
}

void TerminalWindow::setPace(double pace) {
    mServices.clock().setPace(pace);
    mControls->setPace(pace);
}

void TerminalWindow::setTradesShown(bool shown) {
    mView->showTrades(shown);
    mControls->setTradesShown(shown);
    mServices.config().setValue(kTradesField, shown ? kYes : kNo);
}

void TerminalWindow::openTradeDetails() {
    mView->main()->showLinkageSetting();
}

void TerminalWindow::setFormulasShown(bool shown) {
    if (shown) {
        mFormulas->refresh();
    }
    mFormulas->setVisible(shown);
    mControls->setFormulasShown(shown);
}

void TerminalWindow::setFormulaPanes(int count) {
    count = qBound(0, count, ControlRow::kMostPanes);
    mView->setFormulaPanes(count);
    keepPanes(count);
}

/// Shows and keeps a number of formula panes that the chart has already; the menus may make more than the box offers.
void TerminalWindow::keepPanes(int count) {
    mControls->setPanes(count);
    mServices.config().setValue(kPanesField, QString::number(count));
}

/// What the menus of the chart have changed, shown by the controls.
void TerminalWindow::refreshControls() {
    mControls->setTradesShown(mView->areTradesShown());
    if (mControls->panes() != mView->formulaPanes()) {
        keepPanes(mView->formulaPanes());
    }
}

void TerminalWindow::setThemeName(const QString &name) {
    QString error;
    if (!GZ::CUiResource::instance().setTheme(name, &error)) {
        say(error, true);
        return;
    }
    mServices.config().setValue(kThemeField, name);
}

void TerminalWindow::toggleTheme() {
    const bool dark = GZ::CUiResource::instance().theme() == QLatin1String("dark");
    setThemeName(dark ? QStringLiteral("light") : QStringLiteral("dark"));
}

void TerminalWindow::onUiResourceChanged() {
    applyWindowColors(*this);
    mControls->applyTheme();
}

ImportDialog *TerminalWindow::openImport(const QStringList &files) {
    if (!mImportDialog) {
        mImportDialog = new ImportDialog(mServices.store(), this);
        connect(mImportDialog, &ImportDialog::imported, this, &TerminalWindow::onImported);
    }
    for (const QString &file : files) {
        mImportDialog->addFile(file);
    }
    mImportDialog->show();
    mImportDialog->activateWindow();
    return mImportDialog;
}

void TerminalWindow::onImported(const QString &key, const QDate &day, const QString &text) {
    refreshSearch();
    if (showInstrument(key, day)) {
        say(text);
    }
}

void TerminalWindow::openSmartKeyboard(const QString &text) {
    mKeyboard->open(text);
}

void TerminalWindow::showVariables() {
    if (mView->uiParam()->mCrossIndex < 0) {
        mView->moveToEnd();
    }
    mView->main()->viewVariable();
}

void TerminalWindow::showSelfStocks() {
    mLists->showSelfStocks();
}

void TerminalWindow::startReplay(qint64 start, qint64 end) {
    mReplay->start(start, end);
}

void TerminalWindow::exportFormula(const QString &formula, const QString &path) {
    const ExportOutcome outcome = terminal::exportFormula(formula, path);
    say(outcome.text, outcome.isError);
}

bool TerminalWindow::handleCommandKey(int key) {
    switch (key) {
    case Qt::Key_O:
        openImport();
        return true;
    case Qt::Key_D:
        mDownloads->startOrStop();
        return true;
    case Qt::Key_E:
        openTradeDetails();
        return true;
    case Qt::Key_H:
        showVariables();
        return true;
    case Qt::Key_T:
        toggleTheme();
        return true;
    case Qt::Key_L:
        showSelfStocks();
        return true;
    case Qt::Key_I:
        setFormulasShown(!mFormulas->isVisible());
        return true;
    default:
        return false;
    }
}

bool TerminalWindow::handleCursorKey(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        mView->moveCursor(key == Qt::Key_Left);
        return true;
    case Qt::Key_Home:
        mView->moveToHome();
        return true;
    case Qt::Key_End:
        mView->moveToEnd();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        mView->main()->scaleView(key == Qt::Key_Up);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        shiftDay(key == Qt::Key_PageUp ? -1 : 1);
        return true;
    case Qt::Key_Space:
        setPaused(!mServices.clock().isPaused());
        return true;
    case Qt::Key_Escape:
        return mView->hideCrossLine();
    default:
        return false;
    }
}

void TerminalWindow::keyPressEvent(QKeyEvent *event) {
    const bool control = event->modifiers() & Qt::ControlModifier;
    const QString text = event->text();
    const bool isTyped = !control && isInputField(focusWidget()); // into a field that had no use for it
    if (control ? handleCommandKey(event->key()) : !isTyped && handleCursorKey(event->key())) {
        return;
    }
    if (!control && !isTyped && !text.isEmpty() && text[0].isLetterOrNumber()) {
        openSmartKeyboard(text);
        return;
    }
    QWidget::keyPressEvent(event);
}

void TerminalWindow::closeEvent(QCloseEvent *event) {
    QWidget::closeEvent(event);
    QTimer::singleShot(0, qApp, &QApplication::closeAllWindows);
}

void TerminalWindow::onBeat() {
    tellMessages();
    refreshControls();
    mTime->show();
    mStatus->setTrouble(mServices.standingNotice());
    const QDate running = mServices.runningDayOf(mView->instrument());
    if (running != mRunningDay && !mView->instrument().isEmpty()) {
        mRunningDay = running;
        if (!mView->isPastDay()) {
            mServices.historyCache().clear();
            mView->reload();
        }
        refreshDays();
    }
}

QString TerminalWindow::status() const {
    return mStatus->text();
}

void TerminalWindow::say(const QString &text, bool isError) {
    mStatus->say(text, isError);
}

} // namespace terminal
